#include "palette/Palette.h"

namespace velt::palette {

Error::Error(const std::string& message) : std::runtime_error(message) {}
Error::~Error() = default;

}  // namespace velt::palette
