#include "palette/Palette.h"

namespace velt::palette {

Error::Error(const std::string& message) : std::runtime_error(message) {}
Error::~Error() = default;

Cancelled::~Cancelled() = default;

}  // namespace velt::palette
