#include "embedded/database/LastAsked.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::Sample;

class LastAskedTest : public ::testing::Test {
 protected:
  int timesAfterAsking(const Drawing& drawing, std::size_t entity) {
    return last_.of(drawing.entities()[entity], drawing, [&] { return ++times_; });
  }

  const std::unique_ptr<Drawing> drawing_ = Sample().entity("LINE").entity("LINE").open();
  LastAsked<int> last_;
  int times_ = 0;
};

TEST_F(LastAskedTest, WorksOutOnceWhatAnEntityIsAskedForInARow) {
  EXPECT_EQ(1, timesAfterAsking(*drawing_, 0));
  EXPECT_EQ(1, timesAfterAsking(*drawing_, 0));
}

TEST_F(LastAskedTest, KnowsTheEntityAskedLastOnly) {
  EXPECT_EQ(1, timesAfterAsking(*drawing_, 0));
  EXPECT_EQ(2, timesAfterAsking(*drawing_, 1));
  EXPECT_EQ(3, timesAfterAsking(*drawing_, 0));
}

TEST_F(LastAskedTest, ForgetsAtAnEditOfTheDrawing) {
  EXPECT_EQ(1, timesAfterAsking(*drawing_, 0));
  drawing_->edit(test::entityRecord(*drawing_, 1), [](dxf::Document&) {});
  EXPECT_EQ(2, timesAfterAsking(*drawing_, 0));
}

TEST_F(LastAskedTest, TellsTheSamePlaceOfTwoDrawingsApart) {
  const std::unique_ptr<Drawing> other = Sample().entity("LINE").entity("LINE").open();
  EXPECT_EQ(1, timesAfterAsking(*drawing_, 0));
  EXPECT_EQ(2, timesAfterAsking(*other, 0));
}

TEST_F(LastAskedTest, WorksOutAnewAfterAFailure) {
  EXPECT_EQ(1, timesAfterAsking(*drawing_, 0));
  const auto fail = [](LastAsked<int>& last, VkDbObjectId entity, const Drawing& drawing) {
    last.of(entity, drawing, []() -> int { throw std::runtime_error("no facts"); });
  };
  EXPECT_THROW(fail(last_, drawing_->entities()[1], *drawing_), std::runtime_error);
  EXPECT_EQ(2, timesAfterAsking(*drawing_, 1));
  EXPECT_EQ(3, timesAfterAsking(*drawing_, 0));
}

}  // namespace
}  // namespace velt::database
