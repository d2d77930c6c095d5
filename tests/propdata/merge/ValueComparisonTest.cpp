#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "propdata/VeltPropData.h"
#include "tests/support/LayerTest.h"
#include "tests/support/Row.h"
#include "tests/support/ToyColor.h"
#include "tests/support/ToyDatabase.h"
#include "tests/support/ToyHyperlinks.h"

namespace velt::toys {
namespace {

// A BSTR for the length of a test.
class Text {
 public:
  explicit Text(const wchar_t* characters) : string_(SysAllocString(characters)) {}
  ~Text() { SysFreeString(string_); }
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  VARIANT value() const { return borrowed(string_); }

 private:
  BSTR string_;
};

std::int32_t compared(VARIANT a, const VARIANT& b) {
  return CompareVARIANT(a, b);
}

VARIANT nullText() {
  return borrowed(BSTR{nullptr});
}

// --- CompareVARIANT: plain values -----------------------------------------------------------------------------

constexpr VARTYPE typesBelow32[] = {
    VT_EMPTY, VT_NULL,     VT_I2,    VT_I4,        VT_R4,      VT_R8,          VT_CY,      VT_DATE,
    VT_BSTR,  VT_DISPATCH, VT_ERROR, VT_BOOL,      VT_VARIANT, VT_UNKNOWN,     VT_DECIMAL, 15,
    VT_I1,    VT_UI1,      VT_UI2,   VT_UI4,       VT_I8,      VT_UI8,         VT_INT,     VT_UINT,
    VT_VOID,  VT_HRESULT,  VT_PTR,   VT_SAFEARRAY, VT_CARRAY,  VT_USERDEFINED, VT_LPSTR,   VT_LPWSTR};

TEST(CompareVARIANT, ValuesOfDifferentTypesGiveMinusOne) {
  for (const VARTYPE a : typesBelow32) {
    for (const VARTYPE b : typesBelow32) {
      if (a != b) {
        EXPECT_EQ(compared(ofType(a), ofType(b)), -1) << nameOfType(a) << " " << nameOfType(b);
      }
    }
  }
  EXPECT_EQ(compared(i4(5), i2(5)), -1);
  EXPECT_EQ(compared(ofType(VT_I4 | VT_ARRAY), ofType(VT_I4 | VT_BYREF)), -1);
  EXPECT_EQ(compared(ofType(VT_I4 | VT_ARRAY), i4(0)), -1);
}

TEST(CompareVARIANT, IntegersAreComparedInTheWidthOfTheirType) {
  const struct {
    VARTYPE type;
    // A bit inside of the value, and one after it.
    LONGLONG last;
    LONGLONG first;
  } widths[] = {
      {VT_I1, 0x80, 0x100},
      {VT_UI1, 0x80, 0x100},
      {VT_I2, 0x8000, 0x10000},
      {VT_BOOL, 0x8000, 0x10000},
      {VT_UI2, 0x8000, 0x10000},
      {VT_I4, 0x80000000, 0x100000000},
      {VT_UI4, 0x80000000, 0x100000000},
      {VT_INT, 0x80000000, 0x100000000},
      {VT_UINT, 0x80000000, 0x100000000},
      {VT_I8, std::numeric_limits<LONGLONG>::min(), 0},
      {VT_UI8, std::numeric_limits<LONGLONG>::min(), 0},
  };
  for (const auto& width : widths) {
    SCOPED_TRACE(nameOfType(width.type));
    EXPECT_EQ(compared(ofType(width.type, 0x21), ofType(width.type, 0x21)), 0);
    EXPECT_EQ(compared(ofType(width.type, 0x21), ofType(width.type, 0x22)), 1);
    EXPECT_EQ(compared(ofType(width.type, 0x21), ofType(width.type, 0x21 | width.last)), 1);
    EXPECT_EQ(compared(ofType(width.type, 0x21), ofType(width.type, 0x21 | width.first)), 0);
  }
  EXPECT_EQ(compared(i8(1), i8(1 | 0x100000000)), 1);
}

TEST(CompareVARIANT, AnyTwoTruthsAreNotEqual) {
  // VARIANT_TRUE is -1; a producer's 1 is another 16-bit value.
  EXPECT_EQ(compared(ofType(VT_BOOL, 0xFFFF), ofType(VT_BOOL, 1)), 1);
}

TEST(CompareVARIANT, DoublesDifferFromAHundredMillionthOn) {
  EXPECT_EQ(compared(r8(1.0), r8(1.0 + 5e-9)), 0);
  EXPECT_EQ(compared(r8(1.0 + 5e-9), r8(1.0)), 0);
  EXPECT_EQ(compared(r8(1.0), r8(1.0 + 2e-8)), 1);
  EXPECT_EQ(compared(r8(1.0 + 2e-8), r8(1.0)), 1);
  EXPECT_EQ(compared(r8(0.0), r8(1e-8)), 1);
  EXPECT_EQ(compared(r8(0.0), r8(std::nextafter(1e-8, 0.0))), 0);
  EXPECT_EQ(compared(r8(0.0), r8(-0.0)), 0);
  EXPECT_EQ(compared(r8(-3.5), r8(3.5)), 1);
  EXPECT_EQ(compared(r8(1e300), r8(1e300)), 0);
}

TEST(CompareVARIANT, FloatsDifferFromATenThousandthOn) {
  EXPECT_EQ(compared(r4(2.5F), r4(2.50005F)), 0);
  EXPECT_EQ(compared(r4(2.50005F), r4(2.5F)), 0);
  EXPECT_EQ(compared(r4(2.5F), r4(2.5002F)), 1);
  EXPECT_EQ(compared(r4(2.5002F), r4(2.5F)), 1);
  // The float nearest to 0.0001 lies below the double 0.0001, the next one above it.
  EXPECT_EQ(compared(r4(0.0F), r4(0.0001F)), 0);
  EXPECT_EQ(compared(r4(0.0F), r4(std::nextafter(0.0001F, 1.0F))), 1);
}

TEST(CompareVARIANT, TheDifferenceOfFloatsIsRoundedToSinglePrecision) {
  // In double precision the difference of these two is above 0.0001.
  const float a = std::nextafter(0.0001F, 1.0F);
  const float b = 4e-12F;
  ASSERT_GT(static_cast<double>(a) - static_cast<double>(b), 0.0001);

  EXPECT_EQ(compared(r4(a), r4(b)), 0);
}

TEST(CompareVARIANT, StringsAreComparedExactly) {
  const Text lower(L"abc"), upper(L"ABC"), same(L"abc"), longer(L"abcd"), none(L"");

  EXPECT_EQ(compared(lower.value(), same.value()), 0);
  EXPECT_EQ(compared(lower.value(), lower.value()), 0);
  EXPECT_EQ(compared(lower.value(), upper.value()), 1);
  EXPECT_EQ(compared(lower.value(), longer.value()), 1);
  EXPECT_EQ(compared(longer.value(), lower.value()), 1);
  EXPECT_EQ(compared(none.value(), none.value()), 0);
  EXPECT_EQ(compared(none.value(), lower.value()), 1);
}

TEST(CompareVARIANT, NarrowStringsAreComparedExactly) {
  const auto narrowText = [](const char* characters) {
    VARIANT made = ofType(VT_LPSTR);
    made.pcVal = const_cast<char*>(characters);  // only read
    return made;
  };
  const std::string copy = "abc";

  EXPECT_EQ(compared(narrowText("abc"), narrowText(copy.c_str())), 0);
  EXPECT_EQ(compared(narrowText("abc"), narrowText("ABC")), 1);
  EXPECT_EQ(compared(narrowText("abc"), narrowText("ab")), 1);
}

TEST(CompareVARIANT, Quirk_lpwstr_indirection) {
  const auto wideText = [](const wchar_t** characters) {
    VARIANT made = ofType(VT_LPWSTR);
    made.byref = characters;
    return made;
  };
  const std::wstring copy = L"abc";
  const wchar_t* abc = L"abc";
  const wchar_t* sameAsAbc = copy.c_str();
  const wchar_t* upper = L"ABC";

  EXPECT_EQ(compared(wideText(&abc), wideText(&sameAsAbc)), 0);
  EXPECT_EQ(compared(wideText(&abc), wideText(&upper)), 1);
}

TEST(CompareVARIANT, Quirk_incomparable_values_differ) {
  for (const VARTYPE type :
       {VT_EMPTY, VT_NULL, VT_CY, VT_DATE, VT_ERROR, VT_VARIANT, VT_UNKNOWN, VT_DECIMAL, VARENUM(15), VT_VOID,
        VT_HRESULT, VT_PTR, VT_SAFEARRAY, VT_CARRAY, VT_USERDEFINED}) {
    EXPECT_EQ(compared(ofType(type), ofType(type)), 1) << nameOfType(type);
  }
  const Text some(L"abc");
  EXPECT_EQ(compared(nullText(), nullText()), 1);
  EXPECT_EQ(compared(some.value(), nullText()), 1);
  EXPECT_EQ(compared(nullText(), some.value()), 1);

  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(compared(r8(nan), r8(nan)), 1);
  EXPECT_EQ(compared(r8(nan), r8(1)), 1);
  EXPECT_EQ(compared(r8(infinity), r8(infinity)), 1) << "their difference is no number";
  EXPECT_EQ(compared(r8(infinity), r8(-infinity)), 1);
  EXPECT_EQ(
      compared(r4(std::numeric_limits<float>::quiet_NaN()), r4(std::numeric_limits<float>::quiet_NaN())), 1);
  EXPECT_EQ(compared(r4(std::numeric_limits<float>::infinity()), r4(std::numeric_limits<float>::infinity())),
            1);
}

TEST(CompareVARIANT, TypesFrom32OnAlwaysDiffer) {
  for (const int type :
       {32, 36, 64, VT_ARRAY | VT_I4, VT_BYREF | VT_I4, VT_BYREF | VT_BSTR, VT_ARRAY | VT_VARIANT, 0xFFFF}) {
    EXPECT_EQ(compared(ofType(static_cast<VARTYPE>(type)), ofType(static_cast<VARTYPE>(type))), 1) << type;
  }
}

TEST(CompareVARIANT, ChangesNeitherValue) {
  const Text some(L"abc"), other(L"abd");
  VARIANT a = some.value();

  CompareVARIANT(a, other.value());

  EXPECT_EQ(print(a), "VT_BSTR \"abc\"");
  EXPECT_EQ(print(other.value()), "VT_BSTR \"abd\"");
}

// --- CompareVARIANT: objects -----------------------------------------------------------------------------------

class CompareObjects : public LayerTest {};

TEST_F(CompareObjects, ColorsAreComparedByValueAndNames) {
  ToyColor red(host, "red", ToyColor::indexed(1));
  ToyColor same(host, "same", ToyColor::indexed(1));
  ToyColor green(host, "green", ToyColor::indexed(3));
  ToyColor named(host, "named", ToyColor::indexed(1));
  named.colorName = L"Brick";
  ToyColor booked(host, "booked", ToyColor::indexed(1));
  booked.bookName = L"Book";
  host.mark();

  EXPECT_EQ(compared(borrowed(red.dispatch()), borrowed(same.dispatch())), 0);
  EXPECT_EQ(compared(borrowed(red.dispatch()), borrowed(red.dispatch())), 0);
  EXPECT_EQ(compared(borrowed(red.dispatch()), borrowed(green.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(red.dispatch()), borrowed(named.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(red.dispatch()), borrowed(booked.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(booked.dispatch()), borrowed(named.dispatch())), 1);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareObjects, TwoColorsAreNotAskedForHyperlinks) {
  ToyColor red(host, "red", ToyColor::indexed(1));
  ToyColor green(host, "green", ToyColor::indexed(3));

  compared(borrowed(red.dispatch()), borrowed(green.dispatch()));

  EXPECT_EQ(host.log.only({"QueryInterface"}),
            (Lines{"QueryInterface(IVeltVkCmColor) on red", "QueryInterface(IVeltVkCmColor) on green"}));
}

TEST_F(CompareObjects, HyperlinksAreEqualWhenTheirFirstUrlsAre) {
  ToyHyperlinks a(host, "a"), same(host, "same"), other(host, "other"), upper(host, "upper");
  a.add(L"http://one");
  a.add(L"http://two");
  same.add(L"http://one");
  other.add(L"http://two");
  upper.add(L"HTTP://one");
  host.mark();

  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(same.dispatch())), 0);
  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(other.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(upper.dispatch())), 1);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareObjects, AsksEachCollectionForItsFirstLinkAndThatForItsUrl) {
  ToyHyperlinks a(host, "a"), b(host, "b");
  a.add(L"http://one");
  b.add(L"http://one");

  compared(borrowed(a.dispatch()), borrowed(b.dispatch()));

  EXPECT_EQ(host.log.only({"Item", "get_URL"}),
            (Lines{"Item(0) on a", "get_URL() on a[0]", "Item(0) on b", "get_URL() on b[0]"}));
  EXPECT_EQ(host.log.count("SysFreeString(http://one)"), 2);
}

TEST_F(CompareObjects, CollectionsWithoutAFirstUrlAreEqualToEachOtherAlone) {
  ToyHyperlinks empty1(host, "empty1"), empty2(host, "empty2"), withoutUrl(host, "withoutUrl"),
      full(host, "full"), blank(host, "blank");
  withoutUrl.add(std::nullopt);
  full.add(L"http://one");
  blank.add(L"");
  host.mark();

  EXPECT_EQ(compared(borrowed(empty1.dispatch()), borrowed(empty2.dispatch())), 0);
  EXPECT_EQ(compared(borrowed(empty1.dispatch()), borrowed(withoutUrl.dispatch())), 0);
  EXPECT_EQ(compared(borrowed(empty1.dispatch()), borrowed(full.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(full.dispatch()), borrowed(empty1.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(empty1.dispatch()), borrowed(blank.dispatch())), 1)
      << "an empty string is no null";
  EXPECT_EQ(compared(borrowed(blank.dispatch()), borrowed(blank.dispatch())), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareObjects, AFailedUrlQueryLeavesTheStringNull) {
  ToyHyperlinks a(host, "a"), b(host, "b");
  a.add(L"http://one");
  b.add(L"http://two");
  host.on("get_URL").fail();
  host.mark();

  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(b.dispatch())), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareObjects, Quirk_url_result_unexamined) {
  ToyHyperlinks a(host, "a"), b(host, "b"), c(host, "c");
  a.add(L"http://one");
  b.add(L"http://one");
  c.add(L"http://two");
  host.on("get_URL").workThenReturn(E_FAIL);
  host.mark();

  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(b.dispatch())), 0);
  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(c.dispatch())), 1);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareObjects, AnItemThatSucceedsWithoutALinkCountsAsNone) {
  ToyHyperlinks a(host, "a"), b(host, "b");
  a.add(L"http://one");
  b.add(L"http://two");
  host.on("Item(0)").answerNull();

  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(b.dispatch())), 0);
}

