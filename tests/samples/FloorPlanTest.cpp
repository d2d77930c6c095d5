#include "samples/FloorPlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/Document.h"
#include "dxf/Numbers.h"
#include "embedded/database/Drawing.h"
#include "embedded/database/EnhancedBlocks.h"
#include "tests/dxf/Audit.h"

namespace velt::samples {

using namespace velt::dxf;
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

class SampleDrawing : public ::testing::Test {
 protected:
  // Indexes of the records of that type in model space; of every type when it is empty.
  [[nodiscard]] std::vector<std::uint32_t> entities(std::string_view type = {}) const {
    std::vector<std::uint32_t> found;
    for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
      const std::string_view here = document.type(record);
      if (document.records()[record].section != Section::Entities || here == "SECTION" || here == "ENDSEC")
        continue;
      if (type.empty() || here == type) found.push_back(record);
    }
    return found;
  }

  // True when any entity has the property.
  [[nodiscard]] bool anyHas(int code, std::string_view subclass) const {
    const auto all = entities();
    return std::any_of(all.begin(), all.end(), [&](std::uint32_t record) {
      return document.view(record).find(code, subclass).has_value();
    });
  }

  [[nodiscard]] std::map<std::string, RecordView> layers() const {
    std::map<std::string, RecordView> found;
    for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
      if (document.type(record) != "LAYER") continue;
      const RecordView view = document.view(record);
      found.emplace(view.text(2, "AcDbLayerTableRecord").value(), view);
    }
    return found;
  }

  const Document document = Document::parse(sampleFloorPlan(), "sample.dxf");
};

TEST_F(SampleDrawing, IsFoundSoundByAnotherReader) {
  const auto findings = dxf::testing::audited(sampleFloorPlan());
  if (!findings) GTEST_SKIP() << "python3-ezdxf is not installed";
  EXPECT_THAT(*findings, AllOf(Not(HasSubstr("finding:")), Not(HasSubstr("Traceback")), HasSubstr("HATCH=")));
}

TEST_F(SampleDrawing, IsTheSameAtEveryCall) {
  EXPECT_EQ(sampleFloorPlan(), document.bytes());
}

TEST_F(SampleDrawing, HoldsEveryClassOfEntityAndOthers) {
  std::set<std::string_view> types;
  for (const std::uint32_t record : entities())
    types.insert(document.type(record));
  for (const char* type : {"LINE",   "POINT",  "CIRCLE", "ARC",    "ELLIPSE",   "LWPOLYLINE", "TEXT",
                           "MTEXT",  "INSERT", "ATTRIB", "HATCH",  "POLYLINE",  "VERTEX",     "SEQEND",
                           "SPLINE", "SOLID",  "LEADER", "3DFACE", "DIMENSION", "XLINE"}) {
    EXPECT_THAT(types, Contains(type));
  }
}

TEST_F(SampleDrawing, HoldsHatchesOfAllKinds) {
  std::map<std::string, int> kinds;
  for (const std::uint32_t record : entities("HATCH")) {
    const RecordView view = document.view(record);
    const bool isGradient = view.integer(450, "AcDbHatch") == 1;
    const bool isSolid = view.integer(70, "AcDbHatch") == 1;
    ++kinds[isGradient ? "gradient" : isSolid ? "solid" : "pattern"];
  }
  EXPECT_GE(kinds["gradient"], 1);
  EXPECT_GE(kinds["solid"], 1);
  EXPECT_GE(kinds["pattern"], 2);
}

TEST_F(SampleDrawing, HasOneLockedOneHiddenAndOneFrozenLayer) {
  std::vector<std::string> locked;
  std::vector<std::string> off;
  std::vector<std::string> frozen;
  for (const auto& [name, view] : layers()) {
    const auto flags = view.integer(70, "AcDbLayerTableRecord").value();
    if ((flags & 4) != 0) locked.push_back(name);
    if ((flags & 1) != 0) frozen.push_back(name);
    if (view.integer(62, "AcDbLayerTableRecord").value() < 0) off.push_back(name);
  }
  EXPECT_EQ(locked, std::vector<std::string>{"Axes"});
  EXPECT_EQ(off, std::vector<std::string>{"Electrical"});
  EXPECT_EQ(frozen, std::vector<std::string>{"Construction"});
  for (const char* name : {"Axes", "Electrical", "Construction"}) {
    const auto all = entities();
    EXPECT_TRUE(std::any_of(
        all.begin(), all.end(),
        [&](std::uint32_t record) { return document.view(record).text(8, "AcDbEntity") == name; }))
        << name << " is empty";
  }
}

TEST_F(SampleDrawing, EveryLayerLineTypeStyleAndBlockThatIsUsedIsThere) {
  std::map<std::string_view, std::set<std::string_view>> names;
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    const RecordView view = document.view(record);
    if (const auto name = view.text(2, anySubclass)) names[view.type()].insert(*name);
  }
  const auto expectNamed = [&](std::string_view table, std::optional<std::string_view> name) {
    if (name) {
      EXPECT_THAT(names[table], Contains(*name));
    }
  };
  for (const std::uint32_t record : entities()) {
    const RecordView view = document.view(record);
    expectNamed("LAYER", view.text(8, "AcDbEntity").value());
    expectNamed("LTYPE", view.text(6, "AcDbEntity"));
    expectNamed("STYLE", view.text(7, "AcDbText"));
    expectNamed("STYLE", view.text(7, "AcDbMText"));
    expectNamed("BLOCK", view.text(2, "AcDbBlockReference"));
  }
}

