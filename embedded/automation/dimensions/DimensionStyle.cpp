#include "embedded/automation/dimensions/DimensionStyle.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <limits>

#include "dxf/Numbers.h"
#include "embedded/automation/dimensions/StyleEditor.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/NameFolding.h"

namespace velt::automation {
namespace {

std::int32_t clamped(std::int64_t number) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, std::numeric_limits<std::int32_t>::min(),
                                                            std::numeric_limits<std::int32_t>::max()));
}

std::int64_t integerOf(const Subject& subject, const PropertyRow& row) {
  return DimensionStyle(subject).integer(row.access.code, static_cast<std::int64_t>(row.access.otherwise));
}

// In the order of the enumeration.
constexpr std::array<std::wstring_view, 20> arrowheadNames = {
    L"",         L"CLOSEDBLANK", L"CLOSED",     L"DOT",         L"ARCHTICK", L"OBLIQUE",  L"OPEN",
    L"ORIGIN",   L"ORIGIN2",     L"OPEN90",     L"OPEN30",      L"DOTSMALL", L"DOTBLANK", L"SMALL",
    L"BOXBLANK", L"BOXFILLED",   L"DATUMBLANK", L"DATUMFILLED", L"INTEGRAL", L"NONE",
};

void requireColorIndex(std::int32_t index) {
  constexpr std::int32_t byLayer = 256;
  if (index < 0 || index > byLayer) throw Refusal(E_INVALIDARG, L"A colour index lies between 0 and 256.");
}

}  // namespace

// The data of the application may hold other lists beside this one.
std::optional<Overrides> findOverrides(const database::Lens& entity) {
  constexpr int textCode = 1000;
  constexpr int braceCode = 1002;
  constexpr int nameOfVariable = 1070;
  const std::optional<dxf::PairRange> range = entity.xdata(overridesApplication);
  if (!range) return std::nullopt;
  const dxf::RecordView& view = entity.view();
  const std::size_t end = range->first + range->count;
  std::size_t index = range->first;
  bool isNamed = false;
  for (; index < end; ++index) {
    const std::string_view value = dxf::trimmed(view.value(index));
    if (view.code(index) == textCode) isNamed = value == overridesList;
    if (isNamed && view.code(index) == braceCode && value == "{") break;
  }
  if (index == end) return isNamed ? std::optional(Overrides{end, end, false}) : std::nullopt;
  Overrides list{index + 1, index + 1, false};
  const auto isPair = [&](std::size_t name) {
    return name + 1 < end && view.code(name) == nameOfVariable && view.code(name + 1) != braceCode;
  };
  while (isPair(list.end))
    list.end += 2;
  list.isWhole =
      list.end < end && view.code(list.end) == braceCode && dxf::trimmed(view.value(list.end)) == "}";
  return list;
}

DimensionStyle::DimensionStyle(const Subject& subject) : entity_(subject.lens()) {
  const database::TableEntry* const entry = subject.drawing().dimStyles().find(name());
  if (entry != nullptr && !entry->isImplied()) style_.emplace(subject.drawing(), entry->record);
}

std::wstring DimensionStyle::name() const {
  constexpr int code = 3;
  return entity_.name(code, dxf::anySubclass, L"Standard");
}

std::optional<std::string_view> DimensionStyle::overriding(int code) const {
  const std::optional<Overrides> list = findOverrides(entity_);
  if (!list) return std::nullopt;
  const dxf::RecordView& view = entity_.view();
  for (std::size_t name = list->begin; name < list->end; name += 2) {
    if (dxf::parseInteger<int>(view.value(name)) == code) return view.value(name + 1);
  }
  return std::nullopt;
}

std::optional<std::string_view> DimensionStyle::value(int code) const {
  const std::optional<std::string_view> own = overriding(code);
  if (own || !style_) return own;
  return style_->value(code, dimensionStyleSubclass);
}

double DimensionStyle::real(int code, double otherwise) const {
  const auto text = value(code);
  return text ? dxf::parseReal(*text).value_or(otherwise) : otherwise;
}

double DimensionStyle::realOfStyle(int code, double otherwise) const {
  return style_ ? style_->real(code, dimensionStyleSubclass, otherwise) : otherwise;
}

std::int64_t DimensionStyle::integer(int code, std::int64_t otherwise) const {
  const auto text = value(code);
  return text ? dxf::parseInteger<std::int64_t>(*text).value_or(otherwise) : otherwise;
}

std::wstring DimensionStyle::text(int code) const {
  const auto text = value(code);
  return text ? entity_.drawing().decode(*text) : std::wstring();
}

