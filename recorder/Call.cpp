#include "recorder/Call.h"

#include <cxxabi.h>

#pragma weak _com_raise_error

namespace velt::recorder {

bool isComError() {
  const std::type_info* const type = abi::__cxa_current_exception_type();
  return type != nullptr && std::strcmp(type->name(), "10_com_error") == 0;
}

json thrownJson(const _com_error& error) {
  return {{"description", textJson(error.Description())}};
}

void throwRecorded(const json& thrown) {
  // The layer looks at the description alone.
  _com_raise_error(E_FAIL, textFrom(thrown.at("description")).c_str());
}

}  // namespace velt::recorder
