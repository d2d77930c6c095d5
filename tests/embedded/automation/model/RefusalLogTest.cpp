#include "embedded/automation/model/RefusalLog.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

using namespace test;

class RefusalLogTest : public ToyTest {};

TEST_F(RefusalLogTest, KeepsTheWordsOfAnElementThatIsRefused) {
  const Bound object = bound();
  const VkDbObjectId entity = drawing->entities()[0];
  toy.forgets = true;
  const RefusalLog log;
  EXPECT_EQ(L"", log.of(entity));
  EXPECT_EQ(E_FAIL, object.putElement(L"Spot", 0, 5));
  EXPECT_EQ(L"The drawing would give back", log.of(entity).substr(0, 27));
  EXPECT_EQ(L"", log.of(drawing->entities()[1]));
}

TEST_F(RefusalLogTest, WithoutALogNothingIsKept) {
  const VkDbObjectId entity = drawing->entities()[0];
  RefusalLog::note(entity, L"lost");
  const RefusalLog log;
  EXPECT_EQ(L"", log.of(entity));
}

}  // namespace
}  // namespace velt::automation
