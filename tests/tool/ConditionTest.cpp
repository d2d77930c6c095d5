#include "tool/Condition.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tool/Failure.h"

namespace velt::tool {
namespace {

using testing::HasSubstr;

// As text, with every group in parentheses.
std::string written(const Condition& condition) {
  using Kind = Condition::Kind;
  const auto joined = [&](const char* word) {
    std::string text = "(";
    for (const Condition& part : condition.parts)
      text += (text.size() > 1 ? std::string(" ") + word + " " : "") + written(part);
    return text + ")";
  };
  const auto compared = [&](const char* sign) {
    return "[" + condition.name + "]" + sign + "[" + condition.value + "]";
  };
  switch (condition.kind) {
    case Kind::all:
      return joined("and");
    case Kind::any:
      return joined("or");
    case Kind::negation:
      return "not " + written(condition.parts.front());
    case Kind::has:
      return "has [" + condition.name + "]";
    case Kind::equal:
      return compared("=");
    case Kind::different:
      return compared("!=");
    case Kind::less:
      return compared("<");
    case Kind::lessOrEqual:
      return compared("<=");
    case Kind::greater:
      return compared(">");
    case Kind::greaterOrEqual:
      return compared(">=");
    case Kind::like:
      return compared(" like ");
  }
  return "";
}

std::string parsed(std::string_view text) {
  return written(parseCondition(text));
}

std::string troubleOf(std::string_view text) {
  try {
    return parsed(text);
  } catch (const UsageFailure& failure) {
    return failure.what();
  }
}

TEST(Condition, ComparesANameWithAValue) {
  EXPECT_EQ(parsed("Radius>5"), "[Radius]>[5]");
  EXPECT_EQ(parsed(" Radius  <=  -5.5 "), "[Radius]<=[-5.5]");
  EXPECT_EQ(parsed("a=1 or a==1 or a!=1 or a<>1 or a<1 or a>=1"),
            "([a]=[1] or [a]=[1] or [a]!=[1] or [a]!=[1] or [a]<[1] or [a]>=[1])");
  EXPECT_EQ(parsed("Layer LIKE W*"), "[Layer] like [W*]");
  EXPECT_EQ(parsed("has NUMBER"), "has [NUMBER]");
}

TEST(Condition, NamesAndValuesMayHaveBlanksAndQuotes) {
  EXPECT_EQ(parsed("Start X > 5 mm"), "[Start X]>[5 mm]");
  EXPECT_EQ(parsed("'Start and end' = \"(5)\""), "[Start and end]=[(5)]");
  EXPECT_EQ(parsed("a='it''s'"), "[a]=[it's]");
  EXPECT_EQ(parsed("a=''"), "[a]=[]");
  EXPECT_EQ(parsed("Gr\u00F6\u00DFe=5\u00B0"), "[Gr\u00F6\u00DFe]=[5\u00B0]");
}

TEST(Condition, AndBindsMoreTightlyThanOr) {
  EXPECT_EQ(parsed("a=1 or b=2 and not c=3"), "([a]=[1] or ([b]=[2] and not [c]=[3]))");
  EXPECT_EQ(parsed("(a=1 or b=2) and c=3"), "(([a]=[1] or [b]=[2]) and [c]=[3])");
  EXPECT_EQ(parsed("not (a=1 or b=2)"), "not ([a]=[1] or [b]=[2])");
}

TEST(Condition, AListIsAnyOfItsValues) {
  EXPECT_EQ(parsed("a in (1, 'x, y')"), "([a]=[1] or [a]=[x, y])");
  EXPECT_EQ(parsed("a not in (1) and a not like x*"), "(not ([a]=[1]) and not [a] like [x*])");
}

TEST(Condition, AWordThatBeginsLikeAKeywordIsNone) {
  EXPECT_EQ(parsed("Android=1 and Order=notes"), "([Android]=[1] and [Order]=[notes])");
}

TEST(Condition, SaysWhereItStopsBeingOneAndWhatIsMissing) {
  EXPECT_THAT(troubleOf("Radius"), HasSubstr("like and in is expected at the end"));
  EXPECT_THAT(troubleOf("Radius>"), HasSubstr("a value is expected at the end"));
  EXPECT_THAT(troubleOf("a=1 b=2"),
              HasSubstr("\"and\", \"or\" or the end of the condition is expected at \"=2\""));
  EXPECT_THAT(troubleOf("(a=1"), HasSubstr("a closing parenthesis is expected at the end"));
  EXPECT_THAT(troubleOf("a='x"), HasSubstr("a closing quote (') is expected at the end"));
  EXPECT_THAT(troubleOf("a in 5"), HasSubstr("an opening parenthesis is expected at \"5\""));
  EXPECT_THAT(troubleOf("a=1 and or"), HasSubstr("a comparison such as Radius>5 is expected at \"or\""));
  EXPECT_THAT(troubleOf(""), HasSubstr("a comparison such as Radius>5 is expected at the end"));
}

TEST(Condition, EveryQuoteThatIsThereTwiceIsOne) {
  EXPECT_EQ(parsed("a=''''''"), "[a]=['']");
  EXPECT_EQ(parsed("'it''s' = '''x'''"), "[it's]=['x']");
  EXPECT_EQ(parsed("a=\"3\"\" it''s\""), "[a]=[3\" it''s]") << "only of its own kind";
}

}  // namespace
}  // namespace velt::tool
