#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cwctype>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "propdata/VeltPropData.h"
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

struct Kind {
  std::vector<std::string> classes;
  std::uint32_t code;
};

struct Special {
  const wchar_t* name;
  std::vector<Kind> kinds;
};

// In the order of the special indexes.
const std::vector<Special> specials = {
    {L"Height", {{{"RasterImage"}, 533}}},
    {L"Width", {{{"RasterImage"}, 534}}},
    {L"Justify", {{{"Text", "Attribute"}, 536}}},
    {L"EndAngle", {{{"Ellipse"}, 508}}},
    {L"Weight", {{{"Spline"}, 538}}},
    {L"StartSeg", {{{"LWPolyline", "Polyline"}, 502}}},
    {L"EndSeg", {{{"LWPolyline", "Polyline"}, 502}}},
    {L"Vertex", {{{"LWPolyline", "Polyline"}, 503}}},
    {L"FitSmooth", {{{"Polyline"}, 500}, {{"3DPolyline"}, 501}, {{"PolygonMesh"}, 532}}},
    {L"Style", {{{"Text", "Attribute"}, 537}, {{"MText"}, 526}}},
    {L"ContentBlockName", {{{"MLeader"}, 524}}},
    {L"Direction", {{{"MText", "MLeader"}, 525}}},
    {L"PlotStyleTable", {{{"PViewport"}, 531}}},
    {L"Area", {{{"Arc", "Circle", "Ellipse", "Polyline", "LWPolyline", "Region", "Spline"}, 529}}},
    {L"DimStyle", {{annotations, 507}}},
    {L"TextStyle", {{annotations, 511}}},
    {L"Arrowhead1Type", {{annotations, 506}}},
    {L"Arrowhead2Type", {{annotations, 506}}},
    {L"Precision", {{annotations, 511}}},
    {L"AnglePrecision", {{annotations, 511}}},
    {L"Arrow", {{annotations, 506}}},
    {L"PatternName", {{{"Hatch"}, 518}}},
    {L"Type", {{{"Hatch"}, 509}}},
    {L"ISOPenWidth", {{{"Hatch"}, 517}}},
    {L"Angle", {{{"Hatch"}, 513}}},
    {L"HatchScale", {{{"Hatch"}, 519}}},
    {L"Spacing", {{{"Hatch"}, 520}}},
    {L"Double", {{{"Hatch"}, 514}}},
    {L"Elevation", {{{"Hatch"}, 515}, {{"Solid", "Trace"}, 527}}},
    {L"Associative", {{{"Hatch"}, 514}}},
    {L"IslandStyle", {{{"Hatch"}, 516}}},
    {L"GradientName", {{{"Hatch"}, 512}}},
};

const std::map<DISPID, std::uint32_t> codesByDispId = {{1280, 505}, {1281, 521}, {1282, 522}, {1283, 539},
                                                       {1299, 530}, {1300, 523}, {1301, 510}};

std::uint32_t codeByType(VARTYPE type) {
  switch (type) {
    case VT_I2:
    case VT_I4:
    case VT_R4:
    case VT_R8:
    case VT_INT:
      return 528;
    case VT_BSTR:
      return 535;
    case VT_BOOL:
      return 504;
    default:
      return 0;
  }
}

