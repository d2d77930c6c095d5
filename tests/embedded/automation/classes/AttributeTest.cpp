#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

class AttributeTest : public ::testing::Test {
 protected:
  // clang-format off
  std::unique_ptr<Drawing> drawing = Sample()
      .layer("Doors")
      .entity("INSERT", {{66, "1"}, {100, "AcDbEntity"}, {8, "Doors"}, {6, "DASHED"}, {100, "AcDbBlockReference"}, {2, "DOOR"}})
      .entity("ATTRIB", {{100, "AcDbEntity"}, {8, "0"}, {100, "AcDbText"}, {10, "1"}, {20, "2"}, {40, "3"}, {1, "D1"}, {72, "1"}, {11, "5"}, {21, "6"},
                         {100, "AcDbAttribute"}, {2, "NUMBER"}, {70, "9"}, {73, "0"}, {74, "2"}})
      .entity("SEQEND")
      .open();
  // clang-format on
  Bound attribute{drawing->idOf(drawing->members(database::resolve(drawing->entities()[0])->record).first)};
};

TEST_F(AttributeTest, IsATextWithATag) {
  EXPECT_EQ(L"NUMBER", attribute.text(L"TagString"));
  EXPECT_EQ(L"D1", attribute.text(L"TextString"));
  EXPECT_EQ(3, attribute.real(L"Height"));
  EXPECT_EQ(10, attribute.integer(L"Justify")) << "middle center; stored under another code than a text's";
  EXPECT_TRUE(attribute.flag(L"Invisible"));
  EXPECT_FALSE(attribute.flag(L"Constant"));
  EXPECT_TRUE(attribute.flag(L"Preset"));
  EXPECT_EQ(L"Attribute", attribute.text(L"EntityName"));
}

TEST_F(AttributeTest, KnowsItsReference) {
  EXPECT_EQ(L"Doors", attribute.text(L"ReferenceLayer"));
  EXPECT_EQ(L"DASHED", attribute.text(L"ReferenceLinetype"));
  EXPECT_EQ(L"ByColor", attribute.text(L"ReferencePlotStyle"));
}

TEST_F(AttributeTest, IsJustifiedUnderItsOwnCode) {
  EXPECT_EQ(S_OK, attribute.put(L"Justify", test::integer(8)).result);
  EXPECT_EQ(8, attribute.integer(L"Justify"));
  const auto again = Drawing::parse(drawing->document().bytes(), "saved.dxf");
  const auto record = again->members(database::resolve(again->entities()[0])->record).first;
  EXPECT_EQ(3, database::Lens(*again, record).integer(74, "AcDbAttribute", 0));
  EXPECT_FALSE(database::Lens(*again, record).has(73, "AcDbText"));
}

}  // namespace
}  // namespace velt::automation
