#include "embedded/database/ObjectClass.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "host/database/VkDbEntity.h"
#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::entityRecord;
using test::Pairs;
using test::Sample;

std::wstring classNameOf(const std::string& type, Pairs pairs = {}) {
  const auto drawing = Sample().entity(type, pairs).open();
  return classOf(drawing->view(entityRecord(*drawing)), true).name;
}

TEST(ObjectClass, RowsOfOneDxfNameStandTogetherAndEndWithOneThatMatchesAll) {
  std::set<std::string_view> done;
  const auto rows = objectClasses();
  for (std::size_t index = 0; index < rows.size(); ++index) {
    const bool goesOn = index + 1 < rows.size() && rows[index + 1].dxfName == rows[index].dxfName;
    if (rows[index].dxfName.empty()) continue;
    EXPECT_FALSE(done.contains(rows[index].dxfName)) << rows[index].dxfName;
    EXPECT_EQ(goesOn, rows[index].flags.mask != 0) << rows[index].dxfName << ": a row that no record reaches";
    if (!goesOn) done.insert(rows[index].dxfName);
  }
}

TEST(ObjectClass, EveryRowHasARunTimeClassOfItsOwnUnderTheRightParent) {
  std::map<std::wstring_view, const ObjectClass*> names;
  for (const ObjectClass& row : objectClasses()) {
    EXPECT_TRUE(names.emplace(row.name, &row).second) << "stands twice";
    ASSERT_NE(nullptr, row.runtimeClass());
    EXPECT_STREQ(row.name, row.runtimeClass()->name());
    EXPECT_EQ(row.runtimeClass(), runtimeClassNamed(row.name));
    EXPECT_EQ(isEntityShape(row.shape), row.runtimeClass()->isDerivedFrom(VkDbEntity::desc()));
    EXPECT_TRUE(row.runtimeClass()->isDerivedFrom(VkDbObject::desc()));
  }
}

TEST(ObjectClass, TheDeclaredClassesAreUsedWhereThereAreSome) {
  EXPECT_EQ(VkDbBlockReference::desc(), runtimeClassNamed(L"VkDbBlockReference"));
  EXPECT_EQ(VkDbLayerTableRecord::desc(), runtimeClassNamed(L"VkDbLayerTableRecord"));
  EXPECT_EQ(VkDbEntity::desc(), runtimeClassNamed(L"VkDbEntity"));
  EXPECT_EQ(VkDbDatabase::desc(), runtimeClassNamed(L"VkDbDatabase"));
  EXPECT_EQ(nullptr, runtimeClassNamed(L"VkDbNoSuchThing"));
}

TEST(ObjectClass, TheDxfNameTellsTheClass) {
  EXPECT_EQ(L"VkDbLine", classNameOf("LINE"));
  EXPECT_EQ(L"VkDbPolyline", classNameOf("LWPOLYLINE"));
  EXPECT_EQ(L"VkDbBlockReference", classNameOf("INSERT"));
}

TEST(ObjectClass, FlagsTellKindsOfOneNameApart) {
  EXPECT_EQ(L"VkDb2dPolyline", classNameOf("POLYLINE"));
  EXPECT_EQ(L"VkDb2dPolyline", classNameOf("POLYLINE", {{70, "1"}}));
  EXPECT_EQ(L"VkDb3dPolyline", classNameOf("POLYLINE", {{70, "9"}}));
  EXPECT_EQ(L"VkDbPolygonMesh", classNameOf("POLYLINE", {{70, "17"}}));
  EXPECT_EQ(L"VkDbPolyFaceMesh", classNameOf("POLYLINE", {{70, "64"}}));
  EXPECT_EQ(L"VkDbRotatedDimension", classNameOf("DIMENSION", {{70, "32"}}));
  EXPECT_EQ(L"VkDbOrdinateDimension", classNameOf("DIMENSION", {{70, "70"}}));
  EXPECT_EQ(L"VkDbDimension", classNameOf("DIMENSION", {{70, "7"}}));
}

TEST(ObjectClass, AnUnknownKindIsAnEntityOrAnObjectByWhereItStands) {
  EXPECT_EQ(L"VkDbEntity", classNameOf("SPACESHIP"));
  const auto drawing = Sample().object("SPACESHIP", {}).open();
  EXPECT_STREQ(L"VkDbObject", classOf(drawing->view(1), false).name);
}

TEST(ObjectClass, AnEntityAmongTheObjectsDoesNotCountAsOne) {
  const auto drawing = Sample().object("LINE", {}).open();
  EXPECT_STREQ(L"VkDbObject", classOf(drawing->view(1), false).name);
}

TEST(ObjectClass, ATableRecordAmongTheEntitiesIsOnlySomeEntity) {
  EXPECT_EQ(L"VkDbEntity", classNameOf("LAYER"));
}

}  // namespace
}  // namespace velt::database