TEST_F(CompareObjects, ALinkThatAFailingItemCallLeftIsNeitherAskedNorReleased) {
  ToyHyperlinks a(host, "a"), b(host, "b");
  a.add(L"http://one");
  b.add(L"http://two");
  host.on("Item(0)").leaveThenFail();
  host.mark();

  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(b.dispatch())), 0);

  EXPECT_EQ(host.log.count("get_URL"), 0);
  EXPECT_EQ(host.log.count("Release(IVeltHyperlink)"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareObjects, ObjectsThatAreNeitherColorsNorHyperlinksDiffer) {
  ToyObject a(host, "a"), b(host, "b");
  ToyColor color(host, "color", 1);
  ToyHyperlinks links(host, "links");
  host.mark();

  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(b.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(a.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(color.dispatch()), borrowed(a.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(color.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(links.dispatch()), borrowed(a.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(links.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(color.dispatch()), borrowed(links.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(links.dispatch()), borrowed(color.dispatch())), 1);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareObjects, AColorDiffersFromAnotherObjectEvenWhenItIsTheDefaultColor) {
  ToyColor color(host, "color", VkCmColor().color());
  ToyObject object(host, "object");
  VARIANT value = borrowed(color.dispatch());
  VkCmColor converted;
  ASSERT_EQ(VariantToColorHelper(&value, converted), 0);
  ASSERT_FALSE(converted != VkCmColor());

  EXPECT_EQ(compared(borrowed(color.dispatch()), borrowed(object.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(object.dispatch()), borrowed(color.dispatch())), 1);
}

TEST_F(CompareObjects, BothAreAskedForColorsAndThenBothForHyperlinks) {
  ToyObject a(host, "a"), b(host, "b");

  EXPECT_EQ(compared(borrowed(a.dispatch()), borrowed(b.dispatch())), 1);

  EXPECT_EQ(host.log.all(),
            (Lines{"QueryInterface(IVeltVkCmColor) on a", "QueryInterface(IVeltVkCmColor) on b",
                   "QueryInterface(IVeltHyperlinks) on a", "QueryInterface(IVeltHyperlinks) on b"}));
}

TEST_F(CompareObjects, NullObjectsDiffer) {
  ToyHyperlinks links(host, "links");
  ToyColor color(host, "color", 1);
  const VARIANT none = borrowed(static_cast<IDispatch*>(nullptr));
  host.mark();

  EXPECT_EQ(compared(none, none), 1);
  EXPECT_EQ(compared(none, borrowed(links.dispatch())), 1);
  EXPECT_EQ(compared(borrowed(links.dispatch()), none), 1);
  EXPECT_EQ(compared(borrowed(color.dispatch()), none), 1);
  EXPECT_EQ(compared(none, borrowed(color.dispatch())), 1);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareObjects, EveryHostCallMayFailWithoutALeak) {
  ToyColor color(host, "color", 1), otherColor(host, "otherColor", 1);
  ToyHyperlinks links(host, "links"), otherLinks(host, "otherLinks");
  links.add(L"http://one");
  otherLinks.add(L"http://one");
  const std::pair<IDispatch*, IDispatch*> pairs[] = {{color.dispatch(), otherColor.dispatch()},
                                                     {links.dispatch(), otherLinks.dispatch()}};
  for (const auto& [a, b] : pairs) {
    for (int n = 1;; ++n) {
      host.mark();
      host.failCall(n);
      const std::int32_t answer = compared(borrowed(a), borrowed(b));
      if (host.failedCall().empty()) {
        EXPECT_EQ(answer, 0);
        EXPECT_GT(n, 6);
        break;
      }
      SCOPED_TRACE(host.failedCall());
      EXPECT_EQ(host.balance(), "balanced");
      EXPECT_TRUE(answer == 0 || answer == 1);
    }
  }
}

TEST_F(CompareObjects, ObjectsOfAHostThatThrowsDiffer) {
  ToyColor color(host, "color", 1), otherColor(host, "otherColor", 1);
  ToyHyperlinks links(host, "links"), otherLinks(host, "otherLinks");
  links.add(L"http://one");
  otherLinks.add(L"http://one");
  const std::pair<IDispatch*, IDispatch*> pairs[] = {{color.dispatch(), otherColor.dispatch()},
                                                     {links.dispatch(), otherLinks.dispatch()}};
  for (const auto& [a, b] : pairs) {
    for (int n = 1;; ++n) {
      host.mark();
      host.raiseCall(n, L"no connection");
      std::int32_t answer = 0;
      EXPECT_NO_THROW(answer = compared(borrowed(a), borrowed(b)));
      if (host.failedCall().empty()) break;
      EXPECT_EQ(answer, 1) << host.failedCall();
      EXPECT_EQ(host.balance(), "balanced") << host.failedCall();
    }
  }
}

// --- comparePropInfo: values ----------------------------------------------------------------------------------------

struct Comparison {
  bool stops, found, varies;
  friend bool operator==(const Comparison&, const Comparison&) = default;
  friend std::ostream& operator<<(std::ostream& out, const Comparison& c) {
    return out << (c.stops ? "stops" : "goes on") << (c.found ? ", found" : "")
               << (c.varies ? ", varies" : "");
  }
};
constexpr Comparison goesOn{false, false, false};
constexpr Comparison absent{true, false, false};
constexpr Comparison same{true, true, false};
constexpr Comparison varying{true, true, true};

class ComparePropInfo : public LayerTest {
 protected:
  // found is handed in as the opposite of what is expected, so that it shows when it is not written.
  Comparison compare(PROPINFO first, PROPINFO other, bool foundBefore = true) {
    bool found = foundBefore;
    const bool otherVaried = other.isVaries;
    const bool stops = comparePropInfo(first, other, found, errorText);
    EXPECT_EQ(other.isVaries, otherVaried);
    return {stops, found, first.isVaries};
  }
};

TEST_F(ComparePropInfo, EqualValuesOfTheSamePropertyAreFound) {
  EXPECT_EQ(compare(Row(L"A").value(i4(1)), Row(L"A").value(i4(1)), false), same);
  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(ComparePropInfo, DifferentValuesMarkTheFirstRow) {
  EXPECT_EQ(compare(Row(L"A").value(i4(1)), Row(L"A").value(i4(2)), false), varying);
  EXPECT_EQ(error(), untouched);
}

TEST_F(ComparePropInfo, ValuesOfDifferentTypesEndTheSearchWithoutAFind) {
  EXPECT_EQ(compare(Row(L"A").value(i4(1)), Row(L"A").value(i2(1))), absent);
  EXPECT_EQ(error(), untouched);
}

TEST_F(ComparePropInfo, ARowThatDiffersInTheFullKeyIsPassedOver) {
  const Row base = Row(L"A").value(i4(1));
  const PROPINFO others[] = {
      Row(base).inCategory(2, L"General"),
      Row(base).inCategory(1, L"GENERAL"),
      Row(L"a").label(L"A").value(i4(1)),
      Row(base).label(L"a"),
      Row(base).editable(false),
      Row(base).withChoices(),
      Row(base).element(0),
  };
  for (const PROPINFO& other : others) {
    SCOPED_TRACE(&other - others);
    EXPECT_EQ(compare(base, other), goesOn);
    EXPECT_EQ(compare(other, base), goesOn);
  }
  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(ComparePropInfo, WhatIsNotPartOfTheKeyMayDiffer) {
  PROPINFO other = Row(L"A")
                       .dispId(9)
                       .customType(PropertyKind::color)
                       .weight(3)
                       .ofEntity(7)
                       .grouping(1)
                       .value(i4(1))
                       .varies();
  other.description = L"another";
  other.isWritable = false;
  other.elementCookie = 4;
  other.clsid = CLSID_VeltArc;

  EXPECT_EQ(compare(Row(L"A").value(i4(1)), other), same);
}

TEST_F(ComparePropInfo, ARowThatVariesAlreadyStaysVarying) {
  EXPECT_EQ(compare(Row(L"A").value(i4(1)).varies(), Row(L"A").value(i4(1))), varying);
}

// --- comparePropInfo: by layer ----------------------------------------------------------------------------------------

class CompareByLayer : public ComparePropInfo {
 protected:
  CompareByLayer() {
    entityA.layer = red.objectId();
    entityB.layer = green.objectId();
  }
  PROPINFO row(const VARIANT& value, long entity, DISPID dispId = 1281) {
    return Row(L"Color").dispId(dispId).ofEntity(entity).value(value);
  }

  ToyLayer red{host, "red", 11, ToyColor::indexed(1)};
  ToyLayer green{host, "green", 12, ToyColor::indexed(3)};
  ToyEntity entityA{host, "entityA", 21};
  ToyEntity entityB{host, "entityB", 22};
  ToyColor byLayerA{host, "byLayerA", ToyColor::byLayer};
  ToyColor byLayerB{host, "byLayerB", ToyColor::byLayer};
};

TEST_F(CompareByLayer, EqualByLayerColorsVaryWhenTheLayersDiffer) {
  EXPECT_EQ(compare(row(borrowed(byLayerA.dispatch()), 21), row(borrowed(byLayerB.dispatch()), 22)), varying);
  EXPECT_EQ(compare(row(borrowed(byLayerA.dispatch()), 21), row(borrowed(byLayerB.dispatch()), 21)), same);
  EXPECT_EQ(error(), untouched);
}

TEST_F(CompareByLayer, TheColorOfDispid1301IsNotResolved) {
  EXPECT_EQ(
      compare(row(borrowed(byLayerA.dispatch()), 21, 1301), row(borrowed(byLayerB.dispatch()), 22, 1281)),
      same);
  EXPECT_EQ(host.log.count("vkdbOpenObject"), 0);
  // Only the first row's DISPID counts.
  EXPECT_EQ(
      compare(row(borrowed(byLayerA.dispatch()), 21, 1281), row(borrowed(byLayerB.dispatch()), 22, 1301)),
      varying);
}

TEST_F(CompareByLayer, LayersAreNotLookedAtWhenTheColorsDifferAnyway) {
  ToyColor fixed(host, "fixed", ToyColor::indexed(1));

  EXPECT_EQ(compare(row(borrowed(byLayerA.dispatch()), 21), row(borrowed(fixed.dispatch()), 22)), varying);
  EXPECT_EQ(host.log.count("vkdbOpenObject"), 0);
}

TEST_F(CompareByLayer, OtherValuesAreNotAskedForAColor) {
  EXPECT_EQ(compare(row(i4(1), 21), row(i4(1), 22)), same);
  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(CompareByLayer, EqualHyperlinksAreFoundWithoutOpeningAnything) {
  ToyHyperlinks a(host, "a"), b(host, "b");

  EXPECT_EQ(compare(row(borrowed(a.dispatch()), 21), row(borrowed(b.dispatch()), 22)), same);
  EXPECT_EQ(host.log.count("vkdbOpenObject"), 0);
  // Once for the comparison of each, once more for the layers.
  EXPECT_EQ(host.log.count("QueryInterface(IVeltVkCmColor) on a"), 2);
  EXPECT_EQ(host.log.count("QueryInterface(IVeltVkCmColor) on b"), 1);
}

// --- comparePropInfo: elements ----------------------------------------------------------------------------------------

class CompareElements : public ComparePropInfo {
 protected:
  CompareElements() {
    host.texts[1019] = L"no %ls here";
    first.property(7, L"Start").element(1, L"X", i4(0)).element(2, L"Y", i4(0));
    other.property(8, L"Start").element(1, L"X", i4(0)).element(2, L"Y", i4(0));
  }
  PROPINFO row(const ToyObject& object, const VARIANT& value) {
    // A DISPID that nobody knows: elements are counted under the one that the name leads to.
    return Row(L"Start").of(object).dispId(99).label(L"X").element(1).value(value);
  }

  ToyObject first{host, "first"};
  ToyObject other{host, "other"};
};

TEST_F(CompareElements, CountsTheElementsOfBothObjectsUnderTheFirstRowsName) {
  host.mark();

  EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(1))), same);

  EXPECT_EQ(
      host.log.all(),
      (Lines{"GetIDsOfNames(Start, locale 0x800) on first", "QueryInterface(IOPMPropertyExpander) on first",
             "GetElementStrings(7) on first", "Release(IOPMPropertyExpander) on first", "SysFreeString(X)",
             "SysFreeString(Y)", "CoTaskMemFree()", "CoTaskMemFree()",
             "GetIDsOfNames(Start, locale 0x800) on other", "QueryInterface(IOPMPropertyExpander) on other",
             "GetElementStrings(8) on other", "Release(IOPMPropertyExpander) on other", "SysFreeString(X)",
             "SysFreeString(Y)", "CoTaskMemFree()", "CoTaskMemFree()"}));
  EXPECT_EQ(host.balance(), "balanced");
  EXPECT_EQ(error(), untouched);
}

TEST_F(CompareElements, AnIdThatIsNotToldIsZero) {
  host.on("GetIDsOfNames(Start, locale 0x800) on first").fail(S_OK);
  compare(row(first, i4(1)), row(other, i4(1)));
  EXPECT_EQ(host.log.count("GetElementStrings(0) on first"), 1);
}

TEST_F(CompareElements, ElementsWithEqualCountsAreComparedByValue) {
  EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(1)), false), same);
  EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(2)), false), varying);
  EXPECT_EQ(compare(row(first, i4(1)), row(other, i2(1))), absent);
  EXPECT_EQ(error(), untouched);
}

TEST_F(CompareElements, AnElementThatVariesAlreadyStaysVarying) {
  PROPINFO varied = row(first, i4(1));
  varied.isVaries = true;

  EXPECT_EQ(compare(varied, row(other, i4(1))), varying);
}

TEST_F(CompareElements, DifferentCountsEndTheSearchWithoutAFind) {
  other[8].element(3, L"Z", i4(0));
  host.mark();

  EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(1))), absent);
  EXPECT_EQ(compare(row(other, i4(1)), row(first, i4(1))), absent);
  EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(2))), absent) << "values are not compared";
  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareElements, CookiesCountAndNotTheStrings) {
  other[8].extraNames = {L"Extra", L"More"};
  host.mark();

  EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(1))), same);
  EXPECT_EQ(host.log.count("SysFreeString(Extra)"), 1);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareElements, AnAnswerWithoutArraysHasNoElements) {
  host.on("GetElementStrings(8)").answerNull();
  EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(1))), absent);

  first[7].elements.clear();
  host.mark();
  EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(1))), same);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(CompareElements, TheElementsOfTheFirstPropertyAreNotCountedForOthers) {
  // Without isElement nobody is asked.
  PROPINFO a = row(first, i4(1));
  PROPINFO b = row(other, i4(1));
  a.isElement = b.isElement = false;

  EXPECT_EQ(compare(a, b), same);
  EXPECT_EQ(host.log.all(), Lines{});
}

