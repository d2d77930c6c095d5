#include "embedded/automation/geometry/Effort.h"

#include <gtest/gtest.h>

#include "embedded/automation/model/Guard.h"

namespace velt::automation {
namespace {

TEST(Effort, IsUsedUpByTheStepThatIsOneTooMany) {
  Effort effort(0);
  const std::size_t all = effort.left();
  effort.spend(all);
  EXPECT_EQ(0U, effort.left());
  EXPECT_THROW(effort.spend(), NotComputed);
}

TEST(Effort, IsNotSpentOnWhatIsTooMuch) {
  Effort effort(0);
  const std::size_t all = effort.left();
  EXPECT_THROW(effort.spend(all + 1), NotComputed);
  EXPECT_EQ(all, effort.left());
}

TEST(Effort, GrowsWithTheParts) {
  const std::size_t first = Effort(1).left() - Effort(0).left();
  EXPECT_GT(first, 0U);
  EXPECT_EQ(Effort(0).left() + 1000 * first, Effort(1000).left());
}

TEST(Effort, ThatIsUsedUpIsARefusalWithItsReason) {
  EXPECT_EQ(E_FAIL, guarded([]() -> HRESULT { throw NotComputed(); }));
  EXCEPINFO exception{};
  EXPECT_EQ(DISP_E_EXCEPTION, guardedInvoke(&exception, L"source", []() -> HRESULT { throw NotComputed(); }));
  EXPECT_EQ(E_FAIL, exception.scode);
  EXPECT_STREQ(L"Not computed: too many steps would be needed.", exception.bstrDescription);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
}

}  // namespace
}  // namespace velt::automation
