#include "embedded/automation/entities/General.h"

#include <gtest/gtest.h>

#include "embedded/automation/objects/ColorObject.h"
#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

class GeneralTest : public ::testing::Test {
 protected:
  Bound entity(Pairs pairs, const std::string& type = "SPACESHIP") {
    drawing = Sample(sample).entity(type, pairs).open();
    return Bound(*drawing, 0);
  }
  static LONG colorOfEntity(const Bound& made) {
    const Answer answer = made.get(L"Color");
    EXPECT_EQ(VT_DISPATCH, answer.value.get().vt);
    LONG value = 0;
    EXPECT_EQ(S_OK, ask<IVeltVkCmColor>(*answer.value.get().pdispVal)->get_EntityColor(&value));
    return value;
  }

  Sample sample;
  std::unique_ptr<Drawing> drawing;
};

TEST_F(GeneralTest, AnEntityThatSaysNothingHasTheDefaults) {
  const Bound made = entity({});
  EXPECT_EQ(static_cast<LONG>(0xC0000000), colorOfEntity(made));
  EXPECT_EQ(L"0", made.text(L"Layer"));
  EXPECT_EQ(L"ByLayer", made.text(L"Linetype"));
  EXPECT_EQ(1, made.real(L"LinetypeScale"));
  EXPECT_EQ(-1, made.integer(L"Lineweight"));
  EXPECT_EQ(L"ByColor", made.text(L"PlotStyleName"));
  EXPECT_EQ(L"ByLayer", made.text(L"EntityTransparency"));
  EXPECT_TRUE(made.flag(L"Visible"));
}

TEST_F(GeneralTest, AnEntityTellsWhatIsStored) {
  const Bound made = entity({{5, "2F"},
                             {100, "AcDbEntity"},
                             {8, "W\\U+00E4nde"},
                             {6, "DASHED"},
                             {62, "3"},
                             {370, "35"},
                             {48, "2.5"},
                             {60, "1"},
                             {440, "33554559"}});
  EXPECT_EQ(static_cast<LONG>(0xC3000003), colorOfEntity(made));
  EXPECT_EQ(L"W\u00E4nde", made.text(L"Layer"));
  EXPECT_EQ(L"DASHED", made.text(L"Linetype"));
  EXPECT_EQ(2.5, made.real(L"LinetypeScale"));
  EXPECT_EQ(35, made.integer(L"Lineweight"));
  EXPECT_EQ(L"2F", made.text(L"Handle"));
  EXPECT_FALSE(made.flag(L"Visible"));
  EXPECT_EQ(L"50", made.text(L"EntityTransparency"));
}

TEST_F(GeneralTest, ColorsKeepTheNamesOfTheirBook) {
  const Bound made = entity({{62, "5"}, {420, "1056816"}, {430, "SEAS$Ocean"}});
  EXPECT_EQ(static_cast<LONG>(0xC2102030), colorOfEntity(made));
  const Answer answer = made.get(L"Color");
  const Bound color(InterfaceHolder<IDispatch>::sharing(answer.value.get().pdispVal));
  EXPECT_EQ(L"Ocean", color.text(L"ColorName"));
  EXPECT_EQ(L"SEAS", color.text(L"BookName"));
}

TEST_F(GeneralTest, AColorIsTheOneAtTheTimeOfTheGet) {
  const Bound made = entity({{62, "5"}});
  const Answer before = made.get(L"Color");
  const std::uint32_t record = database::resolve(drawing->entities()[0])->record;
  drawing->edit(record, [&](dxf::Document& document) { document.set(record, 62, dxf::anySubclass, "6"); });
  LONG value = 0;
  EXPECT_EQ(S_OK, ask<IVeltVkCmColor>(*before.value.get().pdispVal)->get_EntityColor(&value));
  EXPECT_EQ(static_cast<LONG>(0xC3000005), value);
  EXPECT_EQ(static_cast<LONG>(0xC3000006), colorOfEntity(made));
}

