#pragma once

// What a record holds after an edit, in one line; and subjects to edit.

#include <string>

#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/model/Subject.h"
#include "tests/embedded/automation/Toys.h"

namespace velt::automation::test {

// "8=Walls 10=1.5": the pairs of a record as they would be written, without its type.
inline std::string pairsOf(const Drawing& drawing, std::uint32_t record) {
  std::string line;
  const dxf::RecordView view = drawing.view(record);
  for (std::size_t index = 1; index < view.size(); ++index) {
    line += (index == 1 ? "" : " ") + std::to_string(view.code(index)) + "=";
    line += view.value(index);
  }
  return line;
}

inline std::uint32_t recordOf(const Drawing& drawing, std::size_t entity) {
  return database::resolve(drawing.entities()[entity])->record;
}

inline std::string pairsOf(const Drawing& drawing) {
  return pairsOf(drawing, recordOf(drawing, 0));
}

// The class has no say in editing.
inline Subject subjectOf(const Drawing& drawing, std::size_t entity = 0) {
  const VkDbObjectId id = drawing.entities()[entity];
  return Subject(*database::resolve(id), id, toyClass);
}

inline VariantHolder pointValue(const Vector3& point) {
  VariantHolder held;
  *held.put() = toVariant(Value(point), VT_VARIANT);
  return held;
}

// The result that the refusal stands for; S_OK when there is none.
template <class Body>
HRESULT refusalOf(Body&& body) {
  try {
    body();
  } catch (const Refusal& refusal) {
    EXPECT_FALSE(refusal.text().empty());
    return refusal.result();
  }
  return S_OK;
}

}  // namespace velt::automation::test
