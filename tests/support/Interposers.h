#pragma once

namespace velt::toys {

// Referred to by ToyHost, so that the linker takes the interposers into every executable that uses toys.
void useInterposers();

}  // namespace velt::toys