TEST_F(GeneralTest, TransparencyIsByBlockOrInPercent) {
  EXPECT_EQ(L"ByBlock", entity({{440, "16777216"}}).text(L"EntityTransparency"));
  EXPECT_EQ(L"0", entity({{440, "33554687"}}).text(L"EntityTransparency"));
  EXPECT_EQ(L"90", entity({{440, "33554457"}}).text(L"EntityTransparency"));
}

TEST_F(GeneralTest, ALineweightOfMoreThan32BitsIsNotCutDownToAnother) {
  EXPECT_EQ(DISP_E_OVERFLOW, entity({{370, "4294967331"}}).get(L"Lineweight").scode);
}

TEST_F(GeneralTest, AnEntityIsNamedAsPeopleCallIt) {
  EXPECT_EQ(L"Line", entity({}, "LINE").text(L"EntityName"));
  EXPECT_EQ(L"Polyline", entity({}, "LWPOLYLINE").text(L"EntityName"));
  EXPECT_EQ(L"SPACESHIP", entity({}).text(L"EntityName")) << "what has no class keeps the drawing's name";
}

TEST_F(GeneralTest, HyperlinksAreACollection) {
  const Bound made = entity({{1001, "PE_URL"}, {1000, "there"}});
  const Answer answer = made.get(L"Hyperlinks");
  ASSERT_EQ(VT_DISPATCH, answer.value.get().vt);
  InterfaceHolder<IVeltHyperlink> link;
  EXPECT_EQ(S_OK, ask<IVeltHyperlinks>(*answer.value.get().pdispVal)->Item(0, link.put()));
  StringHolder url;
  EXPECT_EQ(S_OK, link->get_URL(url.put()));
  EXPECT_EQ(L"there", url.view());
}

TEST_F(GeneralTest, ChoicesAreThoseOfTheDrawing) {
  sample.layer("0").layer("Walls").tableRecord("LTYPE", {{2, "DASHED"}});
  const Bound made = entity({});
  EXPECT_EQ(9U, made.choices(L"Color")->size());
  EXPECT_EQ((std::vector<std::wstring>{L"0", L"Walls"}), made.choices(L"Layer"));
  EXPECT_EQ(L"DASHED", made.choices(L"Linetype")->back());
  EXPECT_EQ(27U, made.choices(L"Lineweight")->size());
  const VariantHolder weight = made.choiceValue(L"Lineweight", 3);
  EXPECT_EQ(VT_I4, weight.get().vt);
  EXPECT_EQ(0, weight.get().lVal);
  EXPECT_EQ(std::nullopt, made.choices(L"Handle"));
}

// Drawings that name their plot styles hold them as objects of a dictionary.
class NamedPlotStyles : public GeneralTest {
 protected:
  Bound styled(Pairs pairs) {
    const std::string bytes =
        database::test::text({{0, "SECTION"}, {2, "HEADER"}, {9, "$PSTYLEMODE"}, {290, "0"}, {0, "ENDSEC"}})
        + Sample()
              .entity("LINE", pairs)
              .object("DICTIONARY", {{5, "E"}, {3, "Normal"}, {350, "F"}, {3, "Thick"}, {350, "10"}})
              .object("ACDBPLACEHOLDER", {{5, "F"}, {330, "E"}})
              .object("ACDBPLACEHOLDER", {{5, "10"}, {330, "E"}})
              .bytes();
    drawing = Drawing::parse(bytes, "sample.dxf");
    return Bound(*drawing, 0);
  }
};

TEST_F(NamedPlotStyles, AreFoundByTheirHandle) {
  EXPECT_EQ(L"Thick", styled({{380, "3"}, {390, "10"}}).text(L"PlotStyleName"));
  EXPECT_EQ(L"Thick", styled({{390, "10"}}).text(L"PlotStyleName"));
}

