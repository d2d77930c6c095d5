#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cwctype>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "propdata/VeltPropData.h"
#include "tests/support/Narrow.h"
#include "tests/support/ToyColor.h"
#include "tests/support/ToyHost.h"
#include "tests/support/ToyObject.h"
#include "tests/support/ToyValue.h"

namespace velt::tests {
namespace {

using toys::Lines;
using toys::ToyColor;
using toys::ToyHost;
using toys::ToyObject;

struct Class {
  const char* name;
  CLSID clsid;
};

const std::vector<Class> allClasses = {
#define VELT_CLSID(name, ...) {#name, ::CLSID_##name},
#define VELT_IID(name, ...)
#include "host/automation/Ids.inc"
};

CLSID classNamed(const std::string& name) {
  for (const Class& one : allClasses) {
    if (one.name == "Velt" + name) return one.clsid;
  }
  ADD_FAILURE() << "no class " << name;
  return GUID_NULL;
}

const std::vector<std::string> annotations = {"DimRadial",  "DimDiametric",     "DimRotated",   "DimAligned",
                                              "DimAngular", "Dim3PointAngular", "DimOrdinate",  "Leader",
                                              "MLeader",    "DimRadialLarge",   "DimArcLength", "Tolerance"};

struct Rule {
  std::vector<std::string> classes;
  PropertyKind::Code kind;
};

struct Special {
  const wchar_t* name;
  std::vector<Rule> rules;
};

// In the order of the special indexes.
const std::vector<Special> specials = {
    {L"Height", {{{"RasterImage"}, PropertyKind::imageHeight}}},
    {L"Width", {{{"RasterImage"}, PropertyKind::imageWidth}}},
    {L"Justify", {{{"Text", "Attribute"}, PropertyKind::textJustification}}},
    {L"EndAngle", {{{"Ellipse"}, PropertyKind::ellipseEndAngle}}},
    {L"Weight", {{{"Spline"}, PropertyKind::splineWeight}}},
    {L"StartSeg", {{{"LWPolyline", "Polyline"}, PropertyKind::segmentWidth}}},
    {L"EndSeg", {{{"LWPolyline", "Polyline"}, PropertyKind::segmentWidth}}},
    {L"Vertex", {{{"LWPolyline", "Polyline"}, PropertyKind::vertex}}},
    {L"FitSmooth",
     {{{"Polyline"}, PropertyKind::polylineFit},
      {{"3DPolyline"}, PropertyKind::polyline3dFit},
      {{"PolygonMesh"}, PropertyKind::meshFit}}},
    {L"Style", {{{"Text", "Attribute"}, PropertyKind::textStyle}, {{"MText"}, PropertyKind::mtextStyle}}},
    {L"ContentBlockName", {{{"MLeader"}, PropertyKind::leaderBlock}}},
    {L"Direction", {{{"MText", "MLeader"}, PropertyKind::textDirection}}},
    {L"PlotStyleTable", {{{"PViewport"}, PropertyKind::viewportPlotStyleTable}}},
    {L"Area",
     {{{"Arc", "Circle", "Ellipse", "Polyline", "LWPolyline", "Region", "Spline"}, PropertyKind::shapeArea}}},
    {L"DimStyle", {{annotations, PropertyKind::dimensionStyle}}},
    {L"TextStyle", {{annotations, PropertyKind::choice}}},
    {L"Arrowhead1Type", {{annotations, PropertyKind::arrowhead}}},
    {L"Arrowhead2Type", {{annotations, PropertyKind::arrowhead}}},
    {L"Precision", {{annotations, PropertyKind::choice}}},
    {L"AnglePrecision", {{annotations, PropertyKind::choice}}},
    {L"Arrow", {{annotations, PropertyKind::arrowhead}}},
    {L"PatternName", {{{"Hatch"}, PropertyKind::hatchPattern}}},
    {L"Type", {{{"Hatch"}, PropertyKind::hatchType}}},
    {L"ISOPenWidth", {{{"Hatch"}, PropertyKind::hatchIsoPenWidth}}},
    {L"Angle", {{{"Hatch"}, PropertyKind::hatchAngle}}},
    {L"HatchScale", {{{"Hatch"}, PropertyKind::hatchScale}}},
    {L"Spacing", {{{"Hatch"}, PropertyKind::hatchSpacing}}},
    {L"Double", {{{"Hatch"}, PropertyKind::hatchFlag}}},
    {L"Elevation",
     {{{"Hatch"}, PropertyKind::hatchElevation}, {{"Solid", "Trace"}, PropertyKind::elevation}}},
    {L"Associative", {{{"Hatch"}, PropertyKind::hatchFlag}}},
    {L"IslandStyle", {{{"Hatch"}, PropertyKind::hatchIslandStyle}}},
    {L"GradientName", {{{"Hatch"}, PropertyKind::hatchGradient}}},
};

const std::map<DISPID, PropertyKind::Code> kindsByDispId = {
    {1280, PropertyKind::colorObject},      {1281, PropertyKind::entityLayer},
    {1282, PropertyKind::entityLinetype},   {1283, PropertyKind::entityLinetypeScale},
    {1299, PropertyKind::entityLineweight}, {1300, PropertyKind::entityPlotStyle},
    {1301, PropertyKind::hyperlinks}};

PropertyKind::Code kindByType(VARTYPE type) {
  switch (type) {
    case VT_I2:
    case VT_I4:
    case VT_R4:
    case VT_R8:
    case VT_INT:
      return PropertyKind::number;
    case VT_BSTR:
      return PropertyKind::text;
    case VT_BOOL:
      return PropertyKind::flag;
    default:
      return PropertyKind::none;
  }
}

// None when the class is not asked about.
PropertyKind::Code kindByClass(const Special& special, const std::string& className) {
  for (const Rule& rule : special.rules) {
    for (const std::string& name : rule.classes) {
      if ("Velt" + name == className) return rule.kind;
    }
  }
  return PropertyKind::none;
}

PROPINFO row(const wchar_t* name, const VARIANT& value = toys::r8(1.5), DISPID dispId = 7) {
  PROPINFO made;
  made.clsid = GUID_NULL;
  made.dispId = dispId;
  made.customType = 0;
  made.name = name;
  made.value = value;
  return made;
}

int kindOf(const CLSID& clsid, PROPINFO prop) {
  return static_cast<int>(_GetPropertyType(clsid, &prop));
}

int kindOf(const char* className, const PROPINFO& prop) {
  return kindOf(classNamed(className), prop);
}

// --- special names --------------------------------------------------------------------------------------------------

TEST(SpecialNames, HaveTheirIndexes) {
  ASSERT_EQ(specials.size(), 32u);
  for (std::size_t i = 0; i < specials.size(); ++i) {
    EXPECT_EQ(_GetSpecialPropertyIndex(specials[i].name), i) << narrow(specials[i].name);
    const std::wstring anotherPointer(specials[i].name);
    EXPECT_EQ(_GetSpecialPropertyIndex(anotherPointer.c_str()), i) << narrow(specials[i].name);
  }
}

TEST(SpecialNames, AreUnique) {
  std::set<std::wstring> names;
  for (const Special& special : specials)
    EXPECT_TRUE(names.insert(special.name).second);
}

TEST(SpecialNames, NoNameAndAnUnknownNameAreToldApart) {
  EXPECT_EQ(_GetSpecialPropertyIndex(nullptr), 0xFFFFFFFEu);
  EXPECT_EQ(_GetSpecialPropertyIndex(L""), 0xFFFFFFFFu);
  EXPECT_EQ(_GetSpecialPropertyIndex(L"Layer"), 0xFFFFFFFFu);
}

TEST(SpecialNames, AreComparedWholeAndCaseSensitively) {
  for (const Special& special : specials) {
    const std::wstring name(special.name);
    std::wstring lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](wchar_t c) { return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c))); });
    for (const std::wstring& other : {lower, name + L" ", L" " + name, name + L"s", name.substr(1)}) {
      EXPECT_EQ(_GetSpecialPropertyIndex(other.c_str()), 0xFFFFFFFFu) << narrow(other.c_str());
    }
  }
  EXPECT_EQ(_GetSpecialPropertyIndex(L"Heigh"), 0xFFFFFFFFu);
}