TEST_F(CompareElements, Quirk_no_by_layer_check_of_elements) {
  ToyLayer red(host, "red", 11, ToyColor::indexed(1)), green(host, "green", 12, ToyColor::indexed(3));
  ToyEntity entityA(host, "entityA", 21), entityB(host, "entityB", 22);
  entityA.layer = red.objectId();
  entityB.layer = green.objectId();
  ToyColor a(host, "a", ToyColor::byLayer), b(host, "b", ToyColor::byLayer);
  PROPINFO rowA = row(first, borrowed(a.dispatch())), rowB = row(other, borrowed(b.dispatch()));
  rowA.objectId = entityA.objectId();
  rowB.objectId = entityB.objectId();

  EXPECT_EQ(compare(rowA, rowB), same);
  EXPECT_EQ(host.log.count("vkdbOpenObject"), 0);
}

TEST_F(CompareElements, EachQueryThatFailsLeavesItsMessageAndPassesTheRowOver) {
  const struct {
    const char* call;
    std::wstring expected;
    int calls;  // of the other object, so that it shows where the comparison ended
  } failures[] = {
      {"GetIDsOfNames(Start, locale 0x800) on first", L"no Start here", 0},
      {"QueryInterface(IOPMPropertyExpander) on first", message(1014), 0},
      {"GetElementStrings(7) on first", message(1015), 0},
      {"GetIDsOfNames(Start, locale 0x800) on other", L"no Start here", 1},
      {"QueryInterface(IOPMPropertyExpander) on other", message(1014), 2},
      {"GetElementStrings(8) on other", message(1015), 4},
  };
  for (const auto& failure : failures) {
    SCOPED_TRACE(failure.call);
    errorText = untouched;
    host.log.clear();
    host.mark();
    host.on(failure.call).nth(1).fail();

    EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(2))), goesOn);

    EXPECT_EQ(error(), failure.expected);
    EXPECT_EQ(host.balance(), "balanced");
    int calls = 0;
    for (const std::string& line : host.log.all())
      calls += line.ends_with(" on other");
    EXPECT_EQ(calls, failure.calls);
  }
}

