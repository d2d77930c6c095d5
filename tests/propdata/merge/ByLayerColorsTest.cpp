#include <gtest/gtest.h>

#include <vector>

#include "propdata/VeltPropData.h"
#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToyColor.h"
#include "tests/support/ToyDatabase.h"

namespace velt::toys {
namespace {

class ByLayerColors : public LayerTest {
 protected:
  ByLayerColors() {
    entityOnRed.layer = otherOnRed.layer = red.objectId();
    entityOnGreen.layer = green.objectId();
  }
  static PROPINFO row(long entity, DISPID dispId = 1281) {
    return Row(L"Color").dispId(dispId).ofEntity(entity);
  }
  PROPINFO row(const ToyColor& color, long entity) {
    return Row(L"Color").dispId(1281).ofEntity(entity).value(borrowed(color.dispatch()));
  }
  void expectNothingIsOpen() const {
    for (const auto& [id, object] : host.database)
      EXPECT_EQ(object->opened, 0) << object->name();
  }
  bool differ(PROPINFO a, PROPINFO b) {
    host.mark();
    const bool answer = IsDifferentByLayerColors(a, b);
    EXPECT_EQ(host.balance(), "balanced");
    expectNothingIsOpen();
    return answer;
  }
  bool differ(VARIANT value, TqVector<PROPINFO> a, TqVector<PROPINFO> b) {
    host.mark();
    const bool answer = IsDifferentByLayerColors(value, a, b);
    EXPECT_EQ(host.balance(), "balanced");
    expectNothingIsOpen();
    return answer;
  }

