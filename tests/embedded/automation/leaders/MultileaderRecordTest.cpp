#include "embedded/automation/leaders/MultileaderRecord.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

class MultileaderRecordTest : public ::testing::Test {
 protected:
  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .entity("MULTILEADER", {{100, "AcDbMLeader"}, {300, "CONTEXT_DATA{"}, {40, "1"}, {304, "LEADER_LINE{"}, {302, "LEADER{"}, {40, "2"},
                              {304, "LEADER_LINE{"}, {40, "3"}, {10, "1"}, {20, "2"}, {305, "}"}, {41, "5"}, {303, "}"}, {42, "6"}, {301, "}"}, {40, "4"}, {304, "}"}})
      .entity("MULTILEADER")
      .open();
  // clang-format on
  [[nodiscard]] MultileaderRecord record(std::size_t entity) const {
    return MultileaderRecord(subjectOf(*drawing, entity));
  }
};

TEST_F(MultileaderRecordTest, OneCodeMeansFourThings) {
  EXPECT_EQ(4, record(0).real(MultileaderPart::Itself, 40, 0));
  EXPECT_EQ(1, record(0).real(MultileaderPart::Contents, 40, 0));
  EXPECT_EQ(2, record(0).real(MultileaderPart::Leader, 40, 0));
  EXPECT_EQ(3, record(0).real(MultileaderPart::Line, 40, 0));
}

TEST_F(MultileaderRecordTest, APartGoesOnAfterTheOneInsideIt) {
  EXPECT_EQ(5, record(0).real(MultileaderPart::Leader, 41, 0));
  EXPECT_EQ(6, record(0).real(MultileaderPart::Contents, 42, 0));
}

TEST_F(MultileaderRecordTest, AWordingThatLooksLikeAMarkIsStillAWording) {
  EXPECT_EQ(L"LEADER_LINE{", record(0).text(MultileaderPart::Contents, 304));
  EXPECT_EQ(1U, record(0).count(MultileaderPart::Leader));
}

TEST_F(MultileaderRecordTest, WhatIsMissingIsWhatTheCallerSays) {
  EXPECT_EQ(7, record(1).real(MultileaderPart::Contents, 40, 7));
  EXPECT_EQ((Vector3{1, 2, 3}), record(1).point(MultileaderPart::Itself, 10, {1, 2, 3}));
  EXPECT_EQ(0U, record(1).handle(MultileaderPart::Itself, 340));
  EXPECT_TRUE(record(1).vertices().empty());
}

}  // namespace
}  // namespace velt::automation
