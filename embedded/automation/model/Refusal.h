#pragma once

// Why a property cannot be read or written.

#include <exception>
#include <string>
#include <utility>

#include "embedded/automation/model/Reasons.h"
#include "host/com/HResult.h"

namespace velt::automation {

// Thrown by getters and setters. At the edge of an automation object it becomes exception information, or the result
// alone where an interface has no room for more.
class Refusal : public std::exception {
 public:
  Refusal(HRESULT result, std::wstring text) : result_(result), text_(std::move(text)) {}
  explicit Refusal(const Reason& reason) : Refusal(E_FAIL, reason.sentence) {}

  [[nodiscard]] const char* what() const noexcept override { return "refused by an automation object"; }
  [[nodiscard]] HRESULT result() const noexcept { return result_; }
  // A sentence for the person who asked.
  [[nodiscard]] const std::wstring& text() const noexcept { return text_; }

 private:
  HRESULT result_;
  std::wstring text_;
};

}  // namespace velt::automation
