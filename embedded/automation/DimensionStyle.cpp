#include "embedded/automation/DimensionStyle.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <limits>

#include "embedded/dxf/Numbers.h"

namespace velt::automation {
namespace {

/// Where in view() the value of an overridden variable stands. The data of an application may hold other lists beside
/// the one of overrides, so only what stands between its braces is looked at: codes and values in turn.
std::optional<std::size_t> findOverride(const database::Lens& lens, int wanted) {
  constexpr int textCode = 1000;
  constexpr int braceCode = 1002;
  constexpr int nameOfVariable = 1070;
  const std::optional<dxf::PairRange> range = lens.xdata("ACAD");
  if (!range) return std::nullopt;
  const dxf::RecordView& view = lens.view();
  bool isListNext = false;
  bool isInside = false;
  for (std::size_t index = range->first; index < range->first + range->count; ++index) {
    const std::string_view value = dxf::trimmed(view.value(index));
    if (isInside) {
      if (view.code(index) == braceCode) return std::nullopt;
      if (view.code(index) != nameOfVariable || index + 1 >= range->first + range->count) return std::nullopt;
      if (dxf::parseInteger<int>(value) == wanted) return index + 1;
      ++index;
    } else if (view.code(index) == textCode) {
      isListNext = value == "DSTYLE";
    } else if (view.code(index) == braceCode && isListNext) {
      isInside = value == "{";
    }
  }
  return std::nullopt;
}

std::int32_t clamped(std::int64_t number) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, std::numeric_limits<std::int32_t>::min(),
                                                            std::numeric_limits<std::int32_t>::max()));
}

std::int64_t integerOf(const Subject& subject, const PropertyRow& row) {
  return DimensionStyle(subject).integer(row.access.code, static_cast<std::int64_t>(row.access.otherwise));
}

}  // namespace

DimensionStyle::DimensionStyle(const Subject& subject) : entity_(subject.lens()) {
  const database::TableEntry* const entry = subject.drawing().dimStyles().find(name());
  if (entry != nullptr && !entry->isImplied()) style_.emplace(subject.drawing(), entry->record);
}

std::wstring DimensionStyle::name() const {
  constexpr int code = 3;
  return entity_.name(code, dxf::anySubclass, L"Standard");
}

std::optional<std::string_view> DimensionStyle::overriding(int code) const {
  const std::optional<std::size_t> index = findOverride(entity_, code);
  return index ? std::optional(entity_.view().value(*index)) : std::nullopt;
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
  // In the order of the enumeration.
  constexpr std::array<std::wstring_view, 20> names = {
      L"",         L"CLOSEDBLANK", L"CLOSED",     L"DOT",         L"ARCHTICK", L"OBLIQUE",  L"OPEN",
      L"ORIGIN",   L"ORIGIN2",     L"OPEN90",     L"OPEN30",      L"DOTSMALL", L"DOTBLANK", L"SMALL",
      L"BOXBLANK", L"BOXFILLED",   L"DATUMBLANK", L"DATUMFILLED", L"INTEGRAL", L"NONE",
  };
  constexpr std::int32_t userDefined = 20;
  if (name.starts_with(L'_')) name.remove_prefix(1);
  std::wstring upper(name);
  for (wchar_t& letter : upper)
    letter = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(letter)));
  const auto found = std::find(names.begin(), names.end(), upper);
  return found == names.end() ? userDefined : static_cast<std::int32_t>(found - names.begin());
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

}  // namespace access
}  // namespace velt::automation
