#include "embedded/automation/dimensions/StyleText.h"

#include <cmath>
#include <string_view>

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/dimensions/StyleEditor.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/NameFolding.h"

namespace velt::automation {
namespace {

struct Affixes {
  std::wstring prefix;
  std::wstring suffix;
};

// A variable, and what stands for the measurement in it.
struct AffixVariable {
  const StyleVariable& variable;
  std::wstring_view mark;
};
constexpr AffixVariable primaryAffixes = {variables::affixes, L"<>"};
constexpr AffixVariable alternateAffixes = {variables::alternateAffixes, L"[]"};

// Without a mark for the measurement, all is suffix.
Affixes affixesOf(const Subject& subject, const AffixVariable& of) {
  const std::wstring stored = DimensionStyle(subject).text(of.variable);
  const std::size_t at = stored.find(of.mark);
  if (at == std::wstring::npos) return {L"", stored};
  return {stored.substr(0, at), stored.substr(at + of.mark.size())};
}

void putAffixes(const Subject& subject, const AffixVariable& of, const Affixes& affixes) {
  for (const std::wstring& affix : {affixes.prefix, affixes.suffix}) {
    requireLine(subject.drawing(), affix);
    if (affix.find(of.mark) != std::wstring::npos) {
      throw Refusal(E_INVALIDARG, std::wstring(of.mark) + L" stands for the measurement itself.");
    }
  }
  const bool areNone = affixes.prefix.empty() && affixes.suffix.empty();
  StyleEditor(subject).text(of.variable,
                            areNone ? L"" : affixes.prefix + std::wstring(of.mark) + affixes.suffix);
}

void putPrefixOf(const Subject& subject, const AffixVariable& of, const std::wstring& prefix) {
  Affixes affixes = affixesOf(subject, of);
  if (affixes.prefix == prefix) return;
  affixes.prefix = prefix;
  putAffixes(subject, of, affixes);
}

void putSuffixOf(const Subject& subject, const AffixVariable& of, const std::wstring& suffix) {
  Affixes affixes = affixesOf(subject, of);
  if (affixes.suffix == suffix) return;
  affixes.suffix = suffix;
  putAffixes(subject, of, affixes);
}

}  // namespace

double storedTextGap(const Subject& subject) {
  return DimensionStyle(subject).real(variables::textGap);
}

std::wstring getDimensionTextStyle(const Subject& subject) {
  const std::wstring name =
      DimensionStyle(subject).entryName(variables::textStyle, subject.drawing().textStyles());
  return name.empty() ? std::wstring(L"Standard") : name;
}

void putDimensionTextStyle(const Subject& subject, const std::wstring& name) {
  const database::TableEntry* const style = subject.drawing().textStyles().find(name);
  if (style == nullptr) throw Refusal(E_INVALIDARG, L"The drawing has no text style of that name.");
  if (database::sameName(getDimensionTextStyle(subject), name)) return;
  StyleEditor(subject).handle(variables::textStyle, handleOfEntry(subject.drawing(), *style));
}

double getTextGap(const Subject& subject) {
  return std::abs(storedTextGap(subject));
}

void putTextGap(const Subject& subject, const double& gap) {
  const bool hasFrame = storedTextGap(subject) < 0;
  if (hasFrame && gap == 0) throw Refusal(E_FAIL, L"The frame around the text needs room.");
  StyleEditor(subject).real(variables::textGap, hasFrame ? -gap : gap);
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

}  // namespace velt::automation
