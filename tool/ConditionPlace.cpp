#include "tool/ConditionPlace.h"

#include <algorithm>

#include "palette/Palette.h"

namespace velt::tool {

namespace {

constexpr std::string_view blanks = " \t\n\r";
constexpr std::string_view signs = "=<>!";
constexpr std::string_view endsOfWords = " \t\n\r()'\"=<>!,";

bool isAmong(char c, std::string_view some) {
  return some.find(c) != std::string_view::npos;
}

bool isKeyword(std::string_view word) {
  constexpr std::string_view keywords[] = {"and", "or", "not", "has", "like", "in"};
  return std::any_of(std::begin(keywords), std::end(keywords),
                     [&](std::string_view keyword) { return palette::equalIgnoringCase(word, keyword); });
}

// Of a quoted operand the last quote is the end, and one inside it is there twice.
std::string withoutQuotes(std::string_view operand) {
  if (operand.empty() || !isAmong(operand.front(), "'\"")) return std::string(operand);
  const char quote = operand.front();
  std::string text;
  for (std::size_t i = 1; i + 1 < operand.size(); ++i) {
    if (operand[i] == quote) ++i;
    text += operand[i];
  }
  return text;
}

class Scan {
 public:
  explicit Scan(std::string_view text) : text_(text) {}

  ConditionPlace run() {
    using What = ConditionPlace::What;
    for (What next = What::name;;) {
      skipBlanks();
      if (next == What::name) {
        while (take('(') || takeWord("not"))
          skipBlanks();
        const bool isAsked = takeWord("has");
        skipBlanks();
        if (!takeOperand()) return {What::name, {}, begin_};
        name_ = operand();
        next = isAsked ? What::joint : What::comparer;
      } else if (next == What::comparer) {
        takeWord("not");
        skipBlanks();
        const bool isList = takeWord("in");
        skipBlanks();
        if (isList) take('(');
        if (!isList && !takeWord("like") && !takeSigns()) return {What::comparer, name_, begin_};
        next = What::value;
      } else if (next == What::value) {
        if (!takeOperand()) return {What::value, name_, begin_};
        next = What::joint;
      } else {
        while (take(')'))
          skipBlanks();
        if (take(',')) {
          next = What::value;
          continue;
        }
        if (!takeWord("and") && !takeWord("or")) return {What::joint, name_, begin_};
        next = What::name;
      }
    }
  }

 private:
  bool atEnd() const { return at_ >= text_.size(); }
  void skipBlanks() {
    while (!atEnd() && isAmong(text_[at_], blanks))
      ++at_;
  }
  bool take(char c) {
    if (atEnd() || text_[at_] != c) return false;
    ++at_;
    return true;
  }
  bool takeSigns() {
    const std::size_t before = at_;
    while (!atEnd() && isAmong(text_[at_], signs))
      ++at_;
    return at_ > before;
  }
  std::string_view wordHere() const {
    return text_.substr(at_, std::min(text_.find_first_of(endsOfWords, at_), text_.size()) - at_);
  }
  // A keyword that is complete, since something follows it.
  bool takeWord(std::string_view keyword) {
    const std::string_view word = wordHere();
    if (!palette::equalIgnoringCase(word, keyword) || at_ + word.size() >= text_.size()) return false;
    at_ += word.size();
    return true;
  }
  // False for one that is still being typed.
  bool takeOperand() {
    begin_ = at_;
    if (!atEnd() && isAmong(text_[at_], "'\"")) return takeQuoted();
    std::size_t end = at_;
    while (!atEnd()) {
      const std::string_view word = wordHere();
      if (word.empty()) break;
      if (end > begin_ && isKeyword(word) && at_ + word.size() < text_.size()) break;
      at_ += word.size();
      end = at_;
      skipBlanks();
    }
    end_ = end;
    return end > begin_ && end < text_.size();
  }
  bool takeQuoted() {
    const char quote = text_[at_++];
    for (; !atEnd(); ++at_) {
      if (text_[at_] != quote) continue;
      if (at_ + 1 == text_.size() || text_[at_ + 1] != quote) break;
      ++at_;
    }
    if (atEnd()) return false;
    end_ = ++at_;
    skipBlanks();
    return end_ < text_.size();
  }
  std::string operand() const { return withoutQuotes(text_.substr(begin_, end_ - begin_)); }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::string name_;
};

bool needsQuotes(std::string_view text) {
  if (text.empty() || isAmong(text.front(), blanks) || isAmong(text.back(), blanks)) return true;
  if (text.find("  ") != std::string_view::npos) return true;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find_first_of(endsOfWords, at), text.size());
    if (isKeyword(text.substr(at, end - at)) || (end < text.size() && text[end] != ' ')) return true;
    at = end + 1;
  }
  return false;
}

}  // namespace

ConditionPlace placeIn(std::string_view condition) {
  return Scan(condition).run();
}

std::string asOperand(std::string_view text, char quote) {
  if (quote == 0 && !needsQuotes(text)) return std::string(text);
  if (quote == 0) quote = '\'';
  std::string made(1, quote);
  for (const char c : text)
    made += c == quote ? std::string(2, c) : std::string(1, c);
  return made + quote;
}

}  // namespace velt::tool
