// The gallery through the layer's exported query: every class, every editor that a palette picks, every place in the
// order of rows; and the list of all of it in the documentation.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/model/ClassIndex.h"
#include "embedded/database/Drawing.h"
#include "host/automation/IdValues.h"
#include "samples/Gallery.h"
#include "tests/contract/Query.h"
#include "tests/support/Golden.h"
#include "tests/support/Narrow.h"
#include "tests/support/WholeDrawings.h"

namespace velt::tests {
namespace {

using automation::AutomationClass;
using automation::ClassIndex;
using automation::PropertyRow;
using database::Drawing;

struct Shown {
  std::wstring name;
  DISPID dispId;
  std::int32_t customType;
  std::int32_t weight;
  bool isEditable;
};

// What a palette is told of one entity.
std::vector<Shown> rowsOf(VkDbObjectId id) {
  Query query({id});
  EXPECT_TRUE(query.ask());
  std::vector<Shown> shown;
  for (const PROPINFO& row : std::as_const(query.rows))
    shown.push_back({row.name.str(), row.dispId, row.customType, row.weight, row.isEditable});
  return shown;
}

// All entities of a drawing by their class, attributes included; those of no class under null.
std::map<const AutomationClass*, std::vector<VkDbObjectId>> entitiesByClass(Drawing& drawing) {
  std::map<const AutomationClass*, std::vector<VkDbObjectId>> found;
  const auto add = [&](std::uint32_t record) {
    found[automation::classOfRecord(drawing, record)].push_back(drawing.idOf(record));
  };
  for (const VkDbObjectId id : drawing.entities()) {
    const std::uint32_t record = database::resolve(id)->record;
    add(record);
    const database::RecordRange members = drawing.members(record);
    for (std::uint32_t member = members.first; member < members.first + members.count; ++member) {
      if (drawing.view(member).type() == "ATTRIB") add(member);
    }
  }
  return found;
}

class Gallery : public ::testing::Test {
 protected:
  static const std::map<std::wstring, std::vector<Shown>>& rowsByClass() {
    static const auto rows = [] {
      std::map<std::wstring, std::vector<Shown>> all;
      const auto drawing = Drawing::parse(samples::galleryDrawing(), "gallery.dxf");
      for (const auto& [kind, ids] : entitiesByClass(*drawing)) {
        std::vector<Shown>& ofClass = all[kind == nullptr ? L"VeltEntity" : kind->name];
        for (const VkDbObjectId id : ids) {
          const std::vector<Shown> shown = rowsOf(id);
          ofClass.insert(ofClass.end(), shown.begin(), shown.end());
        }
      }
      return all;
    }();
    return rows;
  }

