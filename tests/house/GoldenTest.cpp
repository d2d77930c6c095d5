#include "tests/support/Golden.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include "tests/support/Places.h"

namespace {

namespace fs = std::filesystem;
using velt::tests::GoldenPlaces;
using velt::tests::matchesGolden;

class Golden : public ::testing::Test {
 protected:
  Golden() { fs::remove_all(root_); }
  ~Golden() override { fs::remove_all(root_); }

  void accept(const std::string& text) const {
    fs::create_directories(places_.accepted);
    std::ofstream(places_.accepted / "a.txt", std::ios::binary) << text;
  }

  [[nodiscard]] std::string produced() const {
    std::ifstream file(places_.produced / "a.txt", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  const fs::path root_ =
      velt::tests::buildFolder() / "golden-test" / ::testing::UnitTest::GetInstance()->current_test_info()->name();
  const GoldenPlaces places_{root_ / "tests", root_ / "golden"};
};

TEST_F(Golden, TheAcceptedTextMatchesAndLeavesNothingBehind) {
  accept("one\ntwo\n");
  EXPECT_FALSE(matchesGolden("a.txt", "other\n", places_));
  EXPECT_TRUE(matchesGolden("a.txt", "one\ntwo\n", places_));
  EXPECT_FALSE(fs::exists(places_.produced / "a.txt"));
}

TEST_F(Golden, AnotherTextFailsNamesTheLineAndIsKept) {
  accept("one\ntwo\n");
  const ::testing::AssertionResult result = matchesGolden("a.txt", "one\ndeux\n", places_);
  EXPECT_FALSE(result);
  EXPECT_NE(std::string(result.message()).find("line 2"), std::string::npos) << result.message();
  EXPECT_EQ(produced(), "one\ndeux\n");
}

TEST_F(Golden, ATextThatIsLongerOrShorterFails) {
  accept("one\n");
  EXPECT_FALSE(matchesGolden("a.txt", "one\ntwo\n", places_));
  EXPECT_FALSE(matchesGolden("a.txt", "", places_));
  EXPECT_FALSE(matchesGolden("a.txt", "one", places_));
}

TEST_F(Golden, AMissingGoldenFileFailsAndTheTextIsKept) {
  EXPECT_FALSE(matchesGolden("a.txt", "one\n", places_));
  EXPECT_EQ(produced(), "one\n");
}

}  // namespace
