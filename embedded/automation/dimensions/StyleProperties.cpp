#include "embedded/automation/dimensions/StyleProperties.h"

#include <cmath>
#include <optional>
#include <string_view>

#include "embedded/automation/dimensions/DimensionTypes.h"
#include "embedded/automation/dimensions/StyleEditor.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/NameFolding.h"

namespace velt::automation {
namespace {

// --- the style ---

constexpr int scaleCode = 40;
constexpr int gapCode = 147;
constexpr double usualGap = 0.09;

// Of a dimension that measures a length.
std::optional<double> measuredLength(const Subject& subject) {
  for (const PropertyRow& row : subject.kind().rows) {
    if (std::wstring_view(row.name) != L"Measurement" || row.type.user != &types::distance) continue;
    return std::get<double>(row.access.get(subject, row));
  }
  return std::nullopt;
}

// Runs a change of the style; a dimension stores what it measures, too, times the scale of the style.
template <class Change>
void keepingMeasurement(const Subject& subject, Change&& change) {
  constexpr int measurementCode = 42;
  constexpr const char* dimension = "AcDbDimension";
  const std::optional<double> before = measuredLength(subject);
  change();
  const std::optional<double> after = measuredLength(subject);
  if (after && after != before && subject.lens().has(measurementCode, dimension)) {
    Editor(subject).real(measurementCode, dimension, *after);
  }
}

// What the place of a leader's text depends on.
struct TextPlace {
  double gap;
  std::int64_t position;