  static bool shows(const std::wstring& className, const std::wstring& property, std::int32_t customType) {
    const auto found = rowsByClass().find(className);
    return found != rowsByClass().end()
           && std::any_of(found->second.begin(), found->second.end(), [&](const Shown& row) {
                return row.name == property && row.customType == customType;
              });
  }
};

struct Editor {
  const wchar_t* kind;
  const wchar_t* property;
  PropertyKind::Code customType;
};

// clang-format off
constexpr Editor editors[] = {
  // class                   property                  kind
  {L"VeltPolyline",          L"FitSmooth",             PropertyKind::polylineFit},
  {L"Velt3DPolyline",        L"FitSmooth",             PropertyKind::polyline3dFit},
  {L"VeltPolyline",          L"StartSeg",              PropertyKind::segmentWidth},
  {L"VeltPolyline",          L"EndSeg",                PropertyKind::segmentWidth},
  {L"VeltPolyline",          L"Vertex",                PropertyKind::vertex},
  {L"VeltLWPolyline",        L"Vertex",                PropertyKind::vertex},
  {L"VeltLWPolyline",        L"Closed",                PropertyKind::flag},
  {L"VeltLine",              L"Color",                 PropertyKind::colorObject},
  {L"VeltMLeader",           L"LeaderLineColor",       PropertyKind::colorObject},
  {L"VeltDimRotated",        L"Arrowhead1Type",        PropertyKind::arrowhead},
  {L"VeltDimDiametric",      L"Arrowhead2Type",        PropertyKind::arrowhead},
  {L"VeltDimRadial",         L"Arrow",                 PropertyKind::arrowhead},
  {L"VeltDimRadialLarge",    L"Arrow",                 PropertyKind::arrowhead},
  {L"VeltLeader",            L"Arrow",                 PropertyKind::arrowhead},
  {L"VeltMLeader",           L"Arrow",                 PropertyKind::arrowhead},
  {L"VeltDimRotated",        L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltDimAligned",        L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltDimRadial",         L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltDimDiametric",      L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltDimAngular",        L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltDim3PointAngular",  L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltDimOrdinate",       L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltDimRadialLarge",    L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltDimArcLength",      L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltLeader",            L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltTolerance",         L"DimStyle",              PropertyKind::dimensionStyle},
  {L"VeltEllipse",           L"EndAngle",              PropertyKind::ellipseEndAngle},
  {L"VeltHatch",             L"Type",                  PropertyKind::hatchType},
  {L"VeltLine",              L"Hyperlinks",            PropertyKind::hyperlinks},
  {L"VeltDimRotated",        L"TextStyle",             PropertyKind::choice},
  {L"VeltDimRotated",        L"Precision",             PropertyKind::choice},
  {L"VeltDimAngular",        L"AnglePrecision",        PropertyKind::choice},
  {L"VeltMLine",             L"Justification",         PropertyKind::choice},
  {L"VeltHatch",             L"GradientName",          PropertyKind::hatchGradient},
  {L"VeltHatch",             L"Angle",                 PropertyKind::hatchAngle},
  {L"VeltHatch",             L"Double",                PropertyKind::hatchFlag},
  {L"VeltHatch",             L"Associative",           PropertyKind::hatchFlag},
  {L"VeltHatch",             L"IslandStyle",           PropertyKind::hatchIslandStyle},
  {L"VeltHatch",             L"ISOPenWidth",           PropertyKind::hatchIsoPenWidth},
  {L"VeltHatch",             L"PatternName",           PropertyKind::hatchPattern},
  {L"VeltMLeader",           L"ContentBlockName",      PropertyKind::leaderBlock},
  {L"VeltHatch",             L"Elevation",             PropertyKind::hatchElevation},
  {L"VeltHatch",             L"HatchScale",            PropertyKind::hatchScale},
  {L"VeltHatch",             L"Spacing",               PropertyKind::hatchSpacing},
  {L"VeltLine",              L"Layer",                 PropertyKind::entityLayer},
  {L"VeltLine",              L"Linetype",              PropertyKind::entityLinetype},
  {L"VeltLine",              L"PlotStyleName",         PropertyKind::entityPlotStyle},
  {L"VeltLine",              L"Lineweight",            PropertyKind::entityLineweight},
  {L"VeltMText",             L"Direction",             PropertyKind::textDirection},
  {L"VeltMLeader",           L"Direction",             PropertyKind::textDirection},
  {L"VeltMText",             L"Style",                 PropertyKind::mtextStyle},
  {L"VeltSolid",             L"Elevation",             PropertyKind::elevation},
  {L"VeltTrace",             L"Elevation",             PropertyKind::elevation},
  {L"VeltSpline",            L"Degree",                PropertyKind::number},
  {L"VeltArc",               L"Area",                  PropertyKind::shapeArea},
  {L"VeltCircle",            L"Area",                  PropertyKind::shapeArea},
  {L"VeltEllipse",           L"Area",                  PropertyKind::shapeArea},
  {L"VeltPolyline",          L"Area",                  PropertyKind::shapeArea},
  {L"VeltLWPolyline",        L"Area",                  PropertyKind::shapeArea},
  {L"VeltSpline",            L"Area",                  PropertyKind::shapeArea},
  {L"VeltRegion",            L"Area",                  PropertyKind::shapeArea},
  {L"VeltPViewport",         L"PlotStyleTable",        PropertyKind::viewportPlotStyleTable},
  {L"VeltPolygonMesh",       L"FitSmooth",             PropertyKind::meshFit},
  {L"VeltRasterImage",       L"Height",                PropertyKind::imageHeight},
  {L"VeltRasterImage",       L"Width",                 PropertyKind::imageWidth},
  {L"VeltLine",              L"Handle",                PropertyKind::text},
  {L"VeltText",              L"Justify",               PropertyKind::textJustification},
  {L"VeltAttribute",         L"Justify",               PropertyKind::textJustification},
  {L"VeltText",              L"Style",                 PropertyKind::textStyle},
  {L"VeltAttribute",         L"Style",                 PropertyKind::textStyle},
  {L"VeltSpline",            L"Weight",                PropertyKind::splineWeight},
  {L"VeltLine",              L"LinetypeScale",         PropertyKind::entityLinetypeScale},
  {L"VeltDimRotated",        L"DimensionLineColor",    PropertyKind::color},
  {L"VeltAttribute",         L"ReferenceLayer",        PropertyKind::layer},
  {L"VeltCircle",            L"Radius",                PropertyKind::distance},
  {L"VeltDimAngular",        L"Measurement",           PropertyKind::angle},
  {L"VeltBlockReference",    L"XScaleFactor",          PropertyKind::noUnits},
  {L"VeltDimRotated",        L"DimensionLineWeight",   PropertyKind::lineweight},
  {L"VeltAttribute",         L"ReferencePlotStyle",    PropertyKind::plotStyle},
  {L"VeltDimRotated",        L"DimensionLinetype",     PropertyKind::linetype},
  {L"VeltRegion",            L"ModelData",             PropertyKind::noEditor},
  {L"VeltPViewport",         L"SheetPlotStyleTable",   PropertyKind::plotStyleTable},
  {L"Velt3DFace",            L"Area",                  PropertyKind::area},
  // None of the kinds above says anything about it.
  {L"VeltLine",              L"StartPoint",            PropertyKind::none},
};
// clang-format on

TEST_F(Gallery, LeadsToEveryEditor) {
  for (const Editor& it : editors)
    EXPECT_TRUE(shows(it.kind, it.property, it.customType))
        << narrow(it.kind) << " " << narrow(it.property) << " " << it.customType;
}

// A type that no editor is known for does not reach a palette: the kind of the property takes its place. So it is looked
// for where the rows of a class are kept.
TEST_F(Gallery, LeadsToATypeNameThatNoEditorIsKnownFor) {
  ASSERT_FALSE(rowsByClass().empty());
  std::set<std::int32_t> kinds;
  for (const auto& [key, rows] : *getTqPROPINFOCache()) {
    for (const PROPINFO& row : rows) {
      if (row.name == L"Justification") kinds.insert(row.customType);
    }
  }
  EXPECT_TRUE(kinds.contains(PropertyKind::unknownType));
  EXPECT_FALSE(shows(L"VeltMLine", L"Justification", PropertyKind::unknownType));
}

TEST_F(Gallery, ShowsEveryRowOfEveryClass) {
  for (const AutomationClass* kind : automation::automationClasses()) {
    if (kind->general == nullptr || std::wstring_view(kind->name) == L"VeltObject") continue;
    ASSERT_TRUE(rowsByClass().contains(kind->name)) << narrow(kind->name);
    std::set<std::wstring> shown;
    for (const Shown& row : rowsByClass().at(kind->name))
      shown.insert(row.name);
    const ClassIndex index(*kind);
    for (const PropertyRow* row : index.rows()) {
      // A list that is empty has no elements.
      EXPECT_TRUE(shown.contains(row->name) || row->access.elements != nullptr)
          << narrow(kind->name) << " " << narrow(row->name);
    }
  }
}

// A class's rows whose place the layer itself fixes, in the order of their own weights within each category.
TEST_F(Gallery, RowsWithAFixedPlaceAreOrderedAsTheirTablesAre) {
  for (const AutomationClass* kind : automation::automationClasses()) {
    const bool isFixed = std::wstring_view(kind->name).starts_with(L"VeltDim")
                         || kind->clsid == velt::CLSID_VeltLeader || kind->clsid == velt::CLSID_VeltTolerance;
    if (!isFixed) continue;
    const ClassIndex index(*kind);
    std::map<PROPCAT, std::map<std::int32_t, std::int32_t>> places;
    std::size_t fixed = 0;
    for (const PropertyRow* row : index.rows()) {
      PROPINFO info;
      info.dispId = row->dispId;
      SetPropertyWeight(kind->clsid, info);
      if (info.weight == 0) continue;
      ++fixed;
      places[row->category.number][row->weight] = info.weight;
    }
    EXPECT_GE(fixed, 9U) << narrow(kind->name);
    for (const auto& [category, byOwnWeight] : places) {
      std::int32_t last = 0;
      for (const auto& [own, place] : byOwnWeight) {
        EXPECT_LT(last, place) << narrow(kind->name) << " " << category;
        last = place;
      }
    }
  }
}

TEST_F(Gallery, EveryFixedPlaceIsTakenBySomeRow) {
  const auto places = [](const wchar_t* className) {
    std::set<std::int32_t> taken;
    for (const AutomationClass* kind : automation::automationClasses()) {
      if (!std::wstring_view(kind->name).starts_with(className)) continue;
      for (const Shown& row : rowsByClass().at(kind->name)) {
        PROPINFO info;
        info.dispId = row.dispId;
        SetPropertyWeight(kind->clsid, info);
        if (info.weight != 0) {
          EXPECT_EQ(info.weight, row.weight) << narrow(row.name);
          taken.insert(info.weight);
        }
      }
    }
    return taken.size();
  };
  EXPECT_EQ(79U, places(L"VeltDim"));
  EXPECT_EQ(10U, places(L"VeltLeader"));
  EXPECT_EQ(9U, places(L"VeltTolerance"));
  EXPECT_EQ(1U, places(L"VeltExternalReference"));
}

// --- the list in the documentation ---

std::string typeOf(const PropertyRow& row) {
  if (row.type.user != nullptr) return narrow(row.type.user->name);
  switch (row.type.declared) {
    case VT_R8:
      return "real";
    case VT_I4:
      return "integer";
    case VT_BSTR:
      return "text";
    case VT_BOOL:
      return "flag";
    case VT_DISPATCH:
      return "object";
    default:
      return row.access.elements != nullptr && row.access.elements->grouping != 0 ? "points" : "point";
  }
}

std::string listing(const std::map<std::wstring, std::vector<Shown>>& rowsByClass) {
  std::string text =
      "# Automation classes\n\nMade from the tables of the classes and from what a query of the gallery "
      "drawing answers; "
      "a test keeps it\ncurrent. The kind is the code by which a palette picks an editor; elements of points "
      "have none. "
      "The weight is the\nplace among the rows of a category. Where `some` are editable, the help string "
      "tells which "
      "entities are not.\n";
  for (const AutomationClass* kind : automation::automationClasses()) {
    if (!rowsByClass.contains(kind->name)) continue;
    const std::vector<Shown>& rows = rowsByClass.at(kind->name);
    const ClassIndex index(*kind);
    text += "\n## " + narrow(kind->label) + "\n\n" + narrow(kind->help) + " `" + narrow(kind->name) + "`"
            + (kind->dxfName.empty() ? "" : ", from `" + std::string(kind->dxfName) + "`")
            + ".\n\n| property | label | type | category | editable | kind | weight |\n|---|---|---|---|---|---|---|\n";
    for (const PropertyRow* row : index.rows()) {
      const auto shown =
          std::find_if(rows.begin(), rows.end(), [&](const Shown& it) { return it.dispId == row->dispId; });
      const bool hasKind = shown != rows.end() && row->access.elements == nullptr;
      text += "| " + narrow(row->name) + " | " + narrow(row->label) + " | " + typeOf(*row) + " | "
              + narrow(automation::categoryName(row->category.number)) + " | "
              + (!row->isWritable()                     ? "no"
                 : row->writability.obstacle == nullptr ? "yes"
                                                        : "some")
              + " | " + (hasKind ? std::to_string(shown->customType) : "") + " | "
              + std::to_string(shown != rows.end() ? shown->weight : row->weight) + " |\n";
    }
  }
  return text;
}

TEST_F(Gallery, TheListInTheDocumentationIsCurrent) {
  const GoldenPlaces places = goldenPlaces();
  EXPECT_TRUE(matchesGolden("docs/classes.md", listing(rowsByClass()),
                            {places.accepted.parent_path(), places.produced}));
}

// --- whole drawings ---

TEST(EntitiesOfWholeDrawings, HaveTheClassOfTheirTypeOrAreOfATypeThatHasNone) {
  std::set<std::string_view> known;
  for (const AutomationClass* kind : automation::automationClasses()) {
    if (!kind->dxfName.empty()) known.insert(kind->dxfName);
  }
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto drawing = Drawing::parse(whole.bytes, whole.name);
    auto byClass = entitiesByClass(*drawing);
    for (const VkDbObjectId id : byClass[nullptr]) {
      const dxf::RecordView view = drawing->view(database::resolve(id)->record);
      EXPECT_FALSE(known.contains(view.type())) << view.type() << " " << view.handle();
    }
  });
}

