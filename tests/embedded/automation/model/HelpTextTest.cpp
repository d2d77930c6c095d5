#include "embedded/automation/model/HelpText.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

using namespace test;

TEST(HelpText, OfARowThatCanBeWrittenIsItsHelp) {
  EXPECT_EQ(L"Help for the toy.", helpText(toyRow({}, VT_R8, writable)));
}

TEST(HelpText, OfAReadOnlyRowEndsWithTheReason) {
  EXPECT_EQ(L"Help for the toy. Read-only: it never changes.",
            helpText(toyRow({}, VT_R8, readOnly(reasons::neverChanges))));
}

TEST(HelpText, TheReasonGoesOnWithASmallLetterWhicheverItBeginsWith) {
  for (const auto& [sentence, continued] :
       {std::pair(L"A layer is locked.", L"a layer is locked."), {L"Zero is none.", L"zero is none."}}) {
    const Reason reason{sentence};
    EXPECT_EQ(std::wstring(L"Help for the toy. Read-only: ") + continued,
              helpText(toyRow({}, VT_R8, readOnly(reason))));
  }
}

TEST(HelpText, OfARowWithAnObstacleEndsWithTheEntitiesThatHaveIt) {
  for (const Writability& writability : {readOnlyWhere(toyObstacle), refusedWhere(toyObstacle)}) {
    EXPECT_EQ(L"Help for the toy. Read-only where the toy is below 0.",
              helpText(toyRow({}, VT_R8, writability)));
  }
}

}  // namespace
}  // namespace velt::automation
