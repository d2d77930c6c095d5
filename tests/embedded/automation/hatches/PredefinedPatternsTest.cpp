#include "embedded/automation/hatches/PredefinedPatterns.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "tests/support/Golden.h"
#include "tests/support/Narrow.h"

namespace velt::automation {
namespace {

using tests::narrow;

TEST(PredefinedPatterns, HaveNamesOfTheirOwnInOrder) {
  std::set<std::wstring> names;
  for (const PredefinedPattern& pattern : predefinedPatterns().subspan(1)) {
    EXPECT_TRUE(names.empty() || *names.rbegin() < pattern.name) << narrow(pattern.name);
    names.insert(pattern.name);
  }
  EXPECT_GE(names.size(), 12U);
}

TEST(PredefinedPatterns, BeginWithTheSolidFillingWhichAloneHasNoLines) {
  EXPECT_STREQ(solidPatternName, predefinedPatterns().front().name);
  for (const PredefinedPattern& pattern : predefinedPatterns())
    EXPECT_EQ(pattern.name == std::wstring(solidPatternName), pattern.lines.empty()) << narrow(pattern.name);
}

TEST(PredefinedPatterns, GoOnAcrossTheirLinesAndAlongTheirDashes) {
  for (const PredefinedPattern& pattern : predefinedPatterns()) {
    for (const PatternLine& line : pattern.lines) {
      EXPECT_GT(line.step.y, 0) << narrow(pattern.name);
      EXPECT_EQ(0U, line.dashes.size() % 2) << narrow(pattern.name);
      for (std::size_t i = 0; i < line.dashes.size(); ++i)
        EXPECT_TRUE(i % 2 == 0 ? line.dashes[i] >= 0 : line.dashes[i] < 0) << narrow(pattern.name);
    }
  }
}

TEST(PredefinedPatterns, AreThoseThatWereDrawnAndLookedAt) {
  std::ostringstream text;
  for (const PredefinedPattern& pattern : predefinedPatterns()) {
    text << narrow(pattern.name) << '\n';
    for (const PatternLine& line : pattern.lines) {
      text << "  " << line.angle << " at " << line.base.x << ", " << line.base.y << " step " << line.step.x
           << ", " << line.step.y;
      for (std::size_t i = 0; i < line.dashes.size(); ++i)
        text << (i == 0 ? " dashes " : ", ") << line.dashes[i];
      text << '\n';
    }
  }
  EXPECT_TRUE(tests::matchesGolden("golden/patterns.txt", text.str()));
}

TEST(PredefinedPatterns, AreFoundWhateverTheCase) {
  const PredefinedPattern* const found = predefinedPattern(L"Ansi32");
  ASSERT_NE(nullptr, found);
  EXPECT_EQ(2U, found->lines.size());
  EXPECT_EQ(nullptr, predefinedPattern(L"PLAID"));
}

}  // namespace
}  // namespace velt::automation