// --- the class test -------------------------------------------------------------------------------------------------

TEST(ObjectIsA, ComparesTheSixteenBytes) {
  const CLSID text = classNamed("Text");
  EXPECT_EQ(_ObjectIsA(text, &text), 1);
  const CLSID mtext = classNamed("MText");
  EXPECT_EQ(_ObjectIsA(text, &mtext), 0);
  for (std::size_t i = 0; i < sizeof(GUID); ++i) {
    CLSID other = text;
    reinterpret_cast<unsigned char*>(&other)[i] ^= 1;
    EXPECT_EQ(_ObjectIsA(text, &other), 0) << "byte " << i;
    EXPECT_EQ(_ObjectIsA(other, &text), 0) << "byte " << i;
  }
  EXPECT_EQ(_ObjectIsA(GUID_NULL, &GUID_NULL), 1);
}

TEST(ObjectIsA, NothingIsANullClass) {
  EXPECT_EQ(_ObjectIsA(classNamed("Text"), nullptr), 0);
  EXPECT_EQ(_ObjectIsA(GUID_NULL, nullptr), 0);
}

TEST(ObjectIsA, KnowsNoHierarchy) {
  const CLSID entity = classNamed("Entity");
  const CLSID attribute = classNamed("Attribute");
  EXPECT_EQ(_ObjectIsA(classNamed("Line"), &entity), 0);
  EXPECT_EQ(_ObjectIsA(classNamed("AttributeDefinition"), &attribute), 0);
}

