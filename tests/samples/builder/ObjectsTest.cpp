#include "samples/builder/Sections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "dxf/Numbers.h"

#include "tests/samples/builder/Made.h"

namespace velt::samples {
namespace {

using namespace velt::dxf;
using namespace test;
using ::testing::Contains;

TEST(ObjectsTest, ASpaceAndItsLayoutReferToEachOther) {
  const Document document = documentOf(DrawingBuilder());
  for (const std::size_t space : {0U, 1U}) {
    const RecordView record = viewOf(document, "BLOCK_RECORD", space);
    const RecordView layout = viewOf(document, "LAYOUT", space);
    EXPECT_EQ(text(record, 340, "AcDbBlockTableRecord"), layout.handle());
    EXPECT_EQ(text(layout, 330, "AcDbLayout"), record.handle());
  }
}

TEST(ObjectsTest, AnObjectIsOwnedByTheDictionaryThatNamesIt) {
  // given
  DrawingBuilder drawing;
  const Handle first = drawing.object("STYLES", "One", "FIRSTKIND", {{70, 1}});
  const Handle second = drawing.object("STYLES", "Two", "SECONDKIND", {{3, "x"}});
  // when
  const Document document = documentOf(drawing);
  // then
  const RecordView one = viewOf(document, "FIRSTKIND");
  const RecordView two = viewOf(document, "SECONDKIND");
  EXPECT_EQ(one.handle(), formatHandle(first));
  EXPECT_EQ(two.handle(), formatHandle(second));
  EXPECT_EQ(text(one, 330, ""), text(two, 330, "")) << "one dictionary";
  const RecordView root = viewOf(document, "DICTIONARY");
  EXPECT_THAT(values(root, 3, "AcDbDictionary"), Contains("STYLES"));
  EXPECT_THAT(values(root, 350, "AcDbDictionary"), Contains(std::string(text(one, 330, ""))));
}

}  // namespace
}  // namespace velt::samples
