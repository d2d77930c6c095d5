#pragma once

namespace velt::recorder {

// Makes the layer call our functions. By their names alone it would find those of a host that is the program itself, which
// come before those of any library. `function` is one of the layer's. False when it cannot be done.
bool redirectLayer(const void* function);

}  // namespace velt::recorder
