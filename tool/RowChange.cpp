#include "tool/RowChange.h"

#include <utility>

#include "tool/ReadOnlyRows.h"

namespace velt::tool {

std::optional<palette::Relation> relationOf(char sign) {
  using palette::Relation;
  constexpr std::pair<char, Relation> signs[] = {
      {'+', Relation::plus}, {'-', Relation::minus}, {'*', Relation::times}, {'/', Relation::dividedBy}};
  for (const auto& [known, relation] : signs) {
    if (sign == known) return relation;
  }
  return std::nullopt;
}

bool isReplacement(std::string_view value) {
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  return value.size() > 2 && value.starts_with("~s") && !isLetter(value[2]);
}

RowChange rowChangeIn(const palette::Row& row, std::string_view written) {
  if (isReplacement(written)) return {std::string(written.substr(1)), palette::Relation::replaced};
  const palette::PlainValue now = row.plain();
  const bool mayReckon = palette::numberOf(now) || std::holds_alternative<std::monostate>(now);
  if (mayReckon && written.size() > 1 && written[1] == '=') {
    if (const auto relation = relationOf(written[0])) return {std::string(written.substr(2)), relation};
  }
  return {std::string(written)};
}

palette::Report write(palette::Selection& selection, const palette::Row& row, const RowChange& change,
                      const palette::WriteOptions& options) {
  const automation::RefusalLog log;
  palette::Report report = change.relation
                               ? selection.writeRelative(row, *change.relation, change.value, options)
                               : selection.writeText(row, change.value, options);
  tellWhyRefused(report, selection, row, log);
  return report;
}

}  // namespace velt::tool