TEST_F(SampleDrawing, HasPropertiesByLayerAndOfTheEntitysOwn) {
  EXPECT_TRUE(anyHas(62, "AcDbEntity"));
  EXPECT_TRUE(anyHas(420, "AcDbEntity"));
  EXPECT_TRUE(anyHas(370, "AcDbEntity"));
  EXPECT_TRUE(anyHas(6, "AcDbEntity"));
  EXPECT_TRUE(anyHas(60, "AcDbEntity"));
  const auto all = entities();
  const auto byLayer = std::count_if(all.begin(), all.end(), [&](std::uint32_t record) {
    const RecordView view = document.view(record);
    return !view.find(62, "AcDbEntity") && !view.find(420, "AcDbEntity");
  });
  EXPECT_GT(byLayer, 50);
}

TEST_F(SampleDrawing, HasPolylinesWithBulgesWidthsAndElevation) {
  EXPECT_TRUE(anyHas(42, "AcDbPolyline"));
  EXPECT_TRUE(anyHas(40, "AcDbPolyline"));
  EXPECT_TRUE(anyHas(38, "AcDbPolyline"));
}

TEST_F(SampleDrawing, HasDoorsWithTheirNumbers) {
  std::vector<std::string_view> numbers;
  for (const std::uint32_t record : entities("ATTRIB")) {
    EXPECT_EQ(document.view(record).text(2, "AcDbAttribute"), "NUMBER");
    numbers.push_back(document.view(record).text(1, "AcDbText").value());
  }
  EXPECT_THAT(numbers, ::testing::ElementsAre("D1", "D2", "D3", "D4", "D5", "D6"));
}

TEST_F(SampleDrawing, ItsDoorsAreShapesOfOneDynamicBlock) {
  const auto drawing = database::Drawing::parse(sampleFloorPlan(), "sample.dxf");
  std::map<std::wstring, int> shapes;
  for (const VkDbObjectId id : drawing->entities()) {
    const auto object = database::resolve(id);
    if (drawing->members(object->record).count == 0 || drawing->view(object->record).type() != "INSERT")
      continue;
    ++shapes[database::referredBlock(*drawing, object->record)->name];
    const database::TableEntry* const original = database::originalBlock(*drawing, object->record);
    ASSERT_NE(original, nullptr);
    EXPECT_EQ(original->name, L"DOOR");
  }
  EXPECT_EQ(shapes, (std::map<std::wstring, int>{{L"*U1", 2}, {L"*U2", 4}}));
}

TEST_F(SampleDrawing, HasExtendedDataAtAReferenceAndAtLines) {
  for (const char* const type : {"INSERT", "LINE"}) {
    const auto all = entities(type);
    EXPECT_TRUE(std::any_of(all.begin(), all.end(), [&](std::uint32_t record) {
      return document.view(record).extendedData("VELT_INVENTORY").has_value();
    })) << type;
  }
}

TEST_F(SampleDrawing, HasHyperlinks) {
  const auto all = entities();
  EXPECT_EQ(std::count_if(all.begin(), all.end(),
                          [&](std::uint32_t record) {
                            return document.view(record).extendedData("PE_URL").has_value();
                          }),
            2);
}

TEST_F(SampleDrawing, HasALongTextInChunks) {
  EXPECT_TRUE(anyHas(3, "AcDbMText"));
}

TEST_F(SampleDrawing, TellsTheAreasThatItsRoomsHave) {
  // given the rooms between the inner faces of their walls, in metres
  const std::map<std::wstring, double> rooms{{L"31.5 m²", 6.70 * 4.70}, {L"17.9 m²", 4.58 * 3.90},
                                             {L"10.8 m²", 4.58 * 2.36}, {L"8.7 m²", 4.58 * 1.90},
                                             {L"14.0 m²", 3.90 * 3.58}, {L"9.6 m²", 2.68 * 3.58}};
  // then
  const auto all = entities("MTEXT");
  for (const auto& room : rooms) {
    const std::wstring wanted = L";" + room.first;
    EXPECT_TRUE(std::any_of(all.begin(), all.end(), [&](std::uint32_t record) {
      const std::string_view wording = document.view(record).text(1, "AcDbMText").value();
      return document.decode(wording).find(wanted) != std::wstring::npos;
    }));
    EXPECT_NEAR(std::stod(room.first), room.second, 0.05);
  }
}

TEST_F(SampleDrawing, LiesWithinItsExtents) {
  const auto corner = [&](std::string_view name, int code) {
    return parseReal(document.headerValue(name, code).value()).value();
  };
  for (const std::uint32_t record : entities()) {
    const RecordView view = document.view(record);
    // A hatch begins with its elevation, an endless line has no end.
    if (view.type() == "HATCH" || view.type() == "XLINE" || view.type() == "POLYLINE") continue;
    const auto at = view.point(10, anySubclass);
    if (!at) continue;
    EXPECT_GE((*at)[0], corner("$EXTMIN", 10)) << view.type();
    EXPECT_LE((*at)[0], corner("$EXTMAX", 10)) << view.type();
    EXPECT_GE((*at)[1], corner("$EXTMIN", 20)) << view.type();
    EXPECT_LE((*at)[1], corner("$EXTMAX", 20)) << view.type();
  }
}

}  // namespace
}  // namespace velt::samples
