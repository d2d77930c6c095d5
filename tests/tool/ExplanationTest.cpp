#include "tool/Explanation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "embedded/database/Drawing.h"
#include "tests/tool/Drawings.h"

namespace velt::tool {
namespace {

using testing::HasSubstr;

class ExplanationOfRows : public testing::Test {
 protected:
  void SetUp() override { selection_.query(); }

  std::unique_ptr<database::Drawing> drawing_ = database::Drawing::parse(
      tests::drawingOf({{"0"}}, tests::line("2F", "0") + tests::circle("30", "0")), "house.dxf");
  palette::Selection selection_{drawing_->entities()};
};

TEST_F(ExplanationOfRows, OfOneThatVariesHasItsValues) {
  const Explanation made = explainRow(selection_, selection_.row("Handle"), {});
  EXPECT_EQ(made.cause, "readOnly");
  EXPECT_EQ(made.values.size(), 2U);
}

TEST_F(ExplanationOfRows, OfOneThatIsMissingNamesThoseWithoutIt) {
  const Explanation made = explainAbsence(selection_, "Radius");
  EXPECT_EQ(made.cause, "notCommon");
  EXPECT_EQ(made.entities, std::vector<std::size_t>{0});
}

TEST_F(ExplanationOfRows, AdviceForEveryoneDoesNotSpeakOfOptions) {
  const Explanation made = explainAbsence(selection_, "Radius");
  ASSERT_FALSE(made.advice.empty());
  EXPECT_EQ(made.advice[0].step, "select only those that have it");
  EXPECT_THAT(made.advice[0].onCommandLine, HasSubstr("--where \"has Radius\""));
}

}  // namespace
}  // namespace velt::tool