TEST_F(NamedPlotStyles, MayBeByLayerOrByBlock) {
  EXPECT_EQ(L"ByLayer", styled({}).text(L"PlotStyleName"));
  EXPECT_EQ(L"ByLayer", styled({{380, "0"}, {390, "10"}}).text(L"PlotStyleName"));
  EXPECT_EQ(L"ByBlock", styled({{380, "1"}}).text(L"PlotStyleName"));
  EXPECT_EQ(L"Normal", styled({{380, "2"}}).text(L"PlotStyleName"));
  EXPECT_EQ(L"ByLayer", styled({{380, "3"}, {390, "77"}}).text(L"PlotStyleName")) << "the style is lost";
}

TEST(ObjectClass, TellsHandleAndKindOfAnyObject) {
  const auto drawing = Sample().layer("Walls", {{5, "A1"}}).entity("LINE").open();
  void* made = nullptr;
  ASSERT_EQ(S_OK,
            TqAutoCreateInstance(CLSID_VeltObject, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &made));
  const Bound object(InterfaceHolder<IDispatch>::owning(static_cast<IDispatch*>(made)));
  VkDbObjectId id = drawing->layers().find(L"Walls")->id;
  ASSERT_EQ(S_OK, object.as<IVeltBaseObject>()->SetObjectId(id, VkDbObjectId::kNull, nullptr));
  EXPECT_EQ(L"A1", object.text(L"Handle"));
  EXPECT_EQ(L"LAYER", object.text(L"EntityName"));
  EXPECT_EQ(0, object.id(L"Color"));
}

// --- putting ---

class GeneralPutTest : public GeneralTest {
 protected:
  Bound modern(Pairs pairs) {
    sample.version("AC1027").layer("0").layer("W\\U+00E4nde").tableRecord("LTYPE", {{2, "DASHED"}});
    return entity(pairs, "LINE");
  }
};

TEST_F(GeneralPutTest, AColorIsPutInManyForms) {
  const Bound made = modern({{8, "0"}, {62, "5"}, {420, "255"}, {430, "A$B"}});
  EXPECT_EQ(S_OK, made.put(L"Color", integer(3)).result);
  EXPECT_EQ("8=0 62=3", pairsOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"Color", std::wstring(L"16,32,48")).result);
  EXPECT_EQ("8=0 420=1056816", pairsOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"Color", std::wstring(L"Red")).result);
  EXPECT_EQ("8=0 62=1", pairsOf(*drawing));
  VkCmColor color;
  color.setColor(0xC2102030);
  color.setNames(L"Ocean", L"SEAS");
  const OwnedDispatch object = ColorObject::make(color);
  EXPECT_EQ(S_OK, made.put(L"Color", test::object(object.get())).result);
  EXPECT_EQ("8=0 420=1056816 430=SEAS$Ocean", pairsOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"Color", std::wstring(L"ByLayer")).result);
  EXPECT_EQ("8=0", pairsOf(*drawing));
}

TEST_F(GeneralPutTest, AnOldFormatKnowsColorsByTheirIndexOnly) {
  sample.version("AC1015");
  const Bound made = entity({{8, "0"}, {62, "5"}});
  EXPECT_EQ(E_FAIL, made.put(L"Color", std::wstring(L"16,32,48")).scode);
  EXPECT_EQ("8=0 62=5", pairsOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"Color", integer(6)).result);
}

TEST_F(GeneralPutTest, LayersAndLineTypesMustBeThereAndKeepTheirSpelling) {
  const Bound made = modern({{8, "0"}});
  EXPECT_EQ(S_OK, made.put(L"Layer", std::wstring(L"W\u00C4NDE")).result);
  EXPECT_EQ(S_OK, made.put(L"Linetype", std::wstring(L"dashed")).result);
  EXPECT_EQ("8=W\\U+00E4nde 6=DASHED", pairsOf(*drawing));
  EXPECT_EQ(E_INVALIDARG, made.put(L"Layer", std::wstring(L"Lost")).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"Linetype", std::wstring(L"Lost")).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"Layer", std::wstring()).scode);
  EXPECT_EQ("8=W\\U+00E4nde 6=DASHED", pairsOf(*drawing));
}

