#include "tool/ConditionPlace.h"

#include <gtest/gtest.h>

#include "tool/Condition.h"

namespace velt::tool {
namespace {

using What = ConditionPlace::What;

// What is typed, the property that it is about, and the text of the operand.
struct Place {
  What what;
  std::string name, typed;
  friend bool operator==(const Place&, const Place&) = default;
};

Place of(std::string_view condition) {
  const ConditionPlace place = placeIn(condition);
  return {place.what, place.name, std::string(condition.substr(place.begin))};
}

TEST(ConditionPlace, BeginsWithAName) {
  EXPECT_EQ(of(""), (Place{What::name, "", ""}));
  EXPECT_EQ(of("Rad"), (Place{What::name, "", "Rad"}));
  EXPECT_EQ(of("not (Rad"), (Place{What::name, "", "Rad"}));
  EXPECT_EQ(of("has NUM"), (Place{What::name, "", "NUM"}));
  EXPECT_EQ(of("'Start"), (Place{What::name, "", "'Start"}));
}

TEST(ConditionPlace, AfterANameIsThatOfAComparer) {
  EXPECT_EQ(of("Radius "), (Place{What::comparer, "Radius", "Radius "}));
  EXPECT_EQ(of("'Start X' "), (Place{What::comparer, "Start X", "'Start X' "}));
}

TEST(ConditionPlace, AfterAComparerIsThatOfAValueOfTheName) {
  EXPECT_EQ(of("Layer="), (Place{What::value, "Layer", ""}));
  EXPECT_EQ(of("Layer = Wa"), (Place{What::value, "Layer", "Wa"}));
  EXPECT_EQ(of("Start X>= 5"), (Place{What::value, "Start X", "5"}));
  EXPECT_EQ(of("Layer like 'W"), (Place{What::value, "Layer", "'W"}));
  EXPECT_EQ(of("Layer in (Walls, Do"), (Place{What::value, "Layer", "Do"}));
  EXPECT_EQ(of("Layer not in ("), (Place{What::value, "Layer", ""}));
}

TEST(ConditionPlace, AfterAComparisonIsThatOfAJoint) {
  EXPECT_EQ(of("Radius>5 "), (Place{What::joint, "Radius", "5 "}));
  EXPECT_EQ(of("has NUMBER "), (Place{What::joint, "NUMBER", "NUMBER "}));
  EXPECT_EQ(of("Layer in (A, B) ").what, What::joint);
  EXPECT_EQ(of("Radius>5 an"), (Place{What::value, "Radius", "5 an"})) << "it may be a longer value";
}

TEST(ConditionPlace, AfterAJointAnotherNameBegins) {
  EXPECT_EQ(of("Radius>5 and La"), (Place{What::name, "", "La"}));
  EXPECT_EQ(of("(Radius>5 or Layer='a''b') and Co"), (Place{What::name, "", "Co"}));
}

TEST(ConditionPlace, AnOperandIsReadBackAsItWas) {
  EXPECT_EQ(asOperand("Start X"), "Start X");
  for (const char* const text : {"a,b", "Walls and doors", "it's", "a  b", " a", "=", "like"}) {
    const std::string operand = asOperand(text);
    EXPECT_EQ(operand.front(), '\'') << text;
    EXPECT_EQ(parseCondition("Layer = " + operand).value, text);
  }
  EXPECT_EQ(asOperand("Walls", '"'), "\"Walls\"");
}

TEST(ConditionPlace, AKeywordThatNothingFollowsMayStillBecomeALongerWord) {
  EXPECT_EQ(of("not"), (Place{What::name, "", "not"}));
  EXPECT_EQ(of("has"), (Place{What::name, "", "has"}));
  EXPECT_EQ(of("Radius in"), (Place{What::name, "", "Radius in"}));
  EXPECT_EQ(of("Radius>5 and"), (Place{What::value, "Radius", "5 and"}));
  EXPECT_EQ(of("Radius>5 and not"), (Place{What::name, "", "not"}));
  EXPECT_EQ(of("X like W"), (Place{What::value, "X", "W"}));
}

TEST(ConditionPlace, AQuotedOperandMayGoOnUntilSomethingFollows) {
  EXPECT_EQ(of("'Start X'"), (Place{What::name, "", "'Start X'"}));
  EXPECT_EQ(of("Layer='W'"), (Place{What::value, "Layer", "'W'"}));
  EXPECT_EQ(of("Layer='it''"), (Place{What::value, "Layer", "'it''"}));
  EXPECT_EQ(of("Layer='W' and Co"), (Place{What::name, "", "Co"}));
}

TEST(ConditionPlace, TheNameIsTheOneWithoutQuotes) {
  EXPECT_EQ(of("'it''s' "), (Place{What::comparer, "it's", "'it''s' "}));
  EXPECT_EQ(of("'a'''="), (Place{What::value, "a'", ""}));
  EXPECT_EQ(of("''''''="), (Place{What::value, "''", ""}));
  EXPECT_EQ(of("'' "), (Place{What::comparer, "", "'' "}));
  EXPECT_EQ(of("\"3\"\" it's\"="), (Place{What::value, "3\" it's", ""}));
  EXPECT_EQ(of("has 'Start X' "), (Place{What::joint, "Start X", "'Start X' "}));
}

TEST(ConditionPlace, ParenthesesMayBeNestedAndBlanksAreOfAnyKind) {
  EXPECT_EQ(of("((Rad"), (Place{What::name, "", "Rad"}));
  EXPECT_EQ(of(" ( not ( has Rad"), (Place{What::name, "", "Rad"}));
  EXPECT_EQ(of("((a=1) ) or b"), (Place{What::name, "", "b"}));
  EXPECT_EQ(of("(a=1) "), (Place{What::joint, "a", "1) "}));
  EXPECT_EQ(of("a\t=\r\n1"), (Place{What::value, "a", "1"}));
}

TEST(ConditionPlace, EveryComparerIsFollowedByAValue) {
  EXPECT_EQ(of("Layer not like W"), (Place{What::value, "Layer", "W"}));
  EXPECT_EQ(of("a<>1"), (Place{What::value, "a", "1"}));
  EXPECT_EQ(of("a ! 1"), (Place{What::value, "a", "1"}));
  EXPECT_EQ(of("Layer in (A , 'B', C"), (Place{What::value, "Layer", "C"}));
  EXPECT_EQ(of("a=1 or b=2 and c=3 or d"), (Place{What::name, "", "d"}));
  EXPECT_EQ(of("Layer in (A, B) or "), (Place{What::name, "", ""}));
}

TEST(ConditionPlace, AnOperandHasQuotesOnlyWhereItNeedsThemOrHasThemAlready) {
  EXPECT_EQ(asOperand("Start X of a"), "Start X of a");
  EXPECT_EQ(asOperand("Android notes"), "Android notes");
  EXPECT_EQ(asOperand(""), "''");
  EXPECT_EQ(asOperand("a "), "'a '");
  EXPECT_EQ(asOperand("a in b"), "'a in b'");
  EXPECT_EQ(asOperand("a like"), "'a like'");
  EXPECT_EQ(asOperand("it's"), "'it''s'");
  EXPECT_EQ(asOperand("it's", '"'), "\"it's\"");
  EXPECT_EQ(asOperand("3\" pipe", '"'), "\"3\"\" pipe\"");
}

}  // namespace
}  // namespace velt::tool
