#include "errors/Guard.h"

#include <thread>

namespace velt::errors {

bool isPaletteThread() {
  static const std::thread::id palette = std::this_thread::get_id();
  return std::this_thread::get_id() == palette;
}

void takeDescription(const _com_error& error, CStdStr<wchar_t>& errorText) {
  errorText = CStdStr<wchar_t>(error.Description());
}

}  // namespace velt::errors
