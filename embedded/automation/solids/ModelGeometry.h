#pragma once

// What entities hold of a modeller's text.

#include <string>

#include "embedded/automation/geometry/Boundary.h"
#include "embedded/automation/geometry/ModelText.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// Throws Refusal for an entity without one, such as those of newer drawings, and ModelError for one that is not whole.
[[nodiscard]] ModelText modelOf(const Subject& subject);

// "12 lines": how much of it there is.
[[nodiscard]] std::wstring modelDataOf(const Subject& subject);

// What `measure` tells of the text. Throws Refusal, with the reason, where it cannot be told.
template <class Measure>
auto toldByModel(const Subject& subject, Measure measure) {
  const auto refusal = [](const std::exception& error) {
    const std::string why = error.what();
    return Refusal(E_FAIL, L"The model cannot be measured: " + std::wstring(why.begin(), why.end()) + L".");
  };
  try {
    return measure(modelOf(subject));
  } catch (const ModelError& error) {
    throw refusal(error);
  } catch (const BoundaryError& error) {
    throw refusal(error);
  }
}

}  // namespace velt::automation