// --- kinds by DISPID ------------------------------------------------------------------------------------------------

TEST(PropertyType, ANullRecordHasNone) {
  EXPECT_EQ(_GetPropertyType(classNamed("Hatch"), nullptr), 0u);
}

TEST(PropertyType, TheDispIdDecidesFirstWhateverTheClass) {
  for (const auto& [dispId, kind] : kindsByDispId) {
    for (const Class& one : allClasses)
      EXPECT_EQ(kindOf(one.clsid, row(L"Name", toys::r8(1), dispId)), kind) << dispId;
    EXPECT_EQ(kindOf(GUID_NULL, row(L"", toys::empty(), dispId)), kind) << dispId;
  }
}

TEST(PropertyType, TheDispIdDecidesBeforeSpecialNamesAndChoices) {
  PROPINFO prop = row(L"Associative", toys::boolean(true), 1299);
  prop.hasChoices = true;
  EXPECT_EQ(kindOf("Hatch", prop), PropertyKind::entityLineweight);
}

TEST(PropertyType, NeighbouringDispIdsAreOrdinary) {
  for (const DISPID dispId : {1279, 1284, 1298, 1302, 0, -1, -23, 1280 + 65536}) {
    EXPECT_EQ(kindOf("Line", row(L"Name", toys::r8(1), dispId)), PropertyKind::number) << dispId;
  }
}

TEST(PropertyType, TheDispIdDecidesWithoutALookAtTheColorObject) {
  ToyHost host;
  ToyColor color(host, "color", ToyColor::byLayer);
  for (const auto& [dispId, kind] : kindsByDispId) {
    EXPECT_EQ(kindOf("Line", row(L"Name", toys::borrowed(color.dispatch()), dispId)), kind);
  }
  EXPECT_EQ(host.log.all(), Lines{});
}

// --- colors --------------------------------------------------------------------------------------------------------

