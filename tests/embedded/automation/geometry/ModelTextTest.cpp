#include "embedded/automation/geometry/ModelText.h"

#include <gtest/gtest.h>

namespace velt::automation {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* pointLine = "point $-1 1 -2.5 3e2 #";

TEST(ModelText, FallsIntoRecordsAfterItsHeader) {
  const ModelText text({"20800 2 1 0 ", "9 Any Maker 3 1.0 0 ", "-1 1e-6 1e-10 ", "vertex $-1 -1 $-1 $0 $1 #",
                        "point $-1 -1 $-1 0 0 0 #"});
  EXPECT_EQ(20800, text.version());
  ASSERT_EQ(2U, text.size());
  EXPECT_EQ("vertex", text.nameOf(0));
  EXPECT_EQ("point", text.nameOf(1));
}

TEST(ModelText, OldOnesHaveNoHeaderAfterTheFirstLine) {
  const ModelText text({"106 1 1 0", pointLine});
  EXPECT_EQ(1U, text.size());
}

TEST(ModelText, ARecordMayRunOverLinesAndShareOne) {
  const ModelText text({"400 3 1 0", "point $-1 1", "  2 3 # vertex", " $-1 $0 $0 # point $-1 4 5 6 #"});
  EXPECT_EQ(3U, text.size());
}

TEST(ModelText, FieldsAreTakenOneByOneAsWhatTheyAre) {
  const ModelText text(
      {"400 0 1 0", "mixed $-1 $0 $-1 -2.5 I F 4 reversed 0 @3 a#b #", "End-of-the-data", "rest"});
  ModelFields fields = text.fieldsOf(0, "mixed");
  EXPECT_EQ(0U, fields.required());
  EXPECT_EQ(std::nullopt, fields.reference());
  EXPECT_EQ(-2.5, fields.number());
  fields.range();
  EXPECT_TRUE(fields.choice("forward", "reversed"));
  EXPECT_FALSE(fields.choice("forward", "reversed"));
  EXPECT_FALSE(fields.atEnd());
  fields.skip();
  fields.end();
}

TEST(ModelText, NewRecordsHaveANumberAndOneMoreReference) {
  const ModelText text({"700 2 1 0", "point $-1 7 $-1 1 2 3 #", "transform $-1 7 1 2 3 #"});
  EXPECT_EQ((Vector3{1, 2, 3}), text.fieldsOf(0, "point").vector());
  EXPECT_EQ((Vector3{1, 2, 3}), text.fieldsOf(1, "transform").vector());
}

TEST(ModelText, WithoutAHeaderItIsRefused) {
  for (const Lines& lines : {Lines{}, Lines{""}, Lines{"body"}, Lines{"400"}, Lines{"x 1 1 0", pointLine},
                             Lines{"12 1 1 0", pointLine}, Lines{"400 -1 1 0", pointLine}}) {
    EXPECT_THROW(ModelText{lines}, ModelError);
  }
}

TEST(ModelText, WhatIsCutShortIsRefused) {
  for (const Lines& lines :
       {Lines{"400 1 1 0"}, Lines{"400 2 1 0", pointLine}, Lines{"400 99999999999999 1 0", pointLine},
        Lines{"400 0 1 0", "point $-1 1"}, Lines{"400 0 1 0", "point @9 ab #"}, Lines{"400 0 1 0", "point @"},
        Lines{"400 0 1 0", "point @18446744073709551615 ab #"}, Lines{"400 0 1 0", pointLine, "#"}}) {
    EXPECT_THROW(ModelText{lines}, ModelError) << lines.back();
  }
}

TEST(ModelText, AFieldOfAnotherKindIsRefused) {
  const ModelText text({"400 0 1 0", "odd $-1 $1 x 1e31 inf 2 G #", "bare #"});
  EXPECT_THROW(static_cast<void>(text.fieldsOf(0, "point")), ModelError);
  EXPECT_THROW(static_cast<void>(text.fieldsOf(1, "bare")), ModelError);
  ModelFields fields = text.fieldsOf(0, "odd");
  EXPECT_THROW(fields.end(), ModelError);
  EXPECT_THROW(ModelFields(fields).number(), ModelError);
  EXPECT_THROW(ModelFields(fields).skip(), ModelError);
  fields.required();
  EXPECT_THROW(ModelFields(fields).reference(), ModelError);
  EXPECT_THROW(ModelFields(fields).choice("y", "z"), ModelError);
  fields.skip();
  EXPECT_THROW(fields.number(), ModelError);
  EXPECT_THROW(fields.number(), ModelError);
  EXPECT_THROW(fields.range(), ModelError);
}

TEST(ModelText, AReferenceBeyondTheRecordsIsRefused) {
  const ModelText text({"400 0 1 0", "wild $-1 $1 $-2 $x $ $-1 #"});
  ModelFields fields = text.fieldsOf(0, "wild");
  for (int field = 0; field < 4; ++field)
    EXPECT_THROW(fields.reference(), ModelError) << field;
  EXPECT_THROW(fields.required(), ModelError);
  EXPECT_THROW(fields.reference(), ModelError);
}

}  // namespace
}  // namespace velt::automation