TEST_F(GeneralPutTest, ALayerIsPutWhereItIsRead) {
  const Bound made = modern({{100, "AcDbEntity"}, {62, "1"}, {100, "AcDbLine"}, {8, "0"}});
  EXPECT_EQ(S_OK, made.put(L"Layer", std::wstring(L"W\u00E4nde")).result);
  EXPECT_EQ("100=AcDbEntity 62=1 100=AcDbLine 8=W\\U+00E4nde", pairsOf(*drawing));
}

TEST_F(GeneralPutTest, WhatIsByLayerIsNotWritten) {
  const Bound made = modern({{8, "0"}});
  EXPECT_EQ(S_OK, made.put(L"Lineweight", integer(-1)).result);
  EXPECT_EQ(S_OK, made.put(L"EntityTransparency", std::wstring(L"ByLayer")).result);
  EXPECT_EQ(S_OK, made.put(L"Visible", flag(true)).result);
  EXPECT_EQ("8=0", pairsOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"EntityTransparency", std::wstring(L"50")).result);
  EXPECT_EQ(S_OK, made.put(L"Lineweight", integer(35)).result);
  EXPECT_EQ(S_OK, made.put(L"Visible", flag(false)).result);
  EXPECT_EQ(S_OK, made.put(L"LinetypeScale", number(2.5)).result);
  EXPECT_EQ("8=0 370=35 48=2.5 60=1 440=33554559", pairsOf(*drawing));
}

TEST_F(GeneralPutTest, ATransparencyIsByLayerByBlockOrUpTo90Percent) {
  const Bound made = modern({{8, "0"}});
  for (int percent = 0; percent <= 90; ++percent) {
    EXPECT_EQ(S_OK, made.put(L"EntityTransparency", integer(percent)).result);
    EXPECT_EQ(std::to_wstring(percent), made.text(L"EntityTransparency"));
  }
  EXPECT_EQ(S_OK, made.put(L"EntityTransparency", std::wstring(L"BYBLOCK")).result);
  EXPECT_EQ(L"ByBlock", made.text(L"EntityTransparency"));
  for (const wchar_t* wrong : {L"91", L"-1", L"5.5", L"", L"100", L"half", L"9999999999",
                               L"99999999999999999999999999999999", L"5\x7FFFFFFF"})
    EXPECT_EQ(E_INVALIDARG, made.put(L"EntityTransparency", std::wstring(wrong)).scode) << wrong;
}

TEST_F(GeneralPutTest, TheVerticesOfAPolylineInPiecesFollow) {
  drawing = sample.version("AC1027")
                .layer("0")
                .layer("Walls")
                .entity("POLYLINE", {{8, "0"}, {66, "1"}})
                .entity("VERTEX", {{8, "0"}, {62, "5"}, {10, "1.0"}})
                .entity("VERTEX", {{8, "0"}, {10, "2.0"}})
                .entity("SEQEND", {{8, "0"}})
                .entity("LINE", {{8, "0"}})
                .open();
  const Bound made(*drawing, 0);
  const std::uint32_t head = recordOf(*drawing, 0);
  EXPECT_EQ(S_OK, made.put(L"Layer", std::wstring(L"Walls")).result);
  EXPECT_EQ(S_OK, made.put(L"Color", integer(3)).result);
  EXPECT_EQ("8=Walls 62=3 66=1", pairsOf(*drawing, head));
  EXPECT_EQ("8=Walls 62=3 10=1.0", pairsOf(*drawing, head + 1));
  EXPECT_EQ("8=Walls 62=3 10=2.0", pairsOf(*drawing, head + 2));
  EXPECT_EQ("8=Walls 62=3", pairsOf(*drawing, head + 3));
  EXPECT_EQ("8=0", pairsOf(*drawing, head + 4));
}

}  // namespace
}  // namespace velt::automation