// 0 when the class is not asked about.
std::uint32_t codeByClass(const Special& special, const std::string& className) {
  for (const Kind& kind : special.kinds) {
    for (const std::string& name : kind.classes) {
      if ("Velt" + name == className) return kind.code;
    }
  }
  return 0;
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

std::uint32_t kindOf(const CLSID& clsid, PROPINFO prop) {
  return _GetPropertyType(clsid, &prop);
}

std::uint32_t kindOf(const char* className, const PROPINFO& prop) {
  return kindOf(classNamed(className), prop);
}

std::string narrow(const wchar_t* text) {
  const std::wstring wide(text);
  return {wide.begin(), wide.end()};
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
  for (const auto& [dispId, code] : codesByDispId) {
    for (const Class& one : allClasses)
      EXPECT_EQ(kindOf(one.clsid, row(L"Name", toys::r8(1), dispId)), code) << dispId;
    EXPECT_EQ(kindOf(GUID_NULL, row(L"", toys::empty(), dispId)), code) << dispId;
  }
}

TEST(PropertyType, TheDispIdDecidesBeforeSpecialNamesAndChoices) {
  PROPINFO prop = row(L"Associative", toys::boolean(true), 1299);
  prop.hasChoices = true;
  EXPECT_EQ(kindOf("Hatch", prop), 530u);
}

TEST(PropertyType, NeighbouringDispIdsAreOrdinary) {
  for (const DISPID dispId : {1279, 1284, 1298, 1302, 0, -1, -23, 1280 + 65536}) {
    EXPECT_EQ(kindOf("Line", row(L"Name", toys::r8(1), dispId)), 528u) << dispId;
  }
}

TEST(PropertyType, TheDispIdDecidesWithoutALookAtTheColorObject) {
  ToyHost host;
  ToyColor color(host, "colour", ToyColor::byLayer);
  for (const auto& [dispId, code] : codesByDispId) {
    EXPECT_EQ(kindOf("Line", row(L"Name", toys::borrowed(color.dispatch()), dispId)), code);
  }
  EXPECT_EQ(host.log.all(), Lines{});
}

// --- colors --------------------------------------------------------------------------------------------------------

TEST(PropertyType, AColorObjectIsAColorAndIsGivenBackAtOnce) {
  ToyHost host;
  ToyColor color(host, "colour", ToyColor::byLayer);
  host.mark();
  EXPECT_EQ(kindOf("Line", row(L"TextColor", toys::borrowed(color.dispatch()))), 505u);
  EXPECT_EQ(host.log.all(),
            (Lines{"QueryInterface(IVeltVkCmColor) on colour", "Release(IVeltVkCmColor) on colour"}));
  EXPECT_EQ(host.balance(), "balanced");
}

TEST(PropertyType, AColorObjectDecidesBeforeSpecialNamesAndChoices) {
  ToyHost host;
  ToyColor color(host, "colour", ToyColor::byLayer);
  PROPINFO prop = row(L"PatternName", toys::borrowed(color.dispatch()));
  prop.hasChoices = true;
  EXPECT_EQ(kindOf("Hatch", prop), 505u);
}

TEST(PropertyType, AnObjectThatIsNoColorIsTreatedByName) {
  ToyHost host;
  ToyColor other(host, "other", 0);
  other.withhold(IID_IVeltVkCmColor);
  PROPINFO prop = row(L"PatternName", toys::borrowed(other.dispatch()));
  EXPECT_EQ(kindOf("Hatch", prop), 518u);
  EXPECT_EQ(kindOf("Line", prop), 0u);
  prop.hasChoices = true;
  EXPECT_EQ(kindOf("Line", prop), 511u);
  EXPECT_EQ(host.log.count("Release"), 0);
  EXPECT_EQ(host.log.count("QueryInterface(IVeltVkCmColor) on other"), 3);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST(PropertyType, ADispatchValueWithoutObjectIsTreatedByName) {
  const PROPINFO prop = row(L"PatternName", toys::ofType(VT_DISPATCH, 0));
  EXPECT_EQ(kindOf("Hatch", prop), 518u);
  EXPECT_EQ(kindOf("Line", prop), 0u);
}

TEST(PropertyType, OnlyAValueOfTypeDispatchIsAskedWhetherItIsAColor) {
  ToyHost host;
  ToyColor color(host, "colour", ToyColor::byLayer);
  const auto pointer = reinterpret_cast<LONGLONG>(color.dispatch());
  for (const int type : {0, 1, 3, 8, 10, 12, 13, 20, VT_DISPATCH | VT_BYREF, VT_DISPATCH | VT_ARRAY}) {
    const VARIANT value = toys::ofType(static_cast<VARTYPE>(type), pointer);
    EXPECT_NE(kindOf("Line", row(L"Name", value)), 505u) << type;
  }
  EXPECT_EQ(host.log.all(), Lines{});
}

TEST(PropertyType, AQueryThatGivesNothingReleasesNothing) {
  ToyHost host;
  ToyColor color(host, "colour", ToyColor::byLayer);
  host.on("QueryInterface(IVeltVkCmColor)").answerNull();
  static_cast<void>(kindOf("Line", row(L"Name", toys::borrowed(color.dispatch()))));
  EXPECT_EQ(host.log.count("Release"), 0);
}

// --- special names by class -----------------------------------------------------------------------------------------

TEST(PropertyType, EverySpecialNameOfEveryClassHasItsKind) {
  for (const Special& special : specials) {
    std::size_t reached = 0;
    for (const Class& one : allClasses) {
      const std::uint32_t code = codeByClass(special, one.name);
      if (code != 0) ++reached;
      PROPINFO prop = row(special.name, toys::r8(1));
      EXPECT_EQ(kindOf(one.clsid, prop), code != 0 ? code : 528u)
          << narrow(special.name) << " of " << one.name;
      // Neither choices nor the type of the value come before it.
      prop.hasChoices = true;
      EXPECT_EQ(kindOf(one.clsid, prop), code != 0 ? code : 511u)
          << narrow(special.name) << " of " << one.name;
      prop.hasChoices = false;
      prop.value = toys::empty();
      EXPECT_EQ(kindOf(one.clsid, prop), code) << narrow(special.name) << " of " << one.name;
    }
    std::size_t expected = 0;
    for (const Kind& kind : special.kinds)
      expected += kind.classes.size();
    EXPECT_EQ(reached, expected) << narrow(special.name);
    EXPECT_EQ(kindOf(GUID_NULL, row(special.name)), 528u);
  }
}

TEST(PropertyType, TheClassIsTheOneGivenAndNotTheRecords) {
  PROPINFO prop = row(L"Height");
  prop.clsid = classNamed("RasterImage");
  EXPECT_EQ(kindOf("Line", prop), 528u);
  prop.clsid = classNamed("Line");
  EXPECT_EQ(kindOf("RasterImage", prop), 533u);
}

TEST(PropertyType, TheNameIsTheAutomationNameAndNotTheLabel) {
  PROPINFO prop = row(L"Other");
  prop.displayName = L"Height";
  EXPECT_EQ(kindOf("RasterImage", prop), 528u);
}

TEST(PropertyType, Quirk_associative_shares_double) {
  EXPECT_EQ(kindOf("Hatch", row(L"Associative", toys::boolean(true))), 514u);
  EXPECT_EQ(kindOf("Hatch", row(L"Double", toys::boolean(true))), 514u);
}

TEST(PropertyType, AWordedElevationDependsOnTheClass) {
  EXPECT_EQ(kindOf("Hatch", row(L"Elevation")), 515u);
  EXPECT_EQ(kindOf("Solid", row(L"Elevation")), 527u);
  EXPECT_EQ(kindOf("Trace", row(L"Elevation")), 527u);
  EXPECT_EQ(kindOf("LWPolyline", row(L"Elevation")), 528u);
}

// --- everything else ------------------------------------------------------------------------------------------------

TEST(PropertyType, AChoiceListDecidesBeforeTheTypeOfTheValue) {
  for (int type = 0; type <= 36; ++type) {
    if (type == VT_DISPATCH) continue;
    PROPINFO prop = row(L"Name", toys::ofType(static_cast<VARTYPE>(type), 0));
    prop.hasChoices = true;
    EXPECT_EQ(kindOf("Line", prop), 511u) << type;
  }
}

TEST(PropertyType, TheFlagDecidesAndNotTheChoices) {
  PROPINFO prop = row(L"Name");
  prop.choiceNames.push_back(L"one");
  prop.choiceValues.push_back(1);
  EXPECT_EQ(kindOf("Line", prop), 528u);
}

TEST(PropertyType, TheTypeOfTheValueDecidesLast) {
  for (int type = 0; type <= 40; ++type) {
    const VARIANT value = toys::ofType(static_cast<VARTYPE>(type), 0);
    EXPECT_EQ(kindOf("Line", row(L"Name", value)), codeByType(static_cast<VARTYPE>(type))) << type;
  }
  for (const int type : {VT_ARRAY | VT_R8, VT_BYREF | VT_I4, VT_ARRAY | VT_BSTR, 0x8003, 0x1003}) {
    EXPECT_EQ(kindOf("Line", row(L"Name", toys::ofType(static_cast<VARTYPE>(type), 0))), 0u) << type;
  }
}

TEST(PropertyType, TheDeclaredTypeDoesNotCount) {
  PROPINFO prop = row(L"Name", toys::empty());
  prop.valueType = VT_R8;
  EXPECT_EQ(kindOf("Line", prop), 0u);
}

TEST(PropertyType, ChangesNothingInTheRecord) {
  PROPINFO prop = row(L"Height");
  prop.customType = 551;
  prop.weight = 9;
  EXPECT_EQ(_GetPropertyType(classNamed("RasterImage"), &prop), 533u);
  EXPECT_EQ(prop.customType, 551);
  EXPECT_EQ(prop.weight, 9);
  EXPECT_FALSE(prop.hasValue);
  EXPECT_EQ(prop.value.dblVal, 1.5);
}

TEST(PropertyType, EveryCodeFrom500To539IsReached) {
  std::set<std::uint32_t> reached;
  for (const auto& [dispId, code] : codesByDispId)
    reached.insert(kindOf("Line", row(L"Name", toys::r8(1), dispId)));
  for (const Special& special : specials) {
    for (const Class& one : allClasses)
      reached.insert(kindOf(one.clsid, row(special.name, toys::empty())));
  }
  for (const VARTYPE type : {VT_R8, VT_BSTR, VT_BOOL, VT_EMPTY}) {
    reached.insert(kindOf("Line", row(L"Name", toys::ofType(type, 0))));
  }
  std::set<std::uint32_t> expected{0};
  for (std::uint32_t code = 500; code <= 539; ++code)
    expected.insert(code);
  EXPECT_EQ(reached, expected);
}

}  // namespace
}  // namespace velt::tests
