#include "samples/builder/Sections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/samples/builder/Made.h"

namespace velt::samples {
namespace {

using namespace velt::dxf;
using namespace test;
using ::testing::ElementsAre;

TEST(SectionsTest, StandInTheOrderInWhichReadersWantThem) {
  const Document document = documentOf(DrawingBuilder());
  std::vector<std::string> names;
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    if (document.type(record) == "SECTION") names.emplace_back(text(document.view(record), 2, ""));
  }
  EXPECT_THAT(names, ElementsAre("HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES", "OBJECTS"));
}

TEST(SectionsTest, TheHeaderTellsTheVersionTheExtentsAndWhatElseWasSet) {
  for (const auto& [version, name] :
       {std::pair{DrawingVersion::AC1018, "AC1018"}, std::pair{DrawingVersion::AC1027, "AC1027"}}) {
    DrawingBuilder drawing(version);
    drawing.extents({-1, -2}, {30, 20});
    drawing.variable("$PDMODE", {70, 34});
    const Document document = documentOf(drawing);
    EXPECT_EQ(document.headerValue("$ACADVER", 1), name);
    EXPECT_EQ(document.headerValue("$EXTMIN", 20), "-2.0");
    EXPECT_EQ(document.headerValue("$EXTMAX", 10), "30.0");
    EXPECT_EQ(document.headerValue("$PDMODE", 70), "34");
  }
}

TEST(SectionsTest, WhatStandsInASpaceStandsAmongTheEntitiesAndWhatStandsInABlockInItsDefinition) {
  // given
  DrawingBuilder drawing;
  drawing.model().point({1, 1});
  drawing.paper().circle({2, 2}, 1);
  drawing.block("B", {5, 6}).line({0, 0}, {1, 0});
  // when
  const Document document = documentOf(drawing);
  // then
  const auto sectionOf = [&](std::string_view type) {
    for (const Record& record : document.records()) {
      if (document.type(static_cast<std::uint32_t>(&record - document.records().data())) == type)
        return record.section;
    }
    return Section::Outside;
  };
  EXPECT_EQ(sectionOf("POINT"), Section::Entities);
  EXPECT_EQ(sectionOf("CIRCLE"), Section::Entities);
  EXPECT_EQ(sectionOf("LINE"), Section::Blocks);
  EXPECT_EQ(text(viewOf(document, "POINT"), 67, "AcDbEntity"), "nothing");
  EXPECT_EQ(text(viewOf(document, "CIRCLE"), 67, "AcDbEntity"), "1");
  EXPECT_EQ(viewOf(document, "BLOCK", 2).point(10, "AcDbBlockBegin"), (std::array{5.0, 6.0, 0.0}));
}

TEST(SectionsTest, ABlockSaysThatItIsAnonymousAndThatItStandsForAnotherDrawing) {
  DrawingBuilder drawing;
  drawing.block("*U1");
  drawing.externalReference("SITE", "site.dxf");
  const Document document = documentOf(drawing);
  EXPECT_EQ(text(viewOf(document, "BLOCK", 0), 70, "AcDbBlockBegin"), "0") << "model space";
  EXPECT_EQ(text(viewOf(document, "BLOCK", 2), 70, "AcDbBlockBegin"), "1");
  EXPECT_EQ(text(viewOf(document, "BLOCK", 3), 70, "AcDbBlockBegin"), "36");
  EXPECT_EQ(text(viewOf(document, "BLOCK", 3), 1, "AcDbBlockBegin"), "site.dxf");
}

}  // namespace
}  // namespace velt::samples
