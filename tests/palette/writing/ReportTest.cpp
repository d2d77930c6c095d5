#include <gtest/gtest.h>

#include <set>

#include "palette/Palette.h"

namespace velt::palette {
namespace {

TEST(Report, CountsTheFates) {
  const Report report{.fates = {Fate::changed, Fate::locked, Fate::changed, Fate::notReached}};
  EXPECT_EQ(report.count(Fate::changed), 2U);
  EXPECT_EQ(report.count(Fate::refused), 0U);
  EXPECT_EQ(report.summary(), "2 changed, 1 locked, 1 not reached");
}

TEST(Report, OfNothingIsEmpty) {
  EXPECT_EQ(Report().summary(), "");
}

TEST(Report, EveryFateHasANameOfItsOwn) {
  std::set<std::string_view> names;
  for (const Fate fate : allFates)
    names.insert(nameOf(fate));
  EXPECT_EQ(names.size(), allFates.size());
  EXPECT_FALSE(names.contains(""));
}

}  // namespace
}  // namespace velt::palette
