#include "embedded/automation/dimensions/StyleAccess.h"

#include <algorithm>
#include <limits>

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/dimensions/StyleEditor.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/NameFolding.h"

namespace velt::automation {
namespace {

StyleVariable variableOf(const PropertyRow& row) {
  return {row.access.code, row.access.otherwise, row.access.since};
}

std::int32_t clamped(std::int64_t number) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, std::numeric_limits<std::int32_t>::min(),
                                                            std::numeric_limits<std::int32_t>::max()));
}

std::int64_t integerOf(const Subject& subject, const PropertyRow& row) {
  return DimensionStyle(subject).integer(variableOf(row));
}

void requireColorIndex(std::int32_t index) {
  constexpr std::int32_t byLayer = 256;
  if (index < 0 || index > byLayer) throw Refusal(E_INVALIDARG, L"A color index lies between 0 and 256.");
}

}  // namespace

namespace access {

Value getStyleReal(const Subject& subject, const PropertyRow& row) {
  return DimensionStyle(subject).real(variableOf(row));
}

Value getStyleInteger(const Subject& subject, const PropertyRow& row) {
  return clamped(integerOf(subject, row));
}

Value getStyleFlag(const Subject& subject, const PropertyRow& row) {
  return integerOf(subject, row) != 0;
}

Value getStyleBit(const Subject& subject, const PropertyRow& row) {
  return (integerOf(subject, row) & row.access.mask) != 0;
}

Value getStyleMember(const Subject& subject, const PropertyRow& row) {
  return memberOr(*row.type.user, integerOf(subject, row), static_cast<std::int32_t>(row.access.otherwise));
}

Value getStyleLinetype(const Subject& subject, const PropertyRow& row) {
  const std::wstring name = DimensionStyle(subject).entryName(variableOf(row), subject.drawing().linetypes());
  return name.empty() ? std::wstring(L"ByBlock") : name;
}

void putStyleReal(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& number = valueAs<double>(value);
  requireWithin(row.access.limit, number);
  if (std::get<double>(getStyleReal(subject, row)) == number) return;
  StyleEditor(subject).real(variableOf(row), number);
}

void putStyleColor(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& index = valueAs<std::int32_t>(value);
  requireColorIndex(index);
  if (integerOf(subject, row) != index) StyleEditor(subject).integer(variableOf(row), index);
}

void putStyleFlag(const Subject& subject, const PropertyRow& row, const Value& value) {
  const bool flag = valueAs<bool>(value);
  if (std::get<bool>(getStyleFlag(subject, row)) != flag) {
    StyleEditor(subject).integer(variableOf(row), flag ? 1 : 0);
  }
}

void putStyleBit(const Subject& subject, const PropertyRow& row, const Value& value) {
  const std::int64_t before = integerOf(subject, row);
  const std::int64_t after =
      valueAs<bool>(value) ? before | row.access.mask : before & ~std::int64_t{row.access.mask};
  if (after != before) StyleEditor(subject).integer(variableOf(row), after);
}

void putStyleMember(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& member = valueAs<std::int32_t>(value);
  if (std::get<std::int32_t>(getStyleMember(subject, row)) != member) {
    StyleEditor(subject).integer(variableOf(row), member);
  }
}

void putStyleLinetype(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& name = valueAs<std::wstring>(value);
  const database::TableEntry* const linetype = subject.drawing().linetypes().find(name);
  if (linetype == nullptr) throw Refusal(E_INVALIDARG, L"The drawing has no line type of that name.");
  if (database::sameName(std::get<std::wstring>(getStyleLinetype(subject, row)), name)) return;
  const bool isMissingOne = linetype->isImplied() && database::sameName(name, L"ByBlock");
  StyleEditor(subject).handle(variableOf(row),
                              isMissingOne ? 0 : handleOfEntry(subject.drawing(), *linetype));
}

}  // namespace access
}  // namespace velt::automation
