#include "tool/Failure.h"

#include <new>

#include "host/com/ComError.h"
#include "palette/Palette.h"

namespace velt::tool {

std::string messageOfFailure() {
  try {
    throw;
  } catch (const _com_error& error) {
    return palette::oneLine(static_cast<const wchar_t*>(error.Description()));
  } catch (const std::bad_alloc&) {
    return "out of memory";
  } catch (const std::exception& failure) {
    return failure.what();
  } catch (...) {
    return "an unknown failure";
  }
}

}  // namespace velt::tool
