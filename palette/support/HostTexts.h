#pragma once

// What an object tells of a call to Invoke that failed.

#include <string>

#include "host/com/Bstr.h"
#include "host/com/IDispatch.h"
#include "palette/Palette.h"

namespace velt::palette {

// Owns the strings.
class HostTexts {
 public:
  // For the call.
  EXCEPINFO* put() { return &told_; }
  // The description, on one line; empty when there is none.
  std::string description() const {
    return told_.bstrDescription == nullptr ? std::string() : oneLine(told_.bstrDescription);
  }

  HostTexts() = default;
  HostTexts(const HostTexts&) = delete;
  HostTexts& operator=(const HostTexts&) = delete;
  ~HostTexts() {
    SysFreeString(told_.bstrSource);
    SysFreeString(told_.bstrDescription);
    SysFreeString(told_.bstrHelpFile);
  }

 private:
  EXCEPINFO told_{};
};

}  // namespace velt::palette
