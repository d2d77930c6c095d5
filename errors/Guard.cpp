#include "errors/Guard.h"

namespace velt::errors {

void takeDescription(const _com_error& error, CStdStr<wchar_t>& errorText) {
  errorText = CStdStr<wchar_t>(error.Description());
}

}  // namespace velt::errors
