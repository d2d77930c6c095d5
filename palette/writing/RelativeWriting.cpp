// Values that follow from those that entities have.

#include <fmt/format.h>

#include <cmath>
#include <map>
#include <regex>
#include <utility>

#include "palette/Palette.h"
#include "palette/rows/NumberKinds.h"
#include "palette/text/NumberText.h"
#include "palette/writing/CancelledWrite.h"

namespace velt::palette {

namespace {

// s/PATTERN/NEW/FLAGS
class Replacement {
 public:
  explicit Replacement(std::string_view written) {
    const std::wstring text = fromUtf8(written);
    if (text.size() < 2 || text[0] != L's') refuse(written);
    const std::size_t second = text.find(text[1], 2);
    const std::size_t third = second == std::wstring::npos ? second : text.find(text[1], second + 1);
    if (third == std::wstring::npos) refuse(written);
    const std::wstring flags = text.substr(third + 1);
    if (flags.find_first_not_of(L"gi") != std::wstring::npos) refuse(written);
    auto syntax = std::regex_constants::ECMAScript;
    if (flags.find(L'i') != std::wstring::npos) syntax |= std::regex_constants::icase;
    if (flags.find(L'g') == std::wstring::npos) which_ = std::regex_constants::format_first_only;
    new_ = text.substr(second + 1, third - second - 1);
    try {
      pattern_.assign(text.substr(2, second - 2), syntax);
    } catch (const std::regex_error&) {
      throw Error(fmt::format("\"{}\" is not a regular expression", toUtf8(text.substr(2, second - 2))));
    }
  }

  std::string appliedTo(const std::string& utf8) const {
    const std::wstring text = fromUtf8(utf8);
    // The search takes stack for each character.
    constexpr std::size_t longest = 10000;
    if (text.size() > longest) throw Error(fmt::format("a text of {} characters is too long", text.size()));
    try {
      return toUtf8(std::regex_replace(text, pattern_, new_, which_));
    } catch (const std::regex_error&) {
      throw Error("searching the text takes too long");
    }
  }

 private:
  [[noreturn]] static void refuse(std::string_view written) {
    throw Error(fmt::format(
        "\"{}\" is not a replacement: write s/OLD/NEW/, or s/OLD/NEW/g for all occurrences", written));
  }

  std::wregex pattern_{};
  std::wstring new_{};
  std::regex_constants::match_flag_type which_ = std::regex_constants::format_default;
};

// What one number becomes.
class Calculation {
 public:
  Calculation(const Row& row, Relation relation, std::string_view operand, NumberStyle style)
      : relation_(relation), operand_(operandIn(row, relation, operand, std::move(style))) {}

  double appliedTo(double number) const {
    switch (relation_) {
      case Relation::plus:
        return number + operand_;
      case Relation::minus:
        return number - operand_;
      case Relation::times:
        return number * operand_;
      default:
        return number / operand_;
    }
  }

 private:
  static double operandIn(const Row& row, Relation relation, std::string_view text, NumberStyle style) {
    if (relation == Relation::plus || relation == Relation::minus) {
      // A difference of directions begins nowhere, but turns as they do.
      const bool turnsBack = isDirection(row.record()) && style.isClockwise;
      style.angleBase = 0;
      style.isClockwise = false;
      const std::optional<double> number = numberOf(row.parse(text, style).plain());
      if (!number) throw Error("its value is not a number that could be added to");
      return turnsBack ? -*number : *number;
    }
    const std::optional<double> factor = decimalIn(text);
    if (!factor || (relation == Relation::dividedBy && std::fpclassify(*factor) == FP_ZERO))
      throw Error(fmt::format("\"{}\" is not a number to {} by", text,
                              relation == Relation::times ? "multiply" : "divide"));
    return *factor;
  }

  Relation relation_;
  double operand_;
};

// Answers each entity's new value, or throws an Error for one that has none.
using Change = std::function<Value(const PlainValue& now)>;

Change changeOf(const Row& row, Relation relation, std::string_view operand, const NumberStyle& style) {
  const PlainValue sample = row.plain();
  if (relation == Relation::replaced) {
    if (!std::holds_alternative<std::string>(sample) && !std::holds_alternative<std::monostate>(sample))
      throw Error("its value is not a text in which something could be replaced");
    return [&row, replacement = Replacement(operand)](const PlainValue& now) {
      const auto* const text = std::get_if<std::string>(&now);
      if (text == nullptr) throw Error("it has no text that could be changed");
      return row.valueOf(replacement.appliedTo(*text));
    };
  }
  const bool isChoice = row.hasChoices() && std::holds_alternative<std::int64_t>(sample);
  if (isChoice || (!numberOf(sample) && !std::holds_alternative<std::monostate>(sample)))
    throw Error("its value is not a number");
  return [&row, calculation = Calculation(row, relation, operand, style)](const PlainValue& now) {
    const std::optional<double> number = numberOf(now);
    if (!number || std::isnan(*number)) throw Error("it has no number that could be changed");
    return row.valueOf(calculation.appliedTo(*number));
  };
}

}  // namespace

Report Selection::writeRelative(const Row& row, Relation relation, std::string_view operand,
                                const WriteOptions& options) {
  const Change change = changeOf(row, relation, operand, options.style);
  std::vector<std::optional<Value>> wanted(size());
  std::map<std::size_t, std::string> reasons;
  std::vector<std::size_t> locked;
  std::vector<Value> now;
  try {
    now = values(row);
  } catch (const Cancelled&) {
    return reportOfCancelled(size());
  }
  for (std::size_t i = 0; i < size() && (reasons.empty() || options.keepGoing); ++i) {
    try {
      wanted[i] = change(now[i].plain());
    } catch (const Error& error) {
      if (isOnLockedLayer(entity(i))) {
        locked.push_back(i);
      } else {
        reasons[i] = error.what();
      }
    }
  }
  if (!reasons.empty() && !options.keepGoing) {
    // Nothing is written, so that what is refused can be mended and the same be asked once more.
    Report report;
    report.fates.assign(size(), Fate::notReached);
    report.fates[reasons.begin()->first] = Fate::refused;
    report.reasons = std::move(reasons);
    return report;
  }
  Report report = writeEach(row, wanted, options);
  for (const std::size_t index : locked)
    report.fates[index] = Fate::locked;
  for (auto& [index, reason] : reasons) {
    report.fates[index] = Fate::refused;
    report.reasons[index] = std::move(reason);
  }
  return report;
}

}  // namespace velt::palette