TEST(PropertyType, AColorObjectIsAColorAndIsGivenBackAtOnce) {
  ToyHost host;
  ToyColor color(host, "color", ToyColor::byLayer);
  host.mark();
  EXPECT_EQ(kindOf("Line", row(L"TextColor", toys::borrowed(color.dispatch()))), PropertyKind::colorObject);
  EXPECT_EQ(host.log.all(),
            (Lines{"QueryInterface(IVeltVkCmColor) on color", "Release(IVeltVkCmColor) on color"}));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST(PropertyType, AColorObjectDecidesBeforeSpecialNamesAndChoices) {
  ToyHost host;
  ToyColor color(host, "color", ToyColor::byLayer);
  PROPINFO prop = row(L"PatternName", toys::borrowed(color.dispatch()));
  prop.hasChoices = true;
  EXPECT_EQ(kindOf("Hatch", prop), PropertyKind::colorObject);
}

TEST(PropertyType, AnObjectThatIsNotAColorIsTreatedByName) {
  ToyHost host;
  ToyColor other(host, "other", 0);
  other.withhold(IID_IVeltVkCmColor);
  PROPINFO prop = row(L"PatternName", toys::borrowed(other.dispatch()));
  EXPECT_EQ(kindOf("Hatch", prop), PropertyKind::hatchPattern);
  EXPECT_EQ(kindOf("Line", prop), PropertyKind::none);
  prop.hasChoices = true;
  EXPECT_EQ(kindOf("Line", prop), PropertyKind::choice);
  EXPECT_EQ(host.log.count("Release"), 0);
  EXPECT_EQ(host.log.count("QueryInterface(IVeltVkCmColor) on other"), 3);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST(PropertyType, ADispatchValueWithoutObjectIsTreatedByName) {
  const PROPINFO prop = row(L"PatternName", toys::ofType(VT_DISPATCH, 0));
  EXPECT_EQ(kindOf("Hatch", prop), PropertyKind::hatchPattern);
  EXPECT_EQ(kindOf("Line", prop), PropertyKind::none);
}

TEST(PropertyType, OnlyAValueOfTypeDispatchIsAskedWhetherItIsAColor) {
  ToyHost host;
  ToyColor color(host, "color", ToyColor::byLayer);
  const auto pointer = reinterpret_cast<LONGLONG>(color.dispatch());
  for (const int type : {0, 1, 3, 8, 10, 12, 13, 20, VT_DISPATCH | VT_BYREF, VT_DISPATCH | VT_ARRAY}) {
    const VARIANT value = toys::ofType(static_cast<VARTYPE>(type), pointer);
    EXPECT_NE(kindOf("Line", row(L"Name", value)), PropertyKind::colorObject) << type;
  }
  EXPECT_EQ(host.log.all(), Lines{});
}

TEST(PropertyType, AQueryThatGivesNothingReleasesNothing) {
  ToyHost host;
  ToyColor color(host, "color", ToyColor::byLayer);
  host.on("QueryInterface(IVeltVkCmColor)").answerNull();
  static_cast<void>(kindOf("Line", row(L"Name", toys::borrowed(color.dispatch()))));
  EXPECT_EQ(host.log.count("Release"), 0);
}

// --- special names by class -----------------------------------------------------------------------------------------

TEST(PropertyType, EverySpecialNameOfEveryClassHasItsKind) {
  for (const Special& special : specials) {
    std::size_t reached = 0;
    for (const Class& one : allClasses) {
      const PropertyKind::Code kind = kindByClass(special, one.name);
      if (kind != PropertyKind::none) ++reached;
      PROPINFO prop = row(special.name, toys::r8(1));
      EXPECT_EQ(kindOf(one.clsid, prop), kind != PropertyKind::none ? kind : PropertyKind::number)
          << narrow(special.name) << " of " << one.name;
      // Neither choices nor the type of the value come before it.
      prop.hasChoices = true;
      EXPECT_EQ(kindOf(one.clsid, prop), kind != PropertyKind::none ? kind : PropertyKind::choice)
          << narrow(special.name) << " of " << one.name;
      prop.hasChoices = false;
      prop.value = toys::empty();
      EXPECT_EQ(kindOf(one.clsid, prop), kind) << narrow(special.name) << " of " << one.name;
    }
    std::size_t expected = 0;
    for (const Rule& rule : special.rules)
      expected += rule.classes.size();
    EXPECT_EQ(reached, expected) << narrow(special.name);
    EXPECT_EQ(kindOf(GUID_NULL, row(special.name)), PropertyKind::number);
  }
}

TEST(PropertyType, TheClassIsTheOneGivenAndNotTheRecords) {
  PROPINFO prop = row(L"Height");
  prop.clsid = classNamed("RasterImage");
  EXPECT_EQ(kindOf("Line", prop), PropertyKind::number);
  prop.clsid = classNamed("Line");
  EXPECT_EQ(kindOf("RasterImage", prop), PropertyKind::imageHeight);
}

TEST(PropertyType, TheNameIsTheAutomationNameAndNotTheLabel) {
  PROPINFO prop = row(L"Other");
  prop.displayName = L"Height";
  EXPECT_EQ(kindOf("RasterImage", prop), PropertyKind::number);
}

TEST(PropertyType, Quirk_associative_shares_double) {
  EXPECT_EQ(kindOf("Hatch", row(L"Associative", toys::boolean(true))), PropertyKind::hatchFlag);
  EXPECT_EQ(kindOf("Hatch", row(L"Double", toys::boolean(true))), PropertyKind::hatchFlag);
}

TEST(PropertyType, AWordedElevationDependsOnTheClass) {
  EXPECT_EQ(kindOf("Hatch", row(L"Elevation")), PropertyKind::hatchElevation);
  EXPECT_EQ(kindOf("Solid", row(L"Elevation")), PropertyKind::elevation);
  EXPECT_EQ(kindOf("Trace", row(L"Elevation")), PropertyKind::elevation);
  EXPECT_EQ(kindOf("LWPolyline", row(L"Elevation")), PropertyKind::number);
}

// --- everything else ------------------------------------------------------------------------------------------------

TEST(PropertyType, AChoiceListDecidesBeforeTheTypeOfTheValue) {
  for (int type = 0; type <= 36; ++type) {
    if (type == VT_DISPATCH) continue;
    PROPINFO prop = row(L"Name", toys::ofType(static_cast<VARTYPE>(type), 0));
    prop.hasChoices = true;
    EXPECT_EQ(kindOf("Line", prop), PropertyKind::choice) << type;
  }
}

TEST(PropertyType, TheFlagDecidesAndNotTheChoices) {
  PROPINFO prop = row(L"Name");
  prop.choiceNames.push_back(L"one");
  prop.choiceValues.push_back(1);
  EXPECT_EQ(kindOf("Line", prop), PropertyKind::number);
}

TEST(PropertyType, TheTypeOfTheValueDecidesLast) {
  for (int type = 0; type <= 40; ++type) {
    const VARIANT value = toys::ofType(static_cast<VARTYPE>(type), 0);
    EXPECT_EQ(kindOf("Line", row(L"Name", value)), kindByType(static_cast<VARTYPE>(type))) << type;
  }
  for (const int type : {VT_ARRAY | VT_R8, VT_BYREF | VT_I4, VT_ARRAY | VT_BSTR, 0x8003, 0x1003}) {
    EXPECT_EQ(kindOf("Line", row(L"Name", toys::ofType(static_cast<VARTYPE>(type), 0))), PropertyKind::none)
        << type;
  }
}

TEST(PropertyType, TheDeclaredTypeDoesNotCount) {
  PROPINFO prop = row(L"Name", toys::empty());
  prop.valueType = VT_R8;
  EXPECT_EQ(kindOf("Line", prop), PropertyKind::none);
}

TEST(PropertyType, AnObjectThatThrowsHasNoKind) {
  ToyHost host;
  ToyObject object(host, "object");
  PROPINFO prop = row(L"Name", toys::borrowed(object.dispatch()));
  prop.hasChoices = true;
  host.on("QueryInterface(IVeltVkCmColor)").raise(L"no connection");

  int kind = PropertyKind::choice;
  EXPECT_NO_THROW(kind = kindOf("Line", prop));
  EXPECT_EQ(kind, PropertyKind::none);
}

TEST(PropertyType, ChangesNothingInTheRecord) {
  PROPINFO prop = row(L"Height");
  prop.customType = PropertyKind::unknownType;
  prop.weight = 9;
  EXPECT_EQ(static_cast<int>(_GetPropertyType(classNamed("RasterImage"), &prop)), PropertyKind::imageHeight);
  EXPECT_EQ(prop.customType, PropertyKind::unknownType);
  EXPECT_EQ(prop.weight, 9);
  EXPECT_FALSE(prop.hasValue);
  EXPECT_EQ(prop.value.dblVal, 1.5);
}

TEST(PropertyType, EveryKindThatIsSettledByAValueIsReached) {
  std::set<int> reached;
  for (const auto& [dispId, kind] : kindsByDispId)
    reached.insert(kindOf("Line", row(L"Name", toys::r8(1), dispId)));
  for (const Special& special : specials) {
    for (const Class& one : allClasses)
      reached.insert(kindOf(one.clsid, row(special.name, toys::empty())));
  }
  for (const VARTYPE type : {VT_R8, VT_BSTR, VT_BOOL, VT_EMPTY}) {
    reached.insert(kindOf("Line", row(L"Name", toys::ofType(type, 0))));
  }
  std::set<int> expected{PropertyKind::none};
  for (int kind = PropertyKind::polylineFit; kind <= PropertyKind::entityLinetypeScale; ++kind)
    expected.insert(kind);
  EXPECT_EQ(reached, expected);
}

}  // namespace
}  // namespace velt::tests
