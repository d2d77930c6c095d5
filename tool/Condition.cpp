#include "tool/Condition.h"

#include <fmt/format.h>

#include <memory>
#include <tao/pegtl.hpp>
#include <tao/pegtl/contrib/parse_tree.hpp>
#include <utility>

#include "tool/Failure.h"

namespace velt::tool {

namespace {

// --- the grammar -----------------------------------------------------------------------------------------

namespace grammar {

using namespace tao::pegtl;

struct blanks : star<space> {};

// Bytes of words: everything but blanks and what the grammar itself uses. So words may be of any language.
struct wordByte : not_one<' ', '\t', '\n', '\r', '(', ')', '\'', '"', '=', '<', '>', '!', ','> {};

template <class Letters>
struct keyword : seq<Letters, not_at<wordByte>, blanks> {};
struct kwAnd : keyword<TAO_PEGTL_ISTRING("and")> {};
struct kwOr : keyword<TAO_PEGTL_ISTRING("or")> {};
struct kwNot : keyword<TAO_PEGTL_ISTRING("not")> {};
struct kwHas : keyword<TAO_PEGTL_ISTRING("has")> {};
struct kwLike : keyword<TAO_PEGTL_ISTRING("like")> {};
struct kwIn : keyword<TAO_PEGTL_ISTRING("in")> {};
struct anyKeyword : sor<kwAnd, kwOr, kwNot, kwHas, kwLike, kwIn> {};

struct word : seq<not_at<anyKeyword>, plus<wordByte>> {};
// Named in full: a command of the tool is called list, too.
struct words : tao::pegtl::list<word, plus<blank>> {};
template <char Quote>
struct inside : star<sor<two<Quote>, not_one<Quote>>> {};
struct inSingle : inside<'\''> {};
struct inDouble : inside<'"'> {};
struct endOfSingle : one<'\''> {};
struct endOfDouble : one<'"'> {};
struct quoted : sor<if_must<one<'\''>, inSingle, endOfSingle>, if_must<one<'"'>, inDouble, endOfDouble>> {};
struct operand : seq<sor<quoted, words>, blanks> {};
struct name : seq<operand> {};
struct value : seq<operand> {};

struct notEqual : sor<string<'!', '='>, string<'<', '>'>> {};
struct lessEqual : string<'<', '='> {};
struct greaterEqual : string<'>', '='> {};
struct less : one<'<'> {};
struct greater : one<'>'> {};
struct equal : sor<string<'=', '='>, one<'='>> {};
struct like : kwLike {};
struct notLike : seq<kwNot, kwLike> {};
struct comparer
    : sor<seq<sor<notEqual, lessEqual, greaterEqual, less, greater, equal>, blanks>, like, notLike> {};

struct closing : seq<one<')'>, blanks> {};
struct values : list_must<value, seq<one<','>, blanks>> {};
struct opening : seq<one<'('>, blanks> {};
struct valueList : seq<must<opening>, must<values>, must<closing>> {};
struct inList : seq<kwIn, valueList> {};
struct notInList : seq<kwNot, kwIn, valueList> {};
struct operation : sor<inList, notInList, seq<comparer, must<value>>> {};
struct comparison : seq<name, must<operation>> {};

struct disjunction;
struct unary;
struct group : if_must<opening, disjunction, closing> {};
struct negation : if_must<kwNot, unary> {};
struct has : if_must<kwHas, name> {};
struct unary : sor<negation, group, has, comparison> {};
struct conjunction : list_must<unary, kwAnd> {};
struct disjunction : list_must<conjunction, kwOr> {};
struct end : eof {};
struct whole : seq<blanks, must<disjunction>, must<end>> {};

// What is said of a rule that does not fit where it must.
struct Expected {
  template <class Rule>
  static constexpr const char* message = "a comparison such as Radius>5";
  // Elsewhere a rule that does not fit leaves the place to another one.
  template <class Rule>
  static constexpr bool raise_on_failure = false;
};
template <>
constexpr const char* Expected::message<operation> = "one of =, !=, <, <=, >, >=, like and in";
template <>
constexpr const char* Expected::message<value> = "a value";
template <>
constexpr const char* Expected::message<values> = "a value";
template <>
constexpr const char* Expected::message<name> = "the name of a property";
template <>
constexpr const char* Expected::message<opening> = "an opening parenthesis";
template <>
constexpr const char* Expected::message<closing> = "a closing parenthesis";
template <>
constexpr const char* Expected::message<endOfSingle> = "a closing quote (')";
template <>
constexpr const char* Expected::message<endOfDouble> = "a closing quote (\")";
template <>
constexpr const char* Expected::message<end> = "\"and\", \"or\" or the end of the condition";

template <class Rule>
using Control = must_if<Expected>::control<Rule>;

template <class Rule>
using Kept =
    parse_tree::selector<Rule,
                         parse_tree::store_content::on<name, value, inSingle, inDouble, words, notEqual,
                                                       lessEqual, greaterEqual, less, greater, equal, like,
                                                       notLike, inList, notInList, comparison, negation, has>,
                         parse_tree::fold_one::on<conjunction, disjunction>>;

}  // namespace grammar

using Node = tao::pegtl::parse_tree::node;

// --- from the tree ---------------------------------------------------------------------------------------

std::string withSingle(std::string text, char quote) {
  const std::string twice(2, quote);
  for (std::size_t at = text.find(twice); at != std::string::npos; at = text.find(twice, at + 1))
    text.erase(at, 1);
  return text;
}

// Of a name or a value: its words, or what is between its quotes.
std::string textOf(const Node& operand) {
  const Node& content = *operand.children.front();
  if (content.is_type<grammar::inSingle>()) return withSingle(content.string(), '\'');
  if (content.is_type<grammar::inDouble>()) return withSingle(content.string(), '"');
  return content.string();
}

Condition negated(Condition condition) {
  return {.kind = Condition::Kind::negation, .parts = {std::move(condition)}};
}

Condition::Kind kindOf(const Node& comparer) {
  using Kind = Condition::Kind;
  if (comparer.is_type<grammar::notEqual>()) return Kind::different;
  if (comparer.is_type<grammar::lessEqual>()) return Kind::lessOrEqual;
  if (comparer.is_type<grammar::greaterEqual>()) return Kind::greaterOrEqual;
  if (comparer.is_type<grammar::less>()) return Kind::less;
  if (comparer.is_type<grammar::greater>()) return Kind::greater;
  if (comparer.is_type<grammar::equal>()) return Kind::equal;
  return Kind::like;
}

Condition comparisonOf(const Node& node) {
  const std::string name = textOf(*node.children[0]);
  const Node& operation = *node.children[1];
  if (operation.is_type<grammar::inList>() || operation.is_type<grammar::notInList>()) {
    Condition any{.kind = Condition::Kind::any};
    for (const std::unique_ptr<Node>& value : operation.children) {
      any.parts.push_back({.kind = Condition::Kind::equal, .name = name, .value = textOf(*value)});
    }
    return operation.is_type<grammar::inList>() ? any : negated(std::move(any));
  }
  Condition compared{.kind = kindOf(operation), .name = name, .value = textOf(*node.children[2])};
  return operation.is_type<grammar::notLike>() ? negated(std::move(compared)) : compared;
}

Condition conditionOf(const Node& node) {
  if (node.is_type<grammar::comparison>()) return comparisonOf(node);
  if (node.is_type<grammar::has>())
    return {.kind = Condition::Kind::has, .name = textOf(*node.children.front())};
  if (node.is_type<grammar::negation>()) return negated(conditionOf(*node.children.front()));
  Condition joined{.kind =
                       node.is_type<grammar::disjunction>() ? Condition::Kind::any : Condition::Kind::all};
  for (const std::unique_ptr<Node>& part : node.children)
    joined.parts.push_back(conditionOf(*part));
  return joined;
}

}  // namespace

Condition parseCondition(std::string_view text) {
  tao::pegtl::memory_input input(text.data(), text.data() + text.size(), "--where");
  try {
    const std::unique_ptr<Node> root =
        tao::pegtl::parse_tree::parse<grammar::whole, Node, grammar::Kept, tao::pegtl::nothing,
                                      grammar::Control>(input);
    return conditionOf(*root->children.front());
  } catch (const tao::pegtl::parse_error& error) {
    const std::size_t at = error.positions().front().byte;
    const std::string_view rest = text.substr(at);
    throw UsageFailure(fmt::format("--where \"{}\": {} is expected {}", text, error.message(),
                                   rest.empty() ? "at the end" : fmt::format("at \"{}\"", rest)));
  }
}

}  // namespace velt::tool
