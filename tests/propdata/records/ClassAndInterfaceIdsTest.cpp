#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/automation/Ids.h"
#include "host/com/IDispatch.h"
#include "host/com/TypeInfo.h"

namespace velt::tests {
namespace {

struct Id {
  const char* name;
  const GUID* exported;  // the constant that the layer exports
  GUID listed;           // the value in the list
};

GUID guid(std::uint32_t data1, std::uint16_t data2, std::uint16_t data3, std::uint8_t a, std::uint8_t b,
          std::uint8_t c, std::uint8_t d, std::uint8_t e, std::uint8_t f, std::uint8_t g, std::uint8_t h) {
  return {data1, data2, data3, {a, b, c, d, e, f, g, h}};
}

const std::vector<Id> classes = {
#define VELT_CLSID(name, ...) {#name, &CLSID_##name, guid(__VA_ARGS__)},
#define VELT_IID(name, ...)
#include "host/automation/Ids.inc"
};

const std::vector<Id> interfaces = {
#define VELT_CLSID(name, ...)
#define VELT_IID(name, ...) {#name, &IID_##name, guid(__VA_ARGS__)},
#include "host/automation/Ids.inc"
};

std::array<unsigned char, 16> bytesOf(const GUID& id) {
  std::array<unsigned char, 16> bytes{};
  std::memcpy(bytes.data(), &id, sizeof id);
  return bytes;
}

TEST(ClassAndInterfaceIds, HaveTheValuesOfTheList) {
  for (const auto& list : {classes, interfaces}) {
    for (const Id& id : list)
      EXPECT_EQ(*id.exported, id.listed) << id.name;
  }
}

TEST(ClassAndInterfaceIds, AreUnique) {
  std::map<std::array<unsigned char, 16>, std::string> names;
  names.emplace(bytesOf(GUID_NULL), "GUID_NULL");
  names.emplace(bytesOf(IID_IUnknown), "IUnknown");
  names.emplace(bytesOf(IID_IDispatch), "IDispatch");
  names.emplace(bytesOf(IID_ITypeInfo), "ITypeInfo");
  names.emplace(bytesOf(IID_ITypeLib), "ITypeLib");
  for (const auto& list : {classes, interfaces}) {
    for (const Id& id : list) {
      const auto [known, isNew] = names.emplace(bytesOf(*id.exported), id.name);
      EXPECT_TRUE(isNew) << id.name << " is " << known->second;
    }
  }
}

TEST(ClassAndInterfaceIds, NamesAreUnique) {
  std::set<std::string> names;
  for (const auto& list : {classes, interfaces}) {
    for (const Id& id : list)
      EXPECT_TRUE(names.insert(id.name).second) << id.name;
  }
}

TEST(ClassAndInterfaceIds, NoClassIdHoldsAZeroByte) {
  for (const Id& id : classes) {
    for (const unsigned char byte : bytesOf(*id.exported))
      EXPECT_NE(byte, 0) << id.name;
  }
}

TEST(ClassAndInterfaceIds, EveryClassThatTheLayerTellsApartIsInTheList) {
  std::set<std::string> listed;
  for (const Id& id : classes)
    listed.insert(id.name);
  for (const char* const name : {"Line",
                                 "Hatch",
                                 "LWPolyline",
                                 "Polyline",
                                 "3DPolyline",
                                 "PolygonMesh",
                                 "RasterImage",
                                 "Text",
                                 "Attribute",
                                 "Ellipse",
                                 "Spline",
                                 "MText",
                                 "MLeader",
                                 "PViewport",
                                 "Arc",
                                 "Circle",
                                 "Region",
                                 "Solid",
                                 "Trace",
                                 "DimRadial",
                                 "DimDiametric",
                                 "DimRotated",
                                 "DimAligned",
                                 "DimAngular",
                                 "Dim3PointAngular",
                                 "DimOrdinate",
                                 "DimRadialLarge",
                                 "DimArcLength",
                                 "Leader",
                                 "Tolerance",
                                 "ExternalReference"}) {
    EXPECT_TRUE(listed.contains(std::string("Velt") + name)) << name;
  }
}

TEST(ClassAndInterfaceIds, EveryInterfaceOfTheAutomationModelIsInTheList) {
  std::set<std::string> listed;
  for (const Id& id : interfaces)
    listed.insert(id.name);
  EXPECT_EQ(listed, (std::set<std::string>{"IVeltBaseObject", "IVeltVkCmColor", "IVeltHyperlinks",
                                           "IVeltHyperlink", "IVeltHatch", "IVkPiPropertyDisplay"}));
}

}  // namespace
}  // namespace velt::tests
