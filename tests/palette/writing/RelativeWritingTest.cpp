#include <numbers>

#include "tests/palette/Stage.h"

namespace velt::palette {
namespace {

using testing::ElementsAre;
using toys::r8;
using enum Fate;

class RelativeWriting : public Stage {
 protected:
  Report write(const char* name, Relation relation, std::string_view operand,
               const WriteOptions& options = {}) {
    Selection selection(ids());
    selection.query();
    return selection.writeRelative(selection.row(name), relation, operand, options);
  }
  std::string refusalOf(const char* name, Relation relation, std::string_view operand) {
    return errorOf([&] { write(name, relation, operand); });
  }
  toys::ToyObject& addText(const std::wstring& text) {
    toys::ToyObject& made = add();
    made.property(5, L"Text").returns(VT_BSTR).holds(toys::text(text)).inCategory(3, L"Text");
    return made;
  }
  // From now on the object takes this text.
  void takesText(toys::ToyObject& object, const std::wstring& text) {
    host.on(toys::say("Invoke(5, put VT_BSTR \"", toUtf8(text),
                      "\" named -3, locale 0x807, result VT_BSTR) on ", object.name()))
        .first([&object, text] { object[5].holds(toys::text(text)); });
  }
};

TEST_F(RelativeWriting, EachEntityGetsWhatFollowsFromItsOwnValue) {
  takes(addCircle(1), 4, r8(3));
  takes(addCircle(5), 4, r8(15));
  EXPECT_THAT(write("Radius", Relation::times, "3").fates, ElementsAre(changed, changed));
}

TEST_F(RelativeWriting, NumbersAreAddedTakenAwayMultipliedAndDivided) {
  takes(addCircle(6), 4, r8(8));
  EXPECT_THAT(write("Radius", Relation::plus, "2").fates, ElementsAre(changed));
  takes(entity(0).object, 4, r8(5));
  EXPECT_THAT(write("Radius", Relation::minus, "3").fates, ElementsAre(changed));
  takes(entity(0).object, 4, r8(2));
  EXPECT_THAT(write("Radius", Relation::dividedBy, "2.5").fates, ElementsAre(changed));
}

TEST_F(RelativeWriting, WhatAddsNothingLeavesTheEntityAsItIs) {
  takes(addCircle(6), 4, r8(6));
  EXPECT_THAT(write("Radius", Relation::plus, "0").fates, ElementsAre(unchanged));
}

TEST_F(RelativeWriting, AnOperandThatMeansNothingSaysWhatIsAccepted) {
  addCircle(6);
  EXPECT_EQ(refusalOf("Radius", Relation::times, "two"), "\"two\" is not a number to multiply by");
  EXPECT_EQ(refusalOf("Radius", Relation::dividedBy, "0"), "\"0\" is not a number to divide by");
  EXPECT_EQ(refusalOf("Radius", Relation::plus, "two"), "\"two\" is not a number: write one such as 2.5");
  EXPECT_EQ(refusalOf("Radius", Relation::replaced, "s/a/b/"),
            "its value is not a text in which something could be replaced");
}

TEST_F(RelativeWriting, AResultBeyondAnyDrawingIsRefusedAndNothingIsWritten) {
  addCircle(1);
  addCircle(1e15);
  const Report report = write("Radius", Relation::times, "1e10");
  EXPECT_THAT(report.fates, ElementsAre(notReached, refused));
  EXPECT_EQ(report.reasons.at(1), "\"1e+25\" is too large for any drawing");
}

TEST_F(RelativeWriting, WordsAreReplacedInEachText) {
  takesText(addText(L"Room A, Room B"), L"Hall A, Room B");
  EXPECT_THAT(write("Text", Relation::replaced, "s/Room/Hall/").fates, ElementsAre(changed));
  takesText(entity(0).object, L"Hall A, Hall B");
  EXPECT_THAT(write("Text", Relation::replaced, "s|room|Hall|gi").fates, ElementsAre(changed));
  takesText(entity(0).object, L"A Hall, B Hall");
  EXPECT_THAT(write("Text", Relation::replaced, "s/Hall (.)/$1 Hall/g").fates, ElementsAre(changed));
}

TEST_F(RelativeWriting, WhatIsNoReplacementSaysHowOneIsWritten) {
  addText(L"a");
  for (const char* const operand : {"", "s", "s/a", "s/a/b", "s/a/b/x", "y/a/b/"}) {
    EXPECT_EQ(refusalOf("Text", Relation::replaced, operand),
              "\"" + std::string(operand)
                  + "\" is not a replacement: write s/OLD/NEW/, or s/OLD/NEW/g for all occurrences");
  }
  EXPECT_EQ(refusalOf("Text", Relation::replaced, "s/(/b/"), "\"(\" is not a regular expression");
  EXPECT_EQ(refusalOf("Text", Relation::times, "2"), "its value is not a number");
}

TEST_F(RelativeWriting, ATextTooLongToBeSearchedIsRefused) {
  addText(std::wstring(20000, L'a'));
  const Report report = write("Text", Relation::replaced, "s/.*/b/");
  EXPECT_THAT(report.fates, ElementsAre(refused));
  EXPECT_EQ(report.reasons.at(0), "a text of 20000 characters is too long");
}

}  // namespace
}  // namespace velt::palette
