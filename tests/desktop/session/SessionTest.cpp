#include "desktop/session/Session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dxf/FileReplacement.h"
#include "samples/FloorPlan.h"
#include "tests/support/Files.h"
#include "tests/tool/Drawings.h"

namespace velt::desktop {
namespace {

using palette::Fate;
using testing::ElementsAre;

class WindowSession : public testing::Test {
 protected:
  static std::size_t rowNamed(Session& session, std::string_view label) {
    for (std::size_t i = 0; i < session.rows().size(); ++i) {
      if (session.rows()[i].label() == label) return i;
    }
    ADD_FAILURE() << "no row " << label;
    return 0;
  }
  static std::string textOf(Session& session, std::string_view label) {
    return session.rows()[rowNamed(session, label)].text();
  }
  static std::vector<VkDbObjectId> all(Session& session) {
    const auto entities = session.drawing().entities();
    return {entities.begin(), entities.end()};
  }
  static std::string bytes(Session& session) { return session.drawing().document().bytes(); }

  tests::TemporaryFolder folder_;
  std::string file_ = folder_.write(
      "house.dxf", tests::drawingOf({{"0"}, {"Walls"}, {"Locked", 7, 4}},
                                    tests::line("2F", "Walls") + tests::line("30", "Walls", 20.0)
                                        + tests::line("31", "Locked")));
};

TEST_F(WindowSession, BeginsWithNothingSelected) {
  Session session(file_);
  EXPECT_TRUE(session.selected().empty());
  EXPECT_TRUE(session.rows().empty());
  EXPECT_EQ(session.selection(), nullptr);
  EXPECT_FALSE(session.isChanged());
  EXPECT_FALSE(session.canUndo());
  EXPECT_FALSE(session.canRedo());
}

TEST_F(WindowSession, ShowsTheRowsOfTheSelection) {
  Session session(file_);
  session.select(all(session));
  EXPECT_EQ(textOf(session, "Layer"), "*VARIES*");
  EXPECT_EQ(session.lockedCount(), 1U);
  session.select({});
  EXPECT_TRUE(session.rows().empty());
  EXPECT_EQ(session.lockedCount(), 0U);
}

TEST_F(WindowSession, WritesAndAsksAnew) {
  Session session(file_);
  session.select(all(session));
  const palette::Report report = session.write(rowNamed(session, "Color"), "Red");
  EXPECT_EQ(report.count(Fate::changed), 2U);
  EXPECT_EQ(report.count(Fate::locked), 1U);
  session.select({session.drawing().entityByHandle(0x2F)});
  EXPECT_EQ(textOf(session, "Color"), "Red");
  EXPECT_TRUE(session.isChanged());
  EXPECT_THAT(session.history(), ElementsAre("Color = Red"));
}

TEST_F(WindowSession, ReadsAndShowsNumbersInTheUnitsOfTheDrawing) {
  std::string inFeet = tests::contentOf(file_);
  const std::string precision = "9\n$LUPREC\n";
  ASSERT_NE(inFeet.find(precision), std::string::npos);
  inFeet.insert(inFeet.find(precision), "9\n$LUNITS\n70\n4\n");
  Session session(folder_.write("feet.dxf", inFeet));
  session.select({session.drawing().entityByHandle(0x2F)});
  const std::size_t row = rowNamed(session, "Start X");
  session.write(row, "1'-2 1/2\"");
  EXPECT_EQ(std::get<double>(session.rows()[row].plain()), 14.5);
  EXPECT_EQ(session.rows()[row].text(session.numberStyle()), "1'-2 1/2\"");
}

TEST_F(WindowSession, ATextThatMeansNothingChangesNothing) {
  Session session(file_);
  session.select({session.drawing().entityByHandle(0x2F)});
  const std::string before = bytes(session);
  EXPECT_THROW(session.write(rowNamed(session, "Start X"), "far away"), palette::Error);
  EXPECT_EQ(bytes(session), before);
  EXPECT_TRUE(session.history().empty());
  EXPECT_FALSE(session.isChanged());
}

TEST_F(WindowSession, AValueThatIsThereAlreadyIsNoStep) {
  Session session(file_);
  session.select({session.drawing().entityByHandle(0x2F)});
  session.write(rowNamed(session, "Layer"), "Walls");
  EXPECT_FALSE(session.canUndo());
  EXPECT_FALSE(session.isChanged());
}

TEST_F(WindowSession, UndoesToTheSameBytesAndDoesAgain) {
  Session session(file_);
  const std::string first = bytes(session);
  session.select(all(session));
  session.write(rowNamed(session, "Color"), "Red");
  const std::string second = bytes(session);
  session.write(rowNamed(session, "End X"), "7");
  const std::string third = bytes(session);

  session.undo();
  EXPECT_EQ(bytes(session), second);
  session.undo();
  EXPECT_EQ(bytes(session), first);
  EXPECT_EQ(textOf(session, "End X"), "*VARIES*");
  EXPECT_FALSE(session.canUndo());
  EXPECT_EQ(session.undone(), 2U);
  session.undo();
  EXPECT_EQ(bytes(session), first) << "there is nothing left to undo";
  session.redo();
  session.redo();
  EXPECT_EQ(bytes(session), third);
  EXPECT_FALSE(session.canRedo());
  session.redo();
  EXPECT_EQ(bytes(session), third);
}

TEST_F(WindowSession, ANewStepTakesThePlaceOfUndoneOnes) {
  Session session(file_);
  session.select(all(session));
  session.write(rowNamed(session, "Color"), "Red");
  session.write(rowNamed(session, "Color"), "Blue");
  session.undo();
  session.write(rowNamed(session, "Color"), "Green");
  EXPECT_THAT(session.history(), ElementsAre("Color = Red", "Color = Green"));
  EXPECT_FALSE(session.canRedo());
}

TEST_F(WindowSession, ReckonsWithTheValuesThatEntitiesHave) {
  Session session(file_);
  session.select({session.drawing().entityByHandle(0x2F), session.drawing().entityByHandle(0x30)});
  session.write(rowNamed(session, "End X"), "*=2");
  EXPECT_THAT(session.history(), ElementsAre("End X *=2"));
  session.select({session.drawing().entityByHandle(0x30)});
  EXPECT_EQ(std::get<double>(session.rows()[rowNamed(session, "End X")].plain()), 40);
  session.write(rowNamed(session, "Layer"), "~s/Walls/0/");
  EXPECT_EQ(textOf(session, "Layer"), "0");
}

TEST_F(WindowSession, ShowsAndWritesToSomeOfTheSelectionAndFindsTheWayBack) {
  Session session(file_);
  session.select(all(session));
  EXPECT_FALSE(session.isNarrowed());
  const VkDbObjectId one = session.drawing().entityByHandle(0x30);
  session.narrow({one});
  EXPECT_TRUE(session.isNarrowed());
  EXPECT_EQ(textOf(session, "Layer"), "Walls");
  EXPECT_THAT(session.selected(), ElementsAre(one));
  EXPECT_EQ(session.whole().size(), 3U);
  EXPECT_EQ(session.write(rowNamed(session, "Color"), "Red").count(Fate::changed), 1U);
  session.widen();
  EXPECT_EQ(session.selected().size(), 3U);
  EXPECT_EQ(textOf(session, "Color"), "*VARIES*");
}

TEST_F(WindowSession, GoesToAnyPlaceOfItsHistory) {
  Session session(file_);
  session.select(all(session));
  const std::string first = bytes(session);
  session.write(rowNamed(session, "Color"), "Red");
  const std::string second = bytes(session);
  session.write(rowNamed(session, "Color"), "Blue");
  const std::string third = bytes(session);
  session.goTo(0);
  EXPECT_EQ(bytes(session), first);
  session.goTo(2);
  EXPECT_EQ(bytes(session), third);
  session.goTo(1);
  EXPECT_EQ(bytes(session), second);
  session.goTo(7);
  EXPECT_EQ(bytes(session), third);
}

TEST_F(WindowSession, IsUnchangedWhereItWasSaved) {
  Session session(file_);
  session.select(all(session));
  session.write(rowNamed(session, "Color"), "Red");
  session.save();
  EXPECT_FALSE(session.isChanged());
  EXPECT_EQ(tests::contentOf(file_), bytes(session));
  session.undo();
  EXPECT_TRUE(session.isChanged());
  session.redo();
  EXPECT_FALSE(session.isChanged());
  session.undo();
  session.write(rowNamed(session, "Color"), "Blue");
  EXPECT_TRUE(session.isChanged());
  session.undo();
  EXPECT_TRUE(session.isChanged()) << "what was saved cannot be reached any more";
}

TEST_F(WindowSession, DoesNotSaveOverSomebodyElsesChange) {
  Session session(file_);
  session.select(all(session));
  session.write(rowNamed(session, "Color"), "Red");
  folder_.write("house.dxf", samples::sampleFloorPlan());
  EXPECT_THROW(session.save(), dxf::FileChanged);
  EXPECT_TRUE(session.isChanged());
  EXPECT_EQ(tests::contentOf(file_), samples::sampleFloorPlan());
  session.save(Session::OthersChanges::areOverwritten);
  EXPECT_FALSE(session.isChanged());
  EXPECT_EQ(tests::contentOf(file_), bytes(session));
}

TEST_F(WindowSession, SavesUnderAnotherName) {
  Session session(file_);
  const std::string other = folder_.path("other.dxf");
  session.select(all(session));
  session.write(rowNamed(session, "Color"), "Red");
  session.saveAs(other, false);
  EXPECT_EQ(session.file(), other);
  EXPECT_EQ(tests::contentOf(other), bytes(session));
  EXPECT_THROW(session.saveAs(file_, false), std::system_error) << "there is one of that name";
  EXPECT_EQ(session.file(), other);
}

}  // namespace
}  // namespace velt::desktop