  friend bool operator==(const TextPlace&, const TextPlace&) = default;
};

TextPlace textPlaceOf(const Subject& subject) {
  const DimensionStyle style(subject);
  return {style.real(gapCode, usualGap) * style.real(scaleCode, 1), style.integer(77, 0)};
}

const char* subclassOfStyle(const Subject& subject) {
  const std::string_view type = subject.lens().type();
  return type == "LEADER" ? "AcDbLeader" : type == "TOLERANCE" ? "AcDbFcf" : "AcDbDimension";
}

// --- arrowheads ---

constexpr int tickSizeCode = 142;
constexpr int differCode = 173;
constexpr int bothCode = 342;
constexpr int leaderCode = 341;
constexpr const wchar_t* tick = L"_Oblique";

constexpr int handleCodeOf(int end) {
  return end == 1 ? 343 : 344;
}
constexpr int nameCodeOf(int end) {
  return end == 1 ? 6 : 7;
}

std::wstring arrowheadBlock(const Subject& subject, int end) {
  const DimensionStyle style(subject);
  if (style.real(tickSizeCode, 0) > 0) return tick;
  const bool areDifferent = style.integer(differCode, 0) != 0;
  return areDifferent ? style.blockName(handleCodeOf(end), nameCodeOf(end)) : style.blockName(bothCode, 5);
}

// 0 for the usual one, which needs no block.
std::uint64_t handleOfBlock(const database::Drawing& drawing, std::wstring_view name) {
  if (name.empty()) return 0;
  const database::TableEntry* const block = drawing.blocks().find(name);
  if (block == nullptr) {
    throw Refusal(E_INVALIDARG, L"The drawing has no block " + std::wstring(name) + L".");
  }
  if (block->name.starts_with(L'*') || drawing.layoutOf(*block) != nullptr) {
    throw Refusal(E_INVALIDARG, L"The block cannot be an arrowhead.");
  }
  return handleOfEntry(drawing, *block);
}

// The other end keeps its own.
void putBlockAtEnd(const Subject& subject, int end, const std::wstring& name) {
  if (database::sameName(arrowheadBlock(subject, end), name)) return;
  const database::Drawing& drawing = subject.drawing();
  const int otherEnd = 3 - end;
  const std::wstring otherName = arrowheadBlock(subject, otherEnd);
  const std::uint64_t block = handleOfBlock(drawing, name);
  const DimensionStyle style(subject);
  const bool hasTicks = style.real(tickSizeCode, 0) > 0;
  const bool areDifferent = style.integer(differCode, 0) != 0;
  StyleEditor editor(subject);
  if (hasTicks) editor.real(tickSizeCode, 0);
  if (hasTicks || !areDifferent) editor.handle(handleCodeOf(otherEnd), handleOfBlock(drawing, otherName));
  if (!areDifferent) editor.integer(differCode, 1);
  editor.handle(handleCodeOf(end), block);
}

// The name of the block that is the arrowhead.
std::wstring blockNameOf(const Subject& subject, std::int32_t arrowhead) {
  constexpr std::int32_t usual = 0;
  constexpr std::int32_t userDefined = 20;
  if (arrowhead == usual) return {};
  if (arrowhead == userDefined) {
    throw Refusal(E_INVALIDARG, L"An arrowhead of the user's is chosen by the name of its block.");
  }
  const database::TableEntry* const block = blockOfArrowhead(subject.drawing(), arrowhead);
  if (block == nullptr) throw Refusal(E_FAIL, L"The drawing has no block of that arrowhead.");
  return block->name;
}

// --- text ---

struct Affixes {
  std::wstring prefix;
  std::wstring suffix;
};

struct AffixVariable {
  int code;
  std::wstring_view mark;
};
constexpr AffixVariable primaryAffixes = {3, L"<>"};
constexpr AffixVariable alternateAffixes = {4, L"[]"};

// Without a mark for the measurement, all is suffix.
Affixes affixesOf(const Subject& subject, const AffixVariable& variable) {
  const std::wstring stored = DimensionStyle(subject).text(variable.code);
  const std::size_t at = stored.find(variable.mark);
  if (at == std::wstring::npos) return {L"", stored};
  return {stored.substr(0, at), stored.substr(at + variable.mark.size())};
}

void putAffixes(const Subject& subject, const AffixVariable& variable, const Affixes& affixes) {
  for (const std::wstring& affix : {affixes.prefix, affixes.suffix}) {
    requireLine(affix);
    if (affix.find(variable.mark) != std::wstring::npos) {
      throw Refusal(E_INVALIDARG, std::wstring(variable.mark) + L" stands for the measurement itself.");
    }
  }
  const bool areNone = affixes.prefix.empty() && affixes.suffix.empty();
  StyleEditor(subject).text(variable.code,
                            areNone ? L"" : affixes.prefix + std::wstring(variable.mark) + affixes.suffix);
}

void putPrefixOf(const Subject& subject, const AffixVariable& variable, const std::wstring& prefix) {
  Affixes affixes = affixesOf(subject, variable);
  if (affixes.prefix == prefix) return;
  affixes.prefix = prefix;
  putAffixes(subject, variable, affixes);
}

void putSuffixOf(const Subject& subject, const AffixVariable& variable, const std::wstring& suffix) {
  Affixes affixes = affixesOf(subject, variable);
  if (affixes.suffix == suffix) return;
  affixes.suffix = suffix;
  putAffixes(subject, variable, affixes);
}

// --- units ---

std::int32_t memberOr(const UserType& type, std::int64_t value, std::int32_t otherwise) {
  const EnumMember* const member = findMember(type, value);
  return member == nullptr ? otherwise : member->value;
}

// The lowest two bits: 0 neither, 1 both, 2 feet only, 3 inches only are shown when they are zero.
struct ZeroUnits {
  bool suppressFeet;
  bool suppressInches;
};

constexpr std::int64_t zeroUnitBits = 3;

ZeroUnits zeroUnitsOf(const Subject& subject, int code) {
  const std::int64_t kind = DimensionStyle(subject).integer(code, 0) & zeroUnitBits;
  return {kind == 0 || kind == 3, kind == 0 || kind == 2};
}

void putZeroUnits(const Subject& subject, int code, const ZeroUnits& units) {
  const std::int64_t kind =
      units.suppressFeet ? (units.suppressInches ? 0 : 3) : (units.suppressInches ? 2 : 1);
  const std::int64_t before = DimensionStyle(subject).integer(code, 0);
  const std::int64_t after = (before & ~zeroUnitBits) | kind;
  if (after != before) StyleEditor(subject).integer(code, after);
}

// --- tolerances ---

enum Tolerance : std::int32_t { none, symmetrical, deviation, limits, basic };

constexpr int upperCode = 47;
constexpr int lowerCode = 48;
constexpr int hasToleranceCode = 71;
constexpr int hasLimitsCode = 72;

double gapOf(const Subject& subject) {
  return DimensionStyle(subject).real(gapCode, usualGap);
}

bool areLimitsEqual(const Subject& subject) {
  // Stored with the same text, two equal numbers are the same number.
  return getUpperLimit(subject) == getLowerLimit(subject);
}

void requireTolerance(const Subject& subject, std::int32_t tolerance) {
  if (tolerance == symmetrical && !areLimitsEqual(subject)) {
    throw Refusal(E_FAIL, L"The limits differ, so that the tolerance is not symmetrical.");
  }
  if (tolerance == deviation && areLimitsEqual(subject)) {
    throw Refusal(E_FAIL, L"The limits are equal, so that the tolerance is symmetrical.");
  }
  if (tolerance == basic && gapOf(subject) == 0) {
    throw Refusal(E_FAIL, L"A frame needs room around the text.");
  }
}

void putFlag(const Subject& subject, int code, bool flag) {
  if ((DimensionStyle(subject).integer(code, 0) != 0) != flag)
    StyleEditor(subject).integer(code, flag ? 1 : 0);
}

void putLimit(const Subject& subject, int code, double limit) {
  const int otherCode = code == upperCode ? lowerCode : upperCode;
  const DimensionStyle style(subject);
  if (style.real(code, 0) == limit) return;
  const std::int32_t tolerance = getTolerance(subject);
  if (tolerance == deviation && style.real(otherCode, 0) == limit) {
    throw Refusal(E_FAIL, L"With equal limits the tolerance would be symmetrical.");
  }
  StyleEditor editor(subject);
  editor.real(code, limit);
  if (tolerance == symmetrical) editor.real(otherCode, limit);
}

}  // namespace

// --- the style ---

std::wstring getDimStyle(const Subject& subject) {
  return DimensionStyle(subject).name();
}

void putDimStyle(const Subject& subject, const std::wstring& name) {
  constexpr int code = 3;
  const database::TableEntry* const style = subject.drawing().dimStyles().find(name);
  if (style == nullptr) throw Refusal(E_INVALIDARG, L"The drawing has no dimension style of that name.");
  if (database::sameName(getDimStyle(subject), name)) return;
  const TextPlace before = textPlaceOf(subject);
  keepingMeasurement(subject, [&] { Editor(subject).name(code, subclassOfStyle(subject), *style); });
  if (leaderLeadsToText(subject) && textPlaceOf(subject) != before) {
    throw Refusal(reasons::leaderTextWouldMove);
  }
}

bool leaderLeadsToText(const Subject& subject) {
  constexpr std::int64_t nothing = 3;
  const database::Lens lens = subject.lens();
  return lens.type() == "LEADER" && lens.integer(73, "AcDbLeader", nothing) != nothing;
}

// --- arrowheads ---

template <int End>
std::wstring getArrowheadBlock(const Subject& subject) {
  return arrowheadBlock(subject, End);
}

template <int End>
std::int32_t getArrowhead(const Subject& subject) {
  return arrowheadOfBlock(arrowheadBlock(subject, End));
}

template <int End>
void putArrowheadBlock(const Subject& subject, const std::wstring& name) {
  putBlockAtEnd(subject, End, name);
}

template <int End>
void putArrowhead(const Subject& subject, const std::int32_t& arrowhead) {
  if (getArrowhead<End>(subject) != arrowhead) putBlockAtEnd(subject, End, blockNameOf(subject, arrowhead));
}

template std::wstring getArrowheadBlock<1>(const Subject&);
template std::wstring getArrowheadBlock<2>(const Subject&);
template std::int32_t getArrowhead<1>(const Subject&);
template std::int32_t getArrowhead<2>(const Subject&);
template void putArrowheadBlock<1>(const Subject&, const std::wstring&);
template void putArrowheadBlock<2>(const Subject&, const std::wstring&);
template void putArrowhead<1>(const Subject&, const std::int32_t&);
template void putArrowhead<2>(const Subject&, const std::int32_t&);

std::wstring getLeaderArrowheadBlock(const Subject& subject) {
  return DimensionStyle(subject).blockName(leaderCode, 5);
}

std::int32_t getLeaderArrowhead(const Subject& subject) {
  return arrowheadOfBlock(getLeaderArrowheadBlock(subject));
}

void putLeaderArrowheadBlock(const Subject& subject, const std::wstring& name) {
  if (database::sameName(getLeaderArrowheadBlock(subject), name)) return;
  StyleEditor(subject).handle(leaderCode, handleOfBlock(subject.drawing(), name));
}

void putLeaderArrowhead(const Subject& subject, const std::int32_t& arrowhead) {
  if (getLeaderArrowhead(subject) != arrowhead) {
    putLeaderArrowheadBlock(subject, blockNameOf(subject, arrowhead));
  }
}

// --- lines ---

bool getDimLineInside(const Subject& subject) {
  return DimensionStyle(subject).integer(175, 0) == 0;
}

void putDimLineInside(const Subject& subject, const bool& isInside) {
  putFlag(subject, 175, !isInside);
}

namespace {

constexpr int centerCode = 141;
constexpr double usualCenterMark = 0.09;

double centerMarkOf(const Subject& subject) {
  return DimensionStyle(subject).real(centerCode, usualCenterMark);
}

// What the style has, whatever the entity overrides.
double centerMarkOfStyle(const Subject& subject) {
  const double ofStyle = std::abs(DimensionStyle(subject).realOfStyle(centerCode, usualCenterMark));
  return ofStyle > 0 ? ofStyle : usualCenterMark;
}

}  // namespace

std::int32_t getCenterType(const Subject& subject) {
  const double stored = centerMarkOf(subject);
  return stored > 0 ? 1 : stored < 0 ? 2 : 0;
}

void putCenterType(const Subject& subject, const std::int32_t& type) {
  if (getCenterType(subject) == type) return;
  const double before = std::abs(centerMarkOf(subject));
  const double size = before > 0 ? before : centerMarkOfStyle(subject);
  StyleEditor(subject).real(centerCode, type == 0 ? 0 : type == 1 ? size : -size);
}

double getCenterMarkSize(const Subject& subject) {
  return std::abs(centerMarkOf(subject));
}

void putCenterMarkSize(const Subject& subject, const double& size) {
  if (getCenterMarkSize(subject) == size) return;
  const std::int32_t type = getCenterType(subject);
  if (type == 0) throw Refusal(E_FAIL, L"There is no center mark that could have a size.");
  StyleEditor(subject).real(centerCode, type == 1 ? size : -size);
}

// --- text ---

std::wstring getDimensionTextStyle(const Subject& subject) {
  const std::wstring name = DimensionStyle(subject).entryName(340, subject.drawing().textStyles());
  return name.empty() ? std::wstring(L"Standard") : name;
}

void putDimensionTextStyle(const Subject& subject, const std::wstring& name) {
  const database::TableEntry* const style = subject.drawing().textStyles().find(name);
  if (style == nullptr) throw Refusal(E_INVALIDARG, L"The drawing has no text style of that name.");
  if (database::sameName(getDimensionTextStyle(subject), name)) return;
  StyleEditor(subject).handle(340, handleOfEntry(subject.drawing(), *style));
}

double getTextGap(const Subject& subject) {
  return std::abs(gapOf(subject));
}

void putTextGap(const Subject& subject, const double& gap) {
  if (getTextGap(subject) == gap) return;
  const bool hasFrame = gapOf(subject) < 0;
  if (hasFrame && gap == 0) throw Refusal(E_FAIL, L"The frame around the text needs room.");
  StyleEditor(subject).real(gapCode, hasFrame ? -gap : gap);
}

std::wstring getPrefix(const Subject& subject) {
  return affixesOf(subject, primaryAffixes).prefix;
}

std::wstring getSuffix(const Subject& subject) {
  return affixesOf(subject, primaryAffixes).suffix;
}

std::wstring getAlternatePrefix(const Subject& subject) {
  return affixesOf(subject, alternateAffixes).prefix;
}

std::wstring getAlternateSuffix(const Subject& subject) {
  return affixesOf(subject, alternateAffixes).suffix;
}

void putPrefix(const Subject& subject, const std::wstring& prefix) {
  putPrefixOf(subject, primaryAffixes, prefix);
}

void putSuffix(const Subject& subject, const std::wstring& suffix) {
  putSuffixOf(subject, primaryAffixes, suffix);
}

void putAlternatePrefix(const Subject& subject, const std::wstring& prefix) {
  putPrefixOf(subject, alternateAffixes, prefix);
}

void putAlternateSuffix(const Subject& subject, const std::wstring& suffix) {
  putSuffixOf(subject, alternateAffixes, suffix);
}

// --- units ---

std::int32_t getUnitsFormat(const Subject& subject) {
  constexpr std::int32_t decimal = 2;
  const DimensionStyle style(subject);
  return memberOr(types::lengthFormat, style.integer(277, style.integer(270, decimal)), decimal);
}

void putUnitsFormat(const Subject& subject, const std::int32_t& format) {
  if (getUnitsFormat(subject) != format) StyleEditor(subject).integer(277, format);
}

double getLinearScale(const Subject& subject) {
  return std::abs(DimensionStyle(subject).real(144, 1));
}

void putLinearScale(const Subject& subject, const double& scale) {
  if (getLinearScale(subject) == scale) return;
  const bool isOfPaper = DimensionStyle(subject).real(144, 1) < 0;
  keepingMeasurement(subject, [&] { StyleEditor(subject).real(144, isOfPaper ? -scale : scale); });
}

std::int32_t getAnglePrecision(const Subject& subject) {
  const DimensionStyle style(subject);
  const std::int64_t own = style.integer(179, 0);
  return memberOr(types::precision, own < 0 ? style.integer(271, 4) : own, 0);
}

void putAnglePrecision(const Subject& subject, const std::int32_t& places) {
  if (getAnglePrecision(subject) != places) StyleEditor(subject).integer(179, places);
}

std::wstring getDecimalSeparator(const Subject& subject) {
  const std::int64_t character = DimensionStyle(subject).integer(278, L'.');
  return std::wstring(1, character > 0 && character < 0x10000 ? static_cast<wchar_t>(character) : L'.');
}

void putDecimalSeparator(const Subject& subject, const std::wstring& separator) {
  requireLine(separator);
  if (separator.size() != 1) throw Refusal(E_INVALIDARG, L"The separator is a single character.");
  if (getDecimalSeparator(subject) != separator) StyleEditor(subject).integer(278, separator[0]);
}

template <int Code>
bool getSuppressZeroFeet(const Subject& subject) {
  return zeroUnitsOf(subject, Code).suppressFeet;
}

template <int Code>
bool getSuppressZeroInches(const Subject& subject) {
  return zeroUnitsOf(subject, Code).suppressInches;
}

template <int Code>
void putSuppressZeroFeet(const Subject& subject, const bool& isSuppressed) {
  putZeroUnits(subject, Code, {isSuppressed, zeroUnitsOf(subject, Code).suppressInches});
}

template <int Code>
void putSuppressZeroInches(const Subject& subject, const bool& isSuppressed) {
  putZeroUnits(subject, Code, {zeroUnitsOf(subject, Code).suppressFeet, isSuppressed});
}

#define OF_CODE(code)                                                   \
  template bool getSuppressZeroFeet<code>(const Subject&);              \
  template bool getSuppressZeroInches<code>(const Subject&);            \
  template void putSuppressZeroFeet<code>(const Subject&, const bool&); \
  template void putSuppressZeroInches<code>(const Subject&, const bool&);
OF_CODE(78)
OF_CODE(284)
OF_CODE(285)
#undef OF_CODE

// --- tolerances ---

std::int32_t getTolerance(const Subject& subject) {
  const DimensionStyle style(subject);
  if (style.integer(hasLimitsCode, 0) != 0) return limits;
  if (style.integer(hasToleranceCode, 0) != 0) return areLimitsEqual(subject) ? symmetrical : deviation;
  return gapOf(subject) < 0 ? basic : none;
}

void putTolerance(const Subject& subject, const std::int32_t& tolerance) {
  if (getTolerance(subject) == tolerance) return;
  requireTolerance(subject, tolerance);
  putFlag(subject, hasLimitsCode, tolerance == limits);
  putFlag(subject, hasToleranceCode, tolerance == symmetrical || tolerance == deviation);
  const double gap = gapOf(subject);
  if ((gap < 0) != (tolerance == basic)) StyleEditor(subject).real(gapCode, -gap);
}

double getLowerLimit(const Subject& subject) {
  return DimensionStyle(subject).real(lowerCode, 0);
}

double getUpperLimit(const Subject& subject) {
  return DimensionStyle(subject).real(upperCode, 0);
}

void putLowerLimit(const Subject& subject, const double& limit) {
  putLimit(subject, lowerCode, limit);
}

void putUpperLimit(const Subject& subject, const double& limit) {
  putLimit(subject, upperCode, limit);
}

}  // namespace velt::automation