std::wstring DimensionStyle::entryName(int code, const database::Table& table) const {
  const auto text = value(code);
  const std::uint64_t handle = text ? dxf::parseHandle(*text).value_or(0) : 0;
  const std::optional<std::uint32_t> record = entity_.drawing().recordByHandle(handle);
  const database::TableEntry* const entry = record ? table.ofRecord(*record) : nullptr;
  return entry == nullptr ? std::wstring() : entry->name;
}

std::wstring DimensionStyle::blockName(int handleCode, int nameCode) const {
  const std::wstring named = entryName(handleCode, entity_.drawing().blocks());
  if (!named.empty() || has(handleCode)) return named;
  const auto old = value(nameCode);
  return old ? entity_.drawing().decode(dxf::trimmed(*old)) : std::wstring();
}

std::int32_t arrowheadOfBlock(std::wstring_view name) {
  constexpr std::int32_t userDefined = 20;
  if (name.starts_with(L'_')) name.remove_prefix(1);
  std::wstring upper(name);
  for (wchar_t& letter : upper)
    letter = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(letter)));
  const auto found = std::find(arrowheadNames.begin(), arrowheadNames.end(), upper);
  return found == arrowheadNames.end() ? userDefined
                                       : static_cast<std::int32_t>(found - arrowheadNames.begin());
}

const database::TableEntry* blockOfArrowhead(const database::Drawing& drawing, std::int32_t arrowhead) {
  const auto index = static_cast<std::size_t>(arrowhead);
  if (arrowhead < 1 || index >= arrowheadNames.size()) return nullptr;
  const std::wstring plain(arrowheadNames[index]);
  const database::TableEntry* const usual = drawing.blocks().find(L"_" + plain);
  return usual != nullptr ? usual : drawing.blocks().find(plain);
}

std::uint64_t handleOfEntry(const database::Drawing& drawing, const database::TableEntry& entry) {
  const std::uint64_t handle =
      entry.isImplied() ? 0 : dxf::parseHandle(drawing.view(entry.record).handle()).value_or(0);
  if (handle == 0) throw Refusal(E_FAIL, L"The drawing has no handle for " + entry.name + L".");
  return handle;
}

namespace access {

Value getStyleReal(const Subject& subject, const PropertyRow& row) {
  return DimensionStyle(subject).real(row.access.code, row.access.otherwise);
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
  const EnumMember* const member = findMember(*row.type.user, integerOf(subject, row));
  return member != nullptr ? member->value : static_cast<std::int32_t>(row.access.otherwise);
}

Value getStyleLinetype(const Subject& subject, const PropertyRow& row) {
  const std::wstring name = DimensionStyle(subject).entryName(row.access.code, subject.drawing().linetypes());
  return name.empty() ? std::wstring(L"ByBlock") : name;
}

void putStyleReal(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& number = valueAs<double>(value);
  requireWithin(row.access.limit, number);
  if (std::get<double>(getStyleReal(subject, row)) == number) return;
  StyleEditor(subject).real(row.access.code, number);
}

void putStyleColor(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& index = valueAs<std::int32_t>(value);
  requireColorIndex(index);
  if (integerOf(subject, row) != index) StyleEditor(subject).integer(row.access.code, index);
}

void putStyleFlag(const Subject& subject, const PropertyRow& row, const Value& value) {
  const bool flag = valueAs<bool>(value);
  if (std::get<bool>(getStyleFlag(subject, row)) != flag) {
    StyleEditor(subject).integer(row.access.code, flag ? 1 : 0);
  }
}

void putStyleBit(const Subject& subject, const PropertyRow& row, const Value& value) {
  const std::int64_t before = integerOf(subject, row);
  const std::int64_t after =
      valueAs<bool>(value) ? before | row.access.mask : before & ~std::int64_t{row.access.mask};
  if (after != before) StyleEditor(subject).integer(row.access.code, after);
}

void putStyleMember(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& member = valueAs<std::int32_t>(value);
  if (std::get<std::int32_t>(getStyleMember(subject, row)) != member) {
    StyleEditor(subject).integer(row.access.code, member);
  }
}

void putStyleLinetype(const Subject& subject, const PropertyRow& row, const Value& value) {
  const auto& name = valueAs<std::wstring>(value);
  const database::TableEntry* const linetype = subject.drawing().linetypes().find(name);
  if (linetype == nullptr) throw Refusal(E_INVALIDARG, L"The drawing has no line type of that name.");
  if (database::sameName(std::get<std::wstring>(getStyleLinetype(subject, row)), name)) return;
  const bool isMissingOne = linetype->isImplied() && database::sameName(name, L"ByBlock");
  StyleEditor(subject).handle(row.access.code,
                              isMissingOne ? 0 : handleOfEntry(subject.drawing(), *linetype));
}

}  // namespace access
}  // namespace velt::automation
