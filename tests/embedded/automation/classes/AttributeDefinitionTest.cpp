#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

std::unique_ptr<Drawing> drawingWithAttributeDefinition() {
  // clang-format off
  return Sample()
      .entity("ATTDEF", {{100, "AcDbText"}, {10, "1"}, {20, "2"}, {40, "3"}, {1, "0"}, {100, "AcDbAttributeDefinition"}, {3, "Which one?"}, {2, "NUMBER"}, {70, "4"}, {74, "3"}})
      .open();
  // clang-format on
}

TEST(AttributeDefinitionTest, IsATextWithAPrompt) {
  const auto drawing = drawingWithAttributeDefinition();
  const Bound made(*drawing, 0);
  EXPECT_EQ(L"NUMBER", made.text(L"TagString"));
  EXPECT_EQ(L"Which one?", made.text(L"PromptString"));
  EXPECT_TRUE(made.flag(L"Verify"));
  EXPECT_EQ(S_OK, made.put(L"PromptString", L"Which?").result);
  EXPECT_EQ(L"Which?", made.text(L"PromptString"));
  EXPECT_EQ(6, made.integer(L"Justify"));
}

}  // namespace
}  // namespace velt::automation
