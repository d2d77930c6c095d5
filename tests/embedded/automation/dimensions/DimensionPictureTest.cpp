#include "embedded/automation/dimensions/DimensionPicture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "embedded/automation/dimensions/PictureParts.h"
#include "embedded/automation/model/ClassIndex.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/database/RecordEditor.h"
#include "samples/Gallery.h"
#include "tests/embedded/automation/Edits.h"
#include "tests/support/WholeDrawings.h"

namespace velt::automation {
namespace {

using namespace test;

bool isEditable(const Bound& bound, const wchar_t* name) {
  BOOL editable = 77;
  EXPECT_EQ(S_OK, bound.as<IOPMPropertyExtension>()->Editable(bound.id(name), &editable));
  return editable == 1;
}

Subject subjectAt(VkDbObjectId id) {
  CLSID clsid{};
  VkDbEntity* entity = nullptr;
  EXPECT_EQ(Velt::eOk, vkdbOpenVkDbEntity(entity, id, VkDb::kForRead));
  EXPECT_EQ(Velt::eOk, entity->getClassID(&clsid));
  entity->close();
  return Subject(*database::resolve(id), id, ClassRegistry::ofHost().find(clsid)->index.kind());
}

// Whether a put of a fitting value would be taken.
bool canBePut(VkDbObjectId id, const wchar_t* name) {
  const Subject subject = subjectAt(id);
  const ClassIndex index(subject.kind());
  return refusalOf([&] { requireChangeable(subject, *index.find(std::wstring_view(name))); }) == S_OK;
}

// The gallery has dimensions that share a picture, one with a picture of its own, and some without.
class DimensionPictureTest : public ::testing::Test {
 protected:
  // The dimension of that picture.
  [[nodiscard]] VkDbObjectId showing(const std::wstring& picture, const char* type = "DIMENSION") const {
    for (const VkDbObjectId id : drawing->entities()) {
      const database::Lens lens(*drawing, database::resolve(id)->record);
      if (lens.type() == type && lens.name(2, "AcDbDimension") == picture) return id;
    }
    throw std::runtime_error("no such dimension");
  }
  // Pair by pair: the entities of a block.
  [[nodiscard]] std::vector<std::string> picture(const std::wstring& name) const {
    const database::TableEntry* const block = drawing->blocks().find(name);
    const dxf::PairRange range = drawing->document().membersOf(block->definition);
    std::vector<std::string> members;
    for (std::size_t i = 0; i < range.count; ++i)
      members.push_back(pairsOf(*drawing, static_cast<std::uint32_t>(range.first + i)));
    return members;
  }
  [[nodiscard]] std::int64_t colorOf(std::uint32_t record) const {
    return database::Lens(*drawing, record).integer(62, "AcDbEntity", 256);
  }