TEST_F(CompareElements, WhatTheHostThrowsIsTheMessageAndPassesTheRowOver) {
  for (int n = 1;; ++n) {
    host.mark();
    host.raiseCall(n, L"no connection");
    Comparison outcome{};
    EXPECT_NO_THROW(outcome = compare(row(first, i4(1)), row(other, i4(1))));
    if (host.failedCall().empty()) {
      EXPECT_EQ(n, 7);
      break;
    }
    EXPECT_EQ(outcome, goesOn) << host.failedCall();
    EXPECT_EQ(error(), L"no connection") << host.failedCall();
    EXPECT_EQ(host.balance(), "balanced") << host.failedCall();
  }
}

TEST_F(CompareElements, WhatFailingCallsLeaveIsNotGivenBack) {
  for (const char* const call :
       {"GetIDsOfNames", "QueryInterface(IOPMPropertyExpander)", "GetElementStrings"}) {
    host.on(call).nth(1).leaveThenFail();
    host.mark();
    EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(1))), goesOn) << call;
    EXPECT_EQ(host.balance(), "balanced") << call;
  }
}

TEST_F(CompareElements, AnExpanderWhoseStringsFailIsReleased) {
  host.on("GetElementStrings(7)").fail();

  compare(row(first, i4(1)), row(other, i4(1)));

  EXPECT_EQ(host.log.count("Release(IOPMPropertyExpander) on first"), 1);
}

TEST_F(CompareElements, AMissingMessageLibraryLeavesAnEmptyText) {
  host.on("LoadLibraryExW").fail();
  host.on("LoadStringW").fail();
  first.withhold(IID_IOPMPropertyExpander);

  EXPECT_EQ(compare(row(first, i4(1)), row(other, i4(1))), goesOn);
  EXPECT_EQ(error(), L"");
}

TEST_F(CompareElements, TheMessageNamesThePropertyOfTheFirstRow) {
  first.dispIds.clear();

  compare(row(first, i4(1)), row(other, i4(1)));

  EXPECT_EQ(error(), L"no Start here");
}

}  // namespace
}  // namespace velt::toys