  ToyLayer red{host, "red", 11, ToyColor::indexed(1)};
  ToyLayer green{host, "green", 12, ToyColor::indexed(3)};
  ToyEntity entityOnRed{host, "entityOnRed", 21};
  ToyEntity otherOnRed{host, "otherOnRed", 22};
  ToyEntity entityOnGreen{host, "entityOnGreen", 23};
  ToyColor byLayer{host, "byLayer", ToyColor::byLayer};
  ToyColor byLayerToo{host, "byLayerToo", ToyColor::byLayer};
  ToyColor fixed{host, "fixed", ToyColor::indexed(5)};
};

// --- VariantToColorHelper --------------------------------------------------------------------------------------------

TEST_F(ByLayerColors, AColorObjectIsReadByValueAndNames) {
  fixed.colorName = L"Brick";
  fixed.bookName = L"Book of colors";
  VARIANT value = borrowed(fixed.dispatch());
  VkCmColor color;
  host.mark();

  EXPECT_EQ(VariantToColorHelper(&value, color), 0);

  EXPECT_EQ(color.color(), ToyColor::indexed(5));
  EXPECT_STREQ(color.colorName(), L"Brick");
  EXPECT_STREQ(color.bookName(), L"Book of colors");
  EXPECT_EQ(host.log.lines(), (Lines{"QueryInterface(IVeltVkCmColor) on fixed", "get_EntityColor() on fixed",
                                     "get_ColorName() on fixed", "get_BookName() on fixed",
                                     "Release(IVeltVkCmColor) on fixed"}));
  EXPECT_EQ(host.log.count("SysFreeString(Brick)"), 1);
  EXPECT_EQ(host.log.count("SysFreeString(Book of colors)"), 1);
  EXPECT_EQ(host.log.all().back(), "Release(IVeltVkCmColor) on fixed") << "the strings are freed first";
  EXPECT_EQ(host.balance(), "balanced");
  EXPECT_EQ(print(value), "VT_DISPATCH");
}

TEST_F(ByLayerColors, AColorGetsItsValueAndThenItsNamesWhichAreThenFreed) {
  fixed.colorName = L"Brick";
  fixed.bookName = L"Book";
  VARIANT value = borrowed(fixed.dispatch());
  VkCmColor color;
  host.logsColors = true;

  EXPECT_EQ(VariantToColorHelper(&value, color), 0);

  EXPECT_EQ(host.log.only({"get_", "set", "Release"}),
            (Lines{"get_EntityColor() on fixed", "get_ColorName() on fixed", "get_BookName() on fixed",
                   "setColor(0xC3000005)", "setNames(Brick, Book)", "Release(IVeltVkCmColor) on fixed"}));
}

TEST_F(ByLayerColors, AColorWithoutNamesHasEmptyOnes) {
  VARIANT value = borrowed(byLayer.dispatch());
  VkCmColor color;
  color.setNames(L"Old", L"Older");

  EXPECT_EQ(VariantToColorHelper(&value, color), 0);

  EXPECT_TRUE(color.isByLayer());
  EXPECT_STREQ(color.colorName(), L"");
  EXPECT_STREQ(color.bookName(), L"");
}

TEST_F(ByLayerColors, WhatIsNotAColorObjectFailsAndLeavesTheColorAlone) {
  ToyObject object(host, "object");
  VARIANT unknown = ofType(VT_UNKNOWN);
  unknown.punkVal = byLayer.unknown();
  VARIANT values[] = {i4(5), empty(), unknown, borrowed(static_cast<IDispatch*>(nullptr)),
                      borrowed(object.dispatch())};
  for (VARIANT& value : values) {
    SCOPED_TRACE(&value - values);
    VkCmColor color;
    color.setColor(77);
    EXPECT_EQ(VariantToColorHelper(&value, color), E_FAIL);
    EXPECT_EQ(color.color(), 77u);
  }
}

TEST_F(ByLayerColors, AFailedColorQueryGivesE_FAILWhateverItAnswered) {
  host.on("QueryInterface(IVeltVkCmColor)").fail(E_ACCESSDENIED);
  VARIANT value = borrowed(byLayer.dispatch());
  VkCmColor color;

  EXPECT_EQ(VariantToColorHelper(&value, color), E_FAIL);
}

TEST_F(ByLayerColors, AnObjectOfAnotherTypeThanDispatchIsNotAsked) {
  VARIANT value = ofType(VT_UNKNOWN);
  value.punkVal = byLayer.unknown();
  VkCmColor color;

  VariantToColorHelper(&value, color);

  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(ByLayerColors, Quirk_color_results_unexamined) {
  fixed.colorName = L"Brick";
  fixed.bookName = L"Book";
  for (const char* const call : {"get_EntityColor", "get_ColorName", "get_BookName"})
    host.on(call).workThenReturn(E_FAIL);
  VARIANT value = borrowed(fixed.dispatch());
  VkCmColor color;
  host.mark();

  EXPECT_EQ(VariantToColorHelper(&value, color), 0);

  EXPECT_EQ(color.color(), ToyColor::indexed(5));
  EXPECT_STREQ(color.colorName(), L"Brick");
  EXPECT_STREQ(color.bookName(), L"Book");
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(ByLayerColors, ColorMethodsThatFailWithoutAnAnswerLeakNothing) {
  fixed.colorName = L"Brick";
  fixed.bookName = L"Book";
  VARIANT value = borrowed(fixed.dispatch());
  for (int n = 1;; ++n) {
    VkCmColor color;
    host.mark();
    host.failCall(n);
    const HRESULT answer = VariantToColorHelper(&value, color);
    if (host.failedCall().empty()) break;
    SCOPED_TRACE(host.failedCall());
    EXPECT_EQ(host.balance(), "balanced");
    EXPECT_EQ(answer, n == 1 ? E_FAIL : 0);
    if (n == 1) continue;
    EXPECT_STREQ(color.colorName(), host.failedCall().starts_with("get_ColorName") ? L"" : L"Brick");
    EXPECT_STREQ(color.bookName(), host.failedCall().starts_with("get_BookName") ? L"" : L"Book");
  }
}

TEST_F(ByLayerColors, AColorObjectThatThrowsIsNoColor) {
  VARIANT value = borrowed(fixed.dispatch());
  for (int n = 1;; ++n) {
    VkCmColor color;
    host.mark();
    host.raiseCall(n, L"no connection");
    HRESULT answer = S_OK;
    EXPECT_NO_THROW(answer = VariantToColorHelper(&value, color));
    if (host.failedCall().empty()) break;
    EXPECT_EQ(answer, E_FAIL) << host.failedCall();
    EXPECT_EQ(host.balance(), "balanced") << host.failedCall();
  }
}

// --- getPropEntityLayerColor -----------------------------------------------------------------------------------------

TEST_F(ByLayerColors, TheLayersColorIsReadAndEverythingClosedAtOnce) {
  PROPINFO prop = row(21);
  VkCmColor color;

  EXPECT_TRUE(getPropEntityLayerColor(color, prop));

  EXPECT_EQ(color.color(), ToyColor::indexed(1));
  EXPECT_EQ(host.log.all(),
            (Lines{"vkdbOpenObject(21, mode 0)", "layerId() on entityOnRed", "close() on entityOnRed",
                   "vkdbOpenVkDbObject(11, mode 0)", "color() on red", "close() on red"}));
  expectNothingIsOpen();
}

TEST_F(ByLayerColors, Quirk_opening_status_unexamined) {
  host.on("vkdbOpenObject(21").workThenReturn(E_FAIL);
  PROPINFO prop = row(21);
  VkCmColor color;

  EXPECT_TRUE(getPropEntityLayerColor(color, prop));

  EXPECT_EQ(color.color(), ToyColor::indexed(1));
  expectNothingIsOpen();
}

TEST_F(ByLayerColors, AnEntityThatCannotBeOpenedHasNoLayerColor) {
  ToyPlainObject noEntity(host, "noEntity", 31);
  for (const long id : {0L, 31L, 999L}) {
    PROPINFO prop = row(id);
    VkCmColor color;
    color.setColor(77);
    EXPECT_FALSE(getPropEntityLayerColor(color, prop));
    EXPECT_EQ(color.color(), 77u);
    expectNothingIsOpen();
  }
}

TEST_F(ByLayerColors, ALayerThatCannotBeOpenedHasNoColor) {
  PROPINFO prop = row(21);
  for (const VkDbObjectId layer :
       {VkDbObjectId(), entityOnGreen.objectId(), VkDbObjectId().setFromOldId(999)}) {
    entityOnRed.layer = layer;
    VkCmColor color;
    color.setColor(77);
    EXPECT_FALSE(getPropEntityLayerColor(color, prop));
    EXPECT_EQ(color.color(), 77u);
    expectNothingIsOpen();
  }
}

// --- IsDifferentByLayerColors of two rows ----------------------------------------------------------------------------

TEST_F(ByLayerColors, RowsDifferWhenTheFirstIsByLayerAndTheLayersColorsDiffer) {
  EXPECT_TRUE(differ(row(byLayer, 21), row(byLayerToo, 23)));
  EXPECT_FALSE(differ(row(byLayer, 21), row(byLayerToo, 22)));
  EXPECT_FALSE(differ(row(byLayer, 21), row(byLayerToo, 21)));
}

TEST_F(ByLayerColors, LayersOfOneColorDoNotDiffer) {
  green.shown.setColor(ToyColor::indexed(1));

  EXPECT_FALSE(differ(row(byLayer, 21), row(byLayerToo, 23)));

  green.shown.setNames(L"Brick", L"Book");
  EXPECT_TRUE(differ(row(byLayer, 21), row(byLayerToo, 23))) << "names belong to a color";
}

TEST_F(ByLayerColors, FixedColorsNeverDifferByLayer) {
  EXPECT_FALSE(differ(row(fixed, 21), row(fixed, 23)));
  EXPECT_EQ(host.log.count("vkdbOpen"), 0);
}

TEST_F(ByLayerColors, OnlyTheFirstRowsColorIsConverted) {
  EXPECT_TRUE(differ(row(byLayer, 21), row(fixed, 23)));
  EXPECT_FALSE(differ(row(fixed, 21), row(byLayer, 23)));
  EXPECT_EQ(host.log.count("QueryInterface(IVeltVkCmColor) on fixed"), 1);
  EXPECT_TRUE(differ(row(byLayer, 21), row(23))) << "the other value need not even be a color";
}

TEST_F(ByLayerColors, ValuesThatAreNotColorsDoNotDiffer) {
  ToyObject object(host, "object");
  EXPECT_FALSE(differ(row(21), row(23)));
  EXPECT_FALSE(differ(Row(L"Color").ofEntity(21).value(borrowed(object.dispatch())), row(byLayer, 23)));
  EXPECT_FALSE(differ(Row(L"Color").ofEntity(21).value(i4(0)), row(byLayer, 23)));
}

TEST_F(ByLayerColors, RowsDoNotDifferWhenALayerCannotBeFound) {
  EXPECT_FALSE(differ(row(byLayer, 999), row(byLayerToo, 23)));
  EXPECT_FALSE(differ(row(byLayer, 21), row(byLayerToo, 999)));
  entityOnGreen.layer = VkDbObjectId();
  EXPECT_FALSE(differ(row(byLayer, 21), row(byLayerToo, 23)));
  EXPECT_FALSE(differ(row(byLayer, 23), row(byLayerToo, 21)));
}

TEST_F(ByLayerColors, EveryFailedOpeningOfRowsMakesThemNotDifferent) {
  PROPINFO a = row(byLayer, 21), b = row(byLayerToo, 23);
  for (int n = 1;; ++n) {
    host.mark();
    host.failCall(n);
    const bool answer = IsDifferentByLayerColors(a, b);
    expectNothingIsOpen();
    EXPECT_EQ(host.balance(), "balanced");
    if (host.failedCall().empty()) {
      EXPECT_TRUE(answer);
      EXPECT_EQ(n,
                4 + 4 + 1);  // the color and three reads of it, two entities and their layers, nothing more
      break;
    }
    SCOPED_TRACE(host.failedCall());
    // The reads of names are not looked at, and without a value the color is not by layer.
    EXPECT_EQ(answer, host.failedCall().starts_with("get_ColorName")
                          || host.failedCall().starts_with("get_BookName"));
  }
}

TEST_F(ByLayerColors, TheFirstRowsEntityAndLayerAreOpenedBeforeTheOthers) {
  differ(row(byLayer, 21), row(byLayerToo, 23));

  EXPECT_EQ(host.log.only({"vkdbOpen", "close"}),
            (Lines{"vkdbOpenObject(21, mode 0)", "close() on entityOnRed", "vkdbOpenVkDbObject(11, mode 0)",
                   "close() on red", "vkdbOpenObject(23, mode 0)", "close() on entityOnGreen",
                   "vkdbOpenVkDbObject(12, mode 0)", "close() on green"}));
}

TEST_F(ByLayerColors, ComparingRowsChangesNothingInThem) {
  PROPINFO a = row(byLayer, 21), b = row(byLayerToo, 23);

  EXPECT_TRUE(IsDifferentByLayerColors(a, b));

  EXPECT_FALSE(a.isVaries || b.isVaries);
  EXPECT_EQ(a.value.pdispVal, byLayer.dispatch());
}

// --- IsDifferentByLayerColors of a value and two lists ----------------------------------------------------------------

TEST_F(ByLayerColors, ListsDifferWhenTheirEntitiesLayersDo) {
  EXPECT_TRUE(differ(borrowed(byLayer.dispatch()), rows({row(1, 1280), row(21)}), rows({row(23)})));
  EXPECT_FALSE(differ(borrowed(byLayer.dispatch()), rows({row(21)}), rows({row(22)})));
}

TEST_F(ByLayerColors, ListsDoNotDifferForValuesThatAreNotByLayer) {
  EXPECT_FALSE(differ(borrowed(fixed.dispatch()), rows({row(21)}), rows({row(23)})));
  EXPECT_FALSE(differ(i4(0), rows({row(21)}), rows({row(23)})));
  EXPECT_FALSE(differ(borrowed(static_cast<IDispatch*>(nullptr)), rows({row(21)}), rows({row(23)})));
  EXPECT_EQ(host.log.count("vkdbOpen"), 0);
}

TEST_F(ByLayerColors, TheFirstRowOf1281WhoseEntityOpensStandsForAList) {
  // The row of another DISPID lies on green, the first of 1281 cannot be opened, the last lies on green too.
  const TqVector<PROPINFO> list = rows({row(23, 1282), row(999), row(21), row(23)});

  EXPECT_FALSE(differ(borrowed(byLayer.dispatch()), list, rows({row(22)})));
  EXPECT_FALSE(differ(borrowed(byLayer.dispatch()), rows({row(22)}), list));
  EXPECT_TRUE(differ(borrowed(byLayer.dispatch()), list, rows({row(23)})));
  EXPECT_TRUE(differ(borrowed(byLayer.dispatch()), rows({row(23)}), list));
}

TEST_F(ByLayerColors, TheSearchOfAListEndsAtAnEntityThatOpensEvenWhenItsLayerDoesNot) {
  entityOnRed.layer = VkDbObjectId();
  const TqVector<PROPINFO> list = rows({row(21), row(23)});

  // The side without a layer stays at the default color, which no layer has.
  EXPECT_TRUE(differ(borrowed(byLayer.dispatch()), list, rows({row(23)})));
}

TEST_F(ByLayerColors, Quirk_default_color_for_a_missing_layer) {
  EXPECT_TRUE(differ(borrowed(byLayer.dispatch()), rows({row(21)}), rows({})));
  EXPECT_TRUE(differ(borrowed(byLayer.dispatch()), rows({}), rows({row(21)})));
  EXPECT_TRUE(differ(borrowed(byLayer.dispatch()), rows({row(21)}), rows({row(23, 1280)})));
  EXPECT_TRUE(differ(borrowed(byLayer.dispatch()), rows({row(21)}), rows({row(999)})));

  EXPECT_FALSE(differ(borrowed(byLayer.dispatch()), rows({}), rows({})));
  EXPECT_FALSE(differ(borrowed(byLayer.dispatch()), rows({row(999)}), rows({row(21, 1280)})));
}

TEST_F(ByLayerColors, ALayerOfTheDefaultColorEqualsAMissingOne) {
  red.shown = VkCmColor();

  EXPECT_FALSE(differ(borrowed(byLayer.dispatch()), rows({row(21)}), rows({})));
}

TEST_F(ByLayerColors, ListsAreOpenedOneAfterTheOther) {
  differ(borrowed(byLayer.dispatch()), rows({row(21)}), rows({row(23)}));

  EXPECT_EQ(host.log.only({"vkdbOpen", "close", "layerId", "color()"}),
            (Lines{"vkdbOpenObject(21, mode 0)", "layerId() on entityOnRed", "close() on entityOnRed",
                   "vkdbOpenVkDbObject(11, mode 0)", "color() on red", "close() on red",
                   "vkdbOpenObject(23, mode 0)", "layerId() on entityOnGreen", "close() on entityOnGreen",
                   "vkdbOpenVkDbObject(12, mode 0)", "color() on green", "close() on green"}));
}

TEST_F(ByLayerColors, EveryFailedCallForListsLeavesNothingOpen) {
  VARIANT value = borrowed(byLayer.dispatch());
  TqVector<PROPINFO> a = rows({row(21)}), b = rows({row(22)});
  for (int n = 1;; ++n) {
    host.mark();
    host.failCall(n);
    const bool answer = IsDifferentByLayerColors(value, a, b);
    expectNothingIsOpen();
    EXPECT_EQ(host.balance(), "balanced");
    if (host.failedCall().empty()) {
      EXPECT_FALSE(answer);
      break;
    }
    SCOPED_TRACE(host.failedCall());
    // One side without its layer's color: the default color differs from the other side's.
    EXPECT_EQ(answer, host.failedCall().starts_with("vkdbOpen"));
  }
}

TEST_F(ByLayerColors, TheListsStayShared) {
  VARIANT value = borrowed(byLayer.dispatch());
  TqVector<PROPINFO> a = rows({row(21)}), b = rows({row(23)});
  const TqVector<PROPINFO> keptA = a, keptB = b;

  EXPECT_TRUE(IsDifferentByLayerColors(value, a, b));

  EXPECT_EQ(std::as_const(a).begin(), keptA.begin()) << "nothing is written, so nothing is copied";
  EXPECT_EQ(std::as_const(b).begin(), keptB.begin());
}

}  // namespace
}  // namespace velt::toys
