#include "desktop/LongWork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>

#include "tests/desktop/WindowFixture.h"

namespace velt::desktop {
namespace {

using std::chrono::milliseconds;

class WindowAtWork : public Window {
 protected:
  void SetUp() override {
    Window::SetUp();
    entities().selectAll();
    all_ = session().selected().size();
    // Every call to the host handles events and shows how far the work is.
    work().setPatience(milliseconds(0));
  }
  LongWork& work() { return window_->work(); }
  // What a user does, once, as soon as the next work shows itself.
  template <class Does>
  void meanwhile(Does does) {
    QObject::connect(&work(), &LongWork::advanced, &once_, [this, does] {
      if (std::exchange(isDone_, true)) return;
      does();
    });
  }
  std::vector<VkDbObjectId> two() { return {session().whole()[0], session().whole()[1]}; }
  std::string banner() { return part<QLabel>("banner").text().toStdString(); }

  std::size_t all_ = 0;
  QObject once_;
  bool isDone_ = false;
};

TEST_F(WindowAtWork, ThatIsDoneWithinAMomentShowsNothing) {
  work().setPatience(std::chrono::minutes(1));
  const QSignalSpy shown(&work(), &LongWork::shown);
  window_->select(two());
  EXPECT_TRUE(shown.isEmpty());
}

TEST_F(WindowAtWork, EndsWhenTheWindowIsClosedWhichFollows) {
  meanwhile([this] {
    EXPECT_FALSE(window_->close());
    EXPECT_TRUE(window_->isVisible());
  });
  window_->select(two());
  EXPECT_TRUE(isDone_);
  EXPECT_TRUE(session().rows().empty()) << "cancelled";
  settle();
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(WindowAtWork, ShowsItselfAndTakesEverythingBackAtTheEnd) {
  meanwhile([this] {
    EXPECT_TRUE(part<QProgressBar>("progress").isVisible());
    EXPECT_FALSE(palette().isEnabled());
    EXPECT_FALSE(window_->menuBar()->isEnabled());
  });
  window_->select(two());
  EXPECT_TRUE(isDone_);
  EXPECT_FALSE(part<QProgressBar>("progress").isVisible());
  EXPECT_FALSE(part<QPushButton>("cancel").isVisible());
  EXPECT_TRUE(palette().isEnabled());
  EXPECT_TRUE(window_->menuBar()->isEnabled());
  EXPECT_NE(shown("Layer"), "");
}

TEST_F(WindowAtWork, StartsOverWhenSomethingElseIsSelectedInBetween) {
  const std::vector<VkDbObjectId> wanted = two();
  meanwhile([&] { window_->select(wanted); });
  entities().clearSelection();
  entities().selectAll();
  EXPECT_TRUE(isDone_);
  EXPECT_EQ(session().selected().size(), 2U);
  EXPECT_EQ(entities().selectionModel()->selectedRows().size(), 2);
  EXPECT_NE(shown("Layer"), "");
}

TEST_F(WindowAtWork, ThatIsCancelledLeavesTheSelectionWithoutRowsAndSaysSo) {
  meanwhile([this] { part<QPushButton>("cancel").click(); });
  window_->select(two());
  EXPECT_EQ(session().selected().size(), 2U);
  EXPECT_TRUE(session().rows().empty());
  EXPECT_THAT(banner(), testing::HasSubstr("cancelled"));
  window_->select(two());
  EXPECT_FALSE(session().rows().empty());
  EXPECT_EQ(banner(), "");
}

TEST_F(WindowAtWork, OfOpeningCanBeCancelledAndLeavesWhatWasOpen) {
  const std::string other = folder_.write("other.dxf", samples::sampleFloorPlan());
  meanwhile([this] { part<QPushButton>("cancel").click(); });
  EXPECT_FALSE(window_->open(QString::fromStdString(other)));
  EXPECT_EQ(session().file(), file_);
  EXPECT_EQ(session().selected().size(), all_);
  EXPECT_TRUE(window_->open(QString::fromStdString(other)));
  EXPECT_EQ(session().file(), other);
}

TEST_F(WindowAtWork, OfSavingCanBeCancelledAndLeavesTheFile) {
  type("Linetype scale", "3");
  const std::string before = tests::contentOf(file_);
  meanwhile([this] { part<QPushButton>("cancel").click(); });
  EXPECT_FALSE(window_->save());
  EXPECT_EQ(tests::contentOf(file_), before);
  EXPECT_TRUE(session().isChanged());
}

TEST_F(WindowAtWork, OfWritingGoesOnWhenSomethingElseIsSelectedWhichIsShownNext) {
  const std::vector<VkDbObjectId> wanted = two();
  work().setPatience(std::chrono::minutes(1));
  window_->select(wanted);
  work().setPatience(milliseconds(0));
  const VkDbObjectId other = session().drawing().entityByHandle(0xA8);
  meanwhile([&] { window_->select({other}); });
  type("Linetype scale", "3");
  settle();
  EXPECT_TRUE(isDone_);
  EXPECT_THAT(session().selected(), testing::ElementsAre(other));
  EXPECT_THAT(session().history(), testing::ElementsAre("Linetype scale = 3"));
  window_->select(wanted);
  EXPECT_EQ(shown("Linetype scale").substr(0, 1), "3") << "of all of them";
}

TEST_F(WindowAtWork, OfWritingCanBeCancelledAndUndone) {
  const std::string before = session().drawing().document().bytes();
  meanwhile([this] { part<QPushButton>("cancel").click(); });
  type("Linetype scale", "3");
  EXPECT_TRUE(isDone_);
  EXPECT_THAT(part<QLabel>("outcome").text().toStdString(), testing::HasSubstr("not reached"));
  work().setPatience(std::chrono::minutes(1));
  while (session().canUndo())
    session().undo();
  EXPECT_EQ(session().drawing().document().bytes(), before);
}

}  // namespace
}  // namespace velt::desktop
