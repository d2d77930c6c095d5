#pragma once

namespace velt::recorder {

// Asks the host for its classes, so that a recording names them as the headers do. Called once, before the first operation.
void nameClasses();

}  // namespace velt::recorder