  std::unique_ptr<Drawing> drawing = Drawing::parse(samples::galleryDrawing(), "gallery.dxf");
};

TEST_F(DimensionPictureTest, WithoutAPictureTheVariablesAreFree) {
  const Bound bare(showing(L"*D3"));
  for (const wchar_t* name : {L"DimStyle", L"TextColor", L"TextHeight", L"DimensionLineColor",
                              L"AltUnitsScale", L"ToleranceUpperLimit", L"TextOverride", L"TextRotation"})
    EXPECT_TRUE(isEditable(bare, name)) << std::filesystem::path(name);
  EXPECT_FALSE(isEditable(bare, L"ExtLine1Point"));
  EXPECT_EQ(S_OK, bare.put(L"TextOverride", L"<> or so").result);
  EXPECT_EQ(L"<> or so", bare.text(L"TextOverride"));
}

TEST_F(DimensionPictureTest, WithAPictureWhatItShowsStays) {
  const Bound drawn(showing(L"*D2"));
  const std::string before = drawing->document().bytes();
  for (const wchar_t* name : {L"TextHeight", L"ScaleFactor", L"ExtensionLineOffset"}) {
    EXPECT_FALSE(isEditable(drawn, name));
    const Answer answer = drawn.put(name, number(7));
    EXPECT_EQ(E_FAIL, answer.scode);
    EXPECT_EQ(L"The dimension is drawn by a block, which is not drawn anew here.", answer.description);
  }
  EXPECT_EQ(before, drawing->document().bytes());
}

TEST_F(DimensionPictureTest, AFeatureThatIsSwitchedOffIsNotShown) {
  const Bound drawn(showing(L"*D2"));
  for (const wchar_t* name :
       {L"AltUnitsScale", L"AltTextPrefix", L"ToleranceUpperLimit", L"TolerancePrecision",
        L"ToleranceHeightScale", L"ExtLineFixedLen", L"FractionFormat"})
    EXPECT_TRUE(canBePut(showing(L"*D2"), name)) << std::filesystem::path(name);
  EXPECT_EQ(S_OK, drawn.put(L"AltUnitsScale", number(10)).result);
  EXPECT_EQ(10, drawn.real(L"AltUnitsScale"));
  for (const wchar_t* name : {L"AltUnits", L"ToleranceDisplay", L"ExtLineFixedLenSuppress", L"UnitsFormat"})
    EXPECT_FALSE(isEditable(drawn, name)) << std::filesystem::path(name) << " switches one on";
}

// A dimension with a picture whose style has one variable more.
VkDbObjectId drawnWith(std::unique_ptr<Drawing>& drawing, int code, const char* value, const char* own = "") {
  // clang-format off
  drawing = Sample()
      .tableRecord("APPID", {{2, "ACAD"}})
      .tableRecord("DIMSTYLE", {{2, "Mine"}, {code, value}})
      .block({{2, "*D1"}}, database::test::record("LINE", {{8, "0"}}))
      .entity("DIMENSION", {{100, "AcDbDimension"}, {1, own}, {2, "*D1"}, {3, "Mine"}, {70, "32"}})
      .open();
  // clang-format on
  return drawing->entities().back();
}

TEST_F(DimensionPictureTest, AFeatureThatIsOnIsShown) {
  EXPECT_TRUE(canBePut(drawnWith(drawing, 170, "0"), L"AltUnitsPrecision"));
  EXPECT_FALSE(canBePut(drawnWith(drawing, 170, "1"), L"AltUnitsPrecision"));
  EXPECT_FALSE(canBePut(drawnWith(drawing, 170, "0", "<> []"), L"AltUnitsPrecision"))
      << "the text asks for them";
  EXPECT_FALSE(canBePut(drawnWith(drawing, 71, "1"), L"ToleranceUpperLimit"));
  EXPECT_FALSE(canBePut(drawnWith(drawing, 72, "1"), L"TolerancePrecision"));
  EXPECT_TRUE(canBePut(drawnWith(drawing, 147, "-1"), L"ToleranceUpperLimit")) << "a frame has no numbers";
  EXPECT_FALSE(canBePut(drawnWith(drawing, 290, "1"), L"ExtLineFixedLen"));
  EXPECT_FALSE(canBePut(drawnWith(drawing, 277, "4"), L"FractionFormat"));
  EXPECT_FALSE(canBePut(drawnWith(drawing, 277, "5"), L"ToleranceHeightScale"));
  EXPECT_FALSE(canBePut(drawnWith(drawing, 72, "1"), L"ToleranceHeightScale"));
}

// The rows of dimensions that differ in it stay in the list of both.
TEST_F(DimensionPictureTest, WhetherAFeatureIsOnDoesNotShowBeforeThePut) {
  EXPECT_TRUE(isEditable(Bound(drawnWith(drawing, 170, "1")), L"AltUnitsPrecision"));
  EXPECT_TRUE(isEditable(Bound(drawnWith(drawing, 170, "0")), L"AltUnitsPrecision"));
}

TEST_F(DimensionPictureTest, TheTextOfThePictureTakesItsColor) {
  const VkDbObjectId id = showing(L"*D2");
  const Bound drawn(id);
  ASSERT_TRUE(canBePut(id, L"TextColor"));
  const std::vector<std::string> before = picture(L"*D2");
  EXPECT_EQ(S_OK, drawn.put(L"TextColor", integer(5)).result);
  EXPECT_EQ(5, drawn.integer(L"TextColor"));
  const std::vector<std::uint32_t> texts = textsOfPicture(subjectAt(id)).records;
  ASSERT_EQ(1U, texts.size());
  EXPECT_EQ(5, colorOf(texts[0]));
  std::size_t changed = 0;
  const std::vector<std::string> after = picture(L"*D2");
  for (std::size_t i = 0; i < before.size(); ++i)
    changed += before[i] == after[i] ? 0U : 1U;
  EXPECT_EQ(1U, changed) << "nothing else of the picture";
  EXPECT_EQ(S_OK, drawn.put(L"TextColor", integer(256)).result);
  EXPECT_EQ(256, colorOf(texts[0]));
  EXPECT_EQ(S_OK, drawn.put(L"TextColor", integer(0)).result);
  EXPECT_EQ(0, colorOf(texts[0]));
  EXPECT_EQ(E_INVALIDARG, drawn.put(L"TextColor", integer(257)).scode);
}

TEST_F(DimensionPictureTest, TheLinesOfThePictureTakeTheirColorsAndWeights) {
  const VkDbObjectId id = showing(L"*D2");
  const Bound drawn(id);
  ASSERT_TRUE(canBePut(id, L"DimensionLineColor"));
  EXPECT_EQ(S_OK, drawn.put(L"DimensionLineColor", integer(6)).result);
  EXPECT_EQ(S_OK, drawn.put(L"ExtensionLineColor", integer(256)).result);
  EXPECT_EQ(S_OK, drawn.put(L"DimensionLineWeight", integer(50)).result);
  EXPECT_EQ(S_OK, drawn.put(L"ExtensionLineWeight", integer(-1)).result);
  const PictureLines lines = linesOfPicture(subjectAt(id));
  ASSERT_EQ(nullptr, lines.whyNot);
  ASSERT_EQ(1U, lines.dimensionLines.size());
  ASSERT_EQ(1U, lines.filledArrowheads.size());
  ASSERT_EQ(1U, lines.arrowheadBlocks.size());
  ASSERT_EQ(2U, lines.extensionLines.size());
  for (const std::uint32_t record : {lines.dimensionLines[0], lines.arrowheadBlocks[0]}) {
    EXPECT_EQ(6, colorOf(record));
    EXPECT_EQ(50, database::Entity(*drawing, record).lineweight());
  }
  EXPECT_EQ(6, colorOf(lines.filledArrowheads[0]));
  for (const std::uint32_t record : lines.extensionLines) {
    EXPECT_EQ(256, colorOf(record));
    EXPECT_EQ(-1, database::Entity(*drawing, record).lineweight());
  }
  EXPECT_TRUE(canBePut(id, L"DimensionLineColor")) << "it looks as the style says, still";
}

TEST_F(DimensionPictureTest, APictureThatLooksOtherwiseIsLeftAlone) {
  const VkDbObjectId id = showing(L"*D2");
  const std::uint32_t line = linesOfPicture(subjectAt(id)).dimensionLines[0];
  database::RecordEditor(*drawing, line).setInteger(62, "AcDbEntity", 4);
  EXPECT_FALSE(canBePut(id, L"DimensionLineColor"));
  EXPECT_TRUE(canBePut(id, L"TextColor"));
}

TEST_F(DimensionPictureTest, ASharedPictureIsLeftAlone) {
  const Bound drawn(showing(L"*D1"));
  EXPECT_FALSE(canBePut(showing(L"*D1"), L"TextColor"));
  EXPECT_FALSE(canBePut(showing(L"*D1"), L"ExtensionLineColor"));
  EXPECT_EQ(E_FAIL, drawn.put(L"TextColor", integer(5)).scode);
}

TEST_F(DimensionPictureTest, WhatIsInEffectIsNotWrittenAgain) {
  const Bound drawn(showing(L"*D2"));
  const std::string before = drawing->document().bytes();
  EXPECT_EQ(S_OK, drawn.put(L"TextColor", integer(3)).result);
  EXPECT_EQ(S_OK, drawn.put(L"DimensionLineWeight", integer(35)).result);
  EXPECT_EQ(before, drawing->document().bytes());
}

// --- whole drawings ---

// What a palette would try: the answer about editing and the put agree, and the picture says the same as the style.
TEST(DimensionPictures, OfWholeDrawingsFollowOrAreLeftAlone) {
  std::map<std::string, int> followed;
  tests::forEachDrawing([&](const tests::WholeDrawing& whole) {
    const auto drawing = Drawing::parse(whole.bytes, whole.name);
    for (const VkDbObjectId id : drawing->entities()) {
      const std::uint32_t record = database::resolve(id)->record;
      if (!drawing->view(record).type().ends_with("DIMENSION")) continue;
      const Subject subject = subjectAt(id);
      const Bound bound(id);
      ++followed["dimensions"];
      for (const wchar_t* name : {L"TextColor", L"DimensionLineColor", L"ExtensionLineColor"}) {
        const PropertyRow* const row = ClassIndex(subject.kind()).find(std::wstring_view(name));
        if (row == nullptr) continue;
        const LONG other = bound.integer(name) == 6 ? 5 : 6;
        const bool editable = canBePut(id, name);
        const std::uint64_t before = drawing->revision();
        const Answer answer = bound.put(name, integer(other));
        if (!editable) {
          EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
          EXPECT_EQ(before, drawing->revision());
          continue;
        }
        // Locked and annotative ones are told of when they are written.
        if (answer.result != S_OK) continue;
        ++followed[std::filesystem::path(name).string()];
        EXPECT_EQ(other, bound.integer(name));
        if (!hasPicture(subject) || std::wstring_view(name) != L"TextColor") continue;
        for (const std::uint32_t text : textsOfPicture(subject).records)
          EXPECT_EQ(other, database::Lens(*drawing, text).integer(62, "AcDbEntity", 256));
      }
    }
  });
  for (const auto& [name, count] : followed)
    RecordProperty(name, count);
  EXPECT_GT(followed["TextColor"], 0);
  EXPECT_GT(followed["DimensionLineColor"], 0);
}

}  // namespace
}  // namespace velt::automation