// What a dimension stores was measured by whoever drew it, and may be out of date where that was somebody else.
TEST(DimensionsOfWholeDrawings, MeasureWhatTheyStore) {
  std::size_t checked = 0;
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto drawing = Drawing::parse(whole.bytes, whole.name);
    for (const auto& [kind, ids] : entitiesByClass(*drawing)) {
      if (kind == nullptr || !std::wstring_view(kind->name).starts_with(L"VeltDim")) continue;
      const ClassIndex index(*kind);
      const PropertyRow* const row = index.find(std::wstring_view(L"Measurement"));
      for (const VkDbObjectId id : ids) {
        const automation::Subject subject(*database::resolve(id), id, *kind);
        const double measured = std::get<double>(row->access.get(subject, *row));
        EXPECT_TRUE(std::isfinite(measured)) << drawing->view(subject.record()).handle();
        if (!whole.isOwn || !subject.lens().has(42, "*")) continue;
        const double stored = subject.lens().real(42, "*", 0);
        EXPECT_NEAR(stored, measured, 1e-9 * (1 + std::abs(stored)))
            << drawing->view(subject.record()).handle() << " " << narrow(kind->name);
        ++checked;
      }
    }
  });
  EXPECT_GT(checked, 0U);
}

}  // namespace
}  // namespace velt::tests
