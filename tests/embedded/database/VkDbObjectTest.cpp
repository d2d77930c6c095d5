#include "host/database/VkDbObject.h"

#include <gtest/gtest.h>

#include "embedded/database/ObjectClass.h"
#include "host/automation/IdValues.h"
#include "host/database/OpenObject.h"
#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::Sample;

struct Automated {
  const char* dxfName;
  CLSID clsid;
};

constexpr Automated automated[] = {
    {"LINE", CLSID_VeltLine},   {"POINT", CLSID_VeltPoint},     {"CIRCLE", CLSID_VeltCircle},
    {"ARC", CLSID_VeltArc},     {"ELLIPSE", CLSID_VeltEllipse}, {"LWPOLYLINE", CLSID_VeltLWPolyline},
    {"TEXT", CLSID_VeltText},   {"MTEXT", CLSID_VeltMText},     {"INSERT", CLSID_VeltBlockReference},
    {"HATCH", CLSID_VeltHatch},
};

TEST(VkDbObject, EachKindThatAutomationKnowsTellsItsClass) {
  for (const Automated& kind : automated) {
    const auto drawing = Sample().entity(kind.dxfName).open();
    const VkDbObjectPointer<VkDbObject> object(drawing->entities()[0], VkDb::kForRead);
    ASSERT_EQ(Velt::eOk, object.openStatus());
    CLSID clsid{};
    EXPECT_EQ(Velt::eOk, object->getClassID(&clsid)) << kind.dxfName;
    EXPECT_TRUE(clsid == kind.clsid) << kind.dxfName;
  }
}

TEST(VkDbObject, AKindWithoutAnAutomationClassSaysSoAndWritesNothing) {
  const auto drawing = Sample().layer("Walls").entity("SPACESHIP").open();
  for (const VkDbObjectId id : {drawing->entities()[0], drawing->layers().entries()[0].id}) {
    const VkDbObjectPointer<VkDbObject> object(id, VkDb::kForRead);
    CLSID clsid = CLSID_VeltArc;
    EXPECT_EQ(Velt::eNoAutomationClass, object->getClassID(&clsid));
    EXPECT_TRUE(clsid == CLSID_VeltArc);
  }
}

TEST(VkDbObject, AClassIdNeedsAPlaceToBeWrittenTo) {
  const auto drawing = Sample().entity("LINE").open();
  const VkDbObjectPointer<VkDbObject> object(drawing->entities()[0], VkDb::kForRead);
  EXPECT_EQ(Velt::eInvalidInput, object->getClassID(nullptr));
}

TEST(VkDbObject, AnObjectIsOfTheRunTimeClassOfItsKind) {
  const auto drawing = Sample().layer("Walls").entity("LINE").entity("SPACESHIP").entity("INSERT").open();
  const VkDbObjectPointer<VkDbObject> line(drawing->entities()[0], VkDb::kForRead);
  const VkDbObjectPointer<VkDbObject> unknown(drawing->entities()[1], VkDb::kForRead);
  const VkDbObjectPointer<VkDbObject> insert(drawing->entities()[2], VkDb::kForRead);
  const VkDbObjectPointer<VkDbObject> layer(drawing->layers().entries()[0].id, VkDb::kForRead);

  EXPECT_STREQ(L"VkDbLine", line->isA()->name());
  EXPECT_EQ(VkDbEntity::desc(), line->isA()->myParent());
  EXPECT_FALSE(line->isKindOf(VkDbBlockReference::desc()));
  EXPECT_EQ(VkDbEntity::desc(), unknown->isA());
  EXPECT_EQ(VkDbBlockReference::desc(), insert->isA());
  EXPECT_EQ(VkDbLayerTableRecord::desc(), layer->isA());
  EXPECT_FALSE(layer->isKindOf(VkDbEntity::desc()));
}

TEST(VkDbObject, AProtocolExtensionOfAKindIsFoundFromItsObjectsOnly) {
  // given
  struct Extension final : VkRxObject {
  } extension;
  VkRxClass protocol(L"Protocol", VkRxObject::desc());
  const auto drawing = Sample().entity("LINE").entity("ARC").open();
  const VkDbObjectPointer<VkDbObject> line(drawing->entities()[0], VkDb::kForRead);
  const VkDbObjectPointer<VkDbObject> arc(drawing->entities()[1], VkDb::kForRead);
  // when
  runtimeClassNamed(L"VkDbLine")->addX(&protocol, &extension);
  // then
  EXPECT_EQ(&extension, line->isA()->queryX(&protocol));
  EXPECT_EQ(nullptr, arc->isA()->queryX(&protocol));
  runtimeClassNamed(L"VkDbLine")->delX(&protocol);
}

TEST(VkDbObject, AnObjectThatTheHostDidNotMakeIsOfItsDeclaredClass) {
  struct Foreign final : VkDbEntity {
    Foreign() : VkDbEntity(nullptr) {}
  } foreign;
  EXPECT_EQ(VkDbEntity::desc(), foreign.isA());
  EXPECT_TRUE(foreign.objectId().isNull());
  EXPECT_TRUE(foreign.layerId().isNull());
  EXPECT_EQ(Velt::eInvalidInput, foreign.close());
  CLSID clsid{};
  EXPECT_EQ(Velt::eNoAutomationClass, foreign.getClassID(&clsid));
}

}  // namespace
}  // namespace velt::database
