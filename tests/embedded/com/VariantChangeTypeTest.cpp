#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cfenv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

#include "embedded/com/VariantTypes.h"
#include "embedded/platform/Allocation.h"
#include "host/com/IDispatch.h"
#include "host/com/Variant.h"
#include "tests/embedded/com/Balance.h"
#include "tests/embedded/com/Probe.h"
#include "tests/support/Variants.h"

namespace velt::com {
namespace {

using namespace variants;
using platform::AllocationFault;

// Changes in place, so that the source is given up on success, and says what came out.
std::string changed(VARIANT source, VARTYPE type, USHORT flags = 0) {
  const HRESULT result = VariantChangeType(&source, &source, flags, type);
  std::string said;
  if (result == DISP_E_OVERFLOW) {
    said = "overflow";
  } else if (result == DISP_E_TYPEMISMATCH) {
    said = "mismatch";
  } else if (FAILED(result)) {
    said = "failure " + std::to_string(result);
  } else {
    EXPECT_EQ(type, source.vt);
    char buffer[64];
    switch (source.vt) {
      case VT_BSTR:
        for (UINT i = 0; i < SysStringLen(source.bstrVal); ++i)
          said += static_cast<char>(source.bstrVal[i]);
        break;
      case VT_R8:
      case VT_DATE:
        std::snprintf(buffer, sizeof buffer, "%.17g", source.dblVal);
        said = buffer;
        break;
      case VT_R4:
        std::snprintf(buffer, sizeof buffer, "%.9g", static_cast<double>(source.fltVal));
        said = buffer;
        break;
      case VT_I1:
        said = std::to_string(source.cVal);
        break;
      case VT_UI1:
        said = std::to_string(source.bVal);
        break;
      case VT_I2:
        said = std::to_string(source.iVal);
        break;
      case VT_UI2:
        said = std::to_string(source.uiVal);
        break;
      case VT_I4:
      case VT_INT:
        said = std::to_string(source.lVal);
        break;
      case VT_UI4:
      case VT_UINT:
        said = std::to_string(source.ulVal);
        break;
      case VT_I8:
      case VT_CY:
        said = std::to_string(source.llVal);
        break;
      case VT_UI8:
        said = std::to_string(source.ullVal);
        break;
      case VT_BOOL:
        said = std::to_string(source.boolVal);
        break;
      default:
        said = "?";
    }
  }
  VariantClear(&source);
  return said;
}

TEST(VariantChangeType, IntegersKeepTheirValueOrOverflow) {
  EXPECT_EQ("127", changed(i4(127), VT_I1));
  EXPECT_EQ("overflow", changed(i4(128), VT_I1));
  EXPECT_EQ("-128", changed(i4(-128), VT_I1));
  EXPECT_EQ("overflow", changed(i4(-129), VT_I1));
  EXPECT_EQ("255", changed(i4(255), VT_UI1));
  EXPECT_EQ("overflow", changed(i4(256), VT_UI1));
  EXPECT_EQ("overflow", changed(i4(-1), VT_UI1));
  EXPECT_EQ("32767", changed(i4(32767), VT_I2));
  EXPECT_EQ("overflow", changed(i4(32768), VT_I2));
  EXPECT_EQ("65535", changed(i4(65535), VT_UI2));
  EXPECT_EQ("overflow", changed(i4(65536), VT_UI2));
  EXPECT_EQ("overflow", changed(i8(0x80000000LL), VT_I4));
  EXPECT_EQ("overflow", changed(i8(0x80000000LL), VT_INT));
  EXPECT_EQ("2147483648", changed(i8(0x80000000LL), VT_UI4));
  EXPECT_EQ("2147483648", changed(i8(0x80000000LL), VT_UINT));
  EXPECT_EQ("overflow", changed(i4(-1), VT_UI8));
  EXPECT_EQ("9223372036854775807", changed(ui8(0x7FFFFFFFFFFFFFFFU), VT_I8));
  EXPECT_EQ("overflow", changed(ui8(0x8000000000000000U), VT_I8));
}

TEST(VariantChangeType, RealsAreRoundedHalfToEven) {
  EXPECT_EQ("0", changed(r8(0.5), VT_I4));
  EXPECT_EQ("2", changed(r8(1.5), VT_I4));
  EXPECT_EQ("2", changed(r8(2.5), VT_I4));
  EXPECT_EQ("0", changed(r8(-0.5), VT_I4));
  EXPECT_EQ("-2", changed(r8(-1.5), VT_I4));
  EXPECT_EQ("-2", changed(r8(-2.5), VT_I4));
  EXPECT_EQ("3", changed(r8(2.5000001), VT_I4));
  EXPECT_EQ("0", changed(r8(std::nextafter(0.5, 0.0)), VT_I4));
  EXPECT_EQ("0", changed(r8(std::nextafter(-0.5, 0.0)), VT_I4));
  EXPECT_EQ("2", changed(r4(2.5F), VT_I8));
}

TEST(VariantChangeType, RoundingDoesNotDependOnTheModeOfTheProcess) {
  ASSERT_EQ(0, std::fesetround(FE_UPWARD));
  const std::string up = changed(r8(2.5), VT_I4);
  const std::string down = changed(r8(2.4), VT_I4);
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ("2", up);
  EXPECT_EQ("2", down);
}

TEST(VariantChangeType, RealsOverflowOnlyAfterRounding) {
  EXPECT_EQ("32767", changed(r8(32767.49), VT_I2));
  EXPECT_EQ("overflow", changed(r8(32767.5), VT_I2));
  EXPECT_EQ("-32768", changed(r8(-32768.5), VT_I2));
  EXPECT_EQ("overflow", changed(r8(-32768.51), VT_I2));
  EXPECT_EQ("0", changed(r8(-0.5), VT_UI1));
  EXPECT_EQ("overflow", changed(r8(-0.51), VT_UI1));
  EXPECT_EQ("overflow", changed(r8(9223372036854775808.0), VT_I8));
  EXPECT_EQ("9223372036854774784", changed(r8(9223372036854774784.0), VT_I8));
  EXPECT_EQ("-9223372036854775808", changed(r8(-9223372036854775808.0), VT_I8));
  EXPECT_EQ("overflow", changed(r8(18446744073709551616.0), VT_UI8));
  for (const double none : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    EXPECT_EQ("overflow", changed(r8(none), VT_I4));
    EXPECT_EQ("overflow", changed(r8(none), VT_UI8));
    EXPECT_EQ("overflow", changed(r8(none), VT_CY));
  }
}

TEST(VariantChangeType, ARealThatASingleCannotHoldOverflows) {
  EXPECT_EQ("0.100000001", changed(r8(0.1), VT_R4));
  EXPECT_EQ("overflow", changed(r8(3.5e38), VT_R4));
  EXPECT_EQ("overflow", changed(r8(-HUGE_VAL), VT_R4));
  EXPECT_EQ("0.10000000149011612", changed(r4(0.1F), VT_R8));
}

TEST(VariantChangeType, FlagsAreMinusOneAndZero) {
  EXPECT_EQ("-1", changed(boolean(true), VT_I4));
  EXPECT_EQ("0", changed(boolean(false), VT_I4));
  EXPECT_EQ("-1", changed(ofType(VT_BOOL, 5), VT_R8)) << "whatever says true";
  EXPECT_EQ("255", changed(boolean(true), VT_UI1)) << "all bits set";
  EXPECT_EQ("4294967295", changed(boolean(true), VT_UI4));
  EXPECT_EQ("-1", changed(i4(17), VT_BOOL));
  EXPECT_EQ("0", changed(i4(0), VT_BOOL));
  EXPECT_EQ("-1", changed(r8(0.25), VT_BOOL));
  EXPECT_EQ("0", changed(r8(-0.0), VT_BOOL));
}

TEST(VariantChangeType, FlagsHaveNumbersForTextUnlessWordsAreAskedFor) {
  EXPECT_EQ("-1", changed(boolean(true), VT_BSTR));
  EXPECT_EQ("0", changed(boolean(false), VT_BSTR));
  EXPECT_EQ("True", changed(boolean(true), VT_BSTR, 2));
  EXPECT_EQ("False", changed(boolean(false), VT_BSTR, 2));
  EXPECT_EQ("5", changed(i4(5), VT_BSTR, 2)) << "flags alone have words";
}

TEST(VariantChangeType, TextIsReadAsAFlag) {
  EXPECT_EQ("-1", changed(ownedText(L"True"), VT_BOOL));
  EXPECT_EQ("-1", changed(ownedText(L" TRUE "), VT_BOOL));
  EXPECT_EQ("0", changed(ownedText(L"false"), VT_BOOL));
  EXPECT_EQ("-1", changed(ownedText(L"#TRUE#"), VT_BOOL));
  EXPECT_EQ("0", changed(ownedText(L"#false#"), VT_BOOL));
  EXPECT_EQ("-1", changed(ownedText(L"0.5"), VT_BOOL));
  EXPECT_EQ("0", changed(ownedText(L"0"), VT_BOOL));
  EXPECT_EQ("mismatch", changed(ownedText(L"yes"), VT_BOOL));
  EXPECT_EQ("mismatch", changed(ownedText(L"truer"), VT_BOOL));
}

TEST(VariantChangeType, NumbersAreWrittenTheSameEverywhere) {
  EXPECT_EQ("-2147483648", changed(i4(std::numeric_limits<LONG>::min()), VT_BSTR));
  EXPECT_EQ("18446744073709551615", changed(ui8(0xFFFFFFFFFFFFFFFFU), VT_BSTR));
  EXPECT_EQ("0.3", changed(r8(0.1 + 0.2), VT_BSTR)) << "fifteen digits";
  EXPECT_EQ("1234.5", changed(r8(1234.5), VT_BSTR));
  EXPECT_EQ("1E+20", changed(r8(1e20), VT_BSTR));
  EXPECT_EQ("1.5E-07", changed(r8(1.5e-7), VT_BSTR));
  EXPECT_EQ("0", changed(r8(-0.0), VT_BSTR));
  EXPECT_EQ("0.1", changed(r4(0.1F), VT_BSTR)) << "seven digits";
}

TEST(VariantChangeType, TheLocaleOfTheProcessDoesNotMatter) {
  const char* set = nullptr;
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) {
    if (set == nullptr) set = std::setlocale(LC_ALL, name);
  }
  if (set == nullptr) GTEST_SKIP() << "no locale with a decimal comma is installed";
  const std::string written = changed(r8(1.5), VT_BSTR);
  VARIANT read = ownedText(L"1.5");
  const HRESULT result = VariantChangeType(&read, &read, 0, VT_R8);
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ("1.5", written);
  EXPECT_EQ(S_OK, result);
  EXPECT_EQ(1.5, read.dblVal);
}

TEST(VariantChangeType, TextIsReadAsANumber) {
  EXPECT_EQ("12", changed(ownedText(L"12"), VT_I4));
  EXPECT_EQ("-12", changed(ownedText(L"\t -12 \n"), VT_I4));
  EXPECT_EQ("12", changed(ownedText(L"+12"), VT_I4));
  EXPECT_EQ("2", changed(ownedText(L"2.5"), VT_I4)) << "rounded like a real";
  EXPECT_EQ("1200", changed(ownedText(L"1.2e3"), VT_I4));
  EXPECT_EQ("0.5", changed(ownedText(L".5"), VT_R8));
  EXPECT_EQ("5", changed(ownedText(L"5."), VT_R8));
  EXPECT_EQ("9223372036854775807", changed(ownedText(L"9223372036854775807"), VT_I8)) << "to the last digit";
  EXPECT_EQ("18446744073709551615", changed(ownedText(L"18446744073709551615"), VT_UI8));
  EXPECT_EQ("9223372036854775807", changed(ownedText(L"+9223372036854775807"), VT_I8));
  EXPECT_EQ("overflow", changed(ownedText(L"9223372036854775808"), VT_I8));
  EXPECT_EQ("-9223372036854775808", changed(ownedText(L"-9223372036854775808"), VT_I8));
  EXPECT_EQ("overflow", changed(ownedText(L"18446744073709551616"), VT_UI8));
  EXPECT_EQ("overflow", changed(ownedText(L"-1"), VT_UI4));
  EXPECT_EQ("1e+20", changed(ownedText(L"100000000000000000000"), VT_R8));
  EXPECT_EQ("overflow", changed(ownedText(L"1e999"), VT_R8));
  EXPECT_EQ("0", changed(ownedText(L"1e-999"), VT_R8));
}

TEST(VariantChangeType, TextThatIsNotANumberIsAMismatch) {
  const Balance balance;
  for (const std::wstring wrong : {L"", L" ", L"-", L"+", L".", L"e5", L"1e", L"1e+", L"1 2", L"1,5", L"0x10",
                                   L"inf", L"nan", L"--1", L"+-1", L"1.2.3", L"12a", L"\u0661"}) {
    for (const VARTYPE type : {VT_I4, VT_UI8, VT_R8, VT_R4, VT_BOOL, VT_CY}) {
      EXPECT_EQ("mismatch", changed(ownedText(wrong), type))
          << '"' << std::string(wrong.begin(), wrong.end()) << '"';
    }
  }
  EXPECT_EQ("mismatch", changed(ownedText(std::wstring(L"1\0", 2)), VT_I4)) << "a NUL is part of the text";
  EXPECT_EQ("mismatch", changed(ofType(VT_BSTR), VT_I4)) << "null is the empty text";
}

TEST(VariantChangeType, CurrencyCountsTenThousandths) {
  EXPECT_EQ("125000", changed(r8(12.5), VT_CY));
  EXPECT_EQ("120000", changed(i4(12), VT_CY));
  EXPECT_EQ("overflow", changed(i8(922337203685478LL), VT_CY));
  EXPECT_EQ("12.5", changed(currency(125000), VT_R8));
  EXPECT_EQ("12", changed(currency(125000), VT_I4)) << "half to even";
  EXPECT_EQ("14", changed(currency(135000), VT_I4));
  EXPECT_EQ("-14", changed(currency(-135000), VT_I4));
  EXPECT_EQ("14", changed(currency(135001), VT_I4));
  EXPECT_EQ("12.5", changed(currency(125000), VT_BSTR));
  EXPECT_EQ("-0.0001", changed(currency(-1), VT_BSTR));
  EXPECT_EQ("3", changed(currency(30000), VT_BSTR));
  EXPECT_EQ("-922337203685477.5808", changed(currency(std::numeric_limits<LONGLONG>::min()), VT_BSTR));
  EXPECT_EQ("-922337203685478", changed(currency(std::numeric_limits<LONGLONG>::min()), VT_I8));
  EXPECT_EQ("125000", changed(ownedText(L"12.5"), VT_CY));
}

TEST(VariantChangeType, NothingIsZeroAndTheEmptyText) {
  EXPECT_EQ("0", changed(empty(), VT_I4));
  EXPECT_EQ("0", changed(empty(), VT_R8));
  EXPECT_EQ("0", changed(empty(), VT_BOOL));
  EXPECT_EQ("", changed(empty(), VT_BSTR));
  EXPECT_EQ("mismatch", changed(empty(), VT_UNKNOWN));
}

TEST(VariantChangeType, NullErrorsAndDecimalsHaveNoOtherType) {
  for (const VARTYPE type : {VT_NULL, VT_ERROR, VT_DECIMAL}) {
    EXPECT_EQ("mismatch", changed(ofType(type), VT_I4));
    EXPECT_EQ("mismatch", changed(ofType(type), VT_BSTR));
    EXPECT_EQ("mismatch", changed(ofType(type), VT_BOOL));
    EXPECT_EQ("mismatch", changed(i4(1), type));
    EXPECT_EQ("?", changed(ofType(type), type)) << "but to themselves";
  }
  EXPECT_EQ("mismatch", changed(i4(1), VT_EMPTY));
}

TEST(VariantChangeType, ADateIsANumberOfDaysWithoutAText) {
  VARIANT date = ofType(VT_DATE);
  date.date = 1.5;
  EXPECT_EQ("1.5", changed(date, VT_R8));
  EXPECT_EQ("1.5", changed(r8(1.5), VT_DATE));
  EXPECT_EQ("mismatch", changed(date, VT_BSTR));
  EXPECT_EQ("mismatch", changed(ownedText(L"1.5"), VT_DATE));
}

TEST(VariantChangeType, AnObjectIsAskedForTheOtherInterface) {
  const Balance balance;
  VARIANT variant = ofType(VT_UNKNOWN);
  IDispatch* dispatch = DispatchProbe::make();
  variant.punkVal = dispatch;
  ASSERT_EQ(S_OK, VariantChangeType(&variant, &variant, 0, VT_DISPATCH));
  EXPECT_EQ(VT_DISPATCH, variant.vt);
  EXPECT_EQ(dispatch, variant.pdispVal);
  EXPECT_EQ(1U, referencesOf(dispatch));
  ASSERT_EQ(S_OK, VariantChangeType(&variant, &variant, 0, VT_UNKNOWN));
  EXPECT_EQ(VT_UNKNOWN, variant.vt);
  VariantClear(&variant);

  variant = ofType(VT_UNKNOWN);
  variant.punkVal = Probe::make();
  EXPECT_EQ(DISP_E_TYPEMISMATCH, VariantChangeType(&variant, &variant, 0, VT_DISPATCH)) << "it is none";
  EXPECT_EQ(DISP_E_TYPEMISMATCH, VariantChangeType(&variant, &variant, 0, VT_I4));
  EXPECT_EQ(VT_UNKNOWN, variant.vt);
  VariantClear(&variant);

  variant = ofType(VT_UNKNOWN);
  EXPECT_EQ(S_OK, VariantChangeType(&variant, &variant, 0, VT_DISPATCH)) << "no object";
  EXPECT_EQ(nullptr, variant.pdispVal);
}

TEST(VariantChangeType, TheSameTypeIsACopy) {
  const Balance balance;
  VARIANT source = ownedText(L"x");
  VARIANT copy = i4(1);
  ASSERT_EQ(S_OK, VariantChangeType(&copy, &source, 0, VT_BSTR));
  EXPECT_NE(source.bstrVal, copy.bstrVal);
  EXPECT_STREQ(L"x", copy.bstrVal);
  VariantClear(&source);
  VariantClear(&copy);
}

TEST(VariantChangeType, ArraysAreCopiedButNeverChanged) {
  const Balance balance;
  VARIANT source = ofType(VT_ARRAY | VT_I4);
  source.parray = SafeArrayCreateVector(VT_I4, 0, 1);
  VARIANT result{};
  EXPECT_EQ(S_OK, VariantChangeType(&result, &source, 0, VT_ARRAY | VT_I4));
  EXPECT_NE(source.parray, result.parray);
  EXPECT_EQ(DISP_E_TYPEMISMATCH, VariantChangeType(&result, &source, 0, VT_ARRAY | VT_R8));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, VariantChangeType(&result, &source, 0, VT_I4));
  EXPECT_EQ(VT_ARRAY | VT_I4, result.vt) << "left alone by a failure";
  VariantClear(&source);
  VariantClear(&result);
}

TEST(VariantChangeType, ReferencesAreFollowed) {
  const Balance balance;
  LONG number = 5;
  VARIANT byRef = ofType(VT_I4 | VT_BYREF);
  byRef.byref = &number;
  VARIANT result{};
  ASSERT_EQ(S_OK, VariantChangeType(&result, &byRef, 0, VT_BSTR));
  EXPECT_STREQ(L"5", result.bstrVal);
  VariantClear(&result);

  VARIANT target = ownedText(L"7");
  VARIANT toVariant = ofType(VT_VARIANT | VT_BYREF);
  toVariant.pvarVal = &target;
  ASSERT_EQ(S_OK, VariantChangeType(&result, &toVariant, 0, VT_I4));
  EXPECT_EQ(7, result.lVal);
  ASSERT_EQ(S_OK, VariantChangeType(&result, &toVariant, 0, VT_BSTR));
  EXPECT_NE(target.bstrVal, result.bstrVal) << "a copy, since the target keeps its own";
  VariantClear(&result);

  toVariant.pvarVal = &byRef;
  ASSERT_EQ(S_OK, VariantChangeType(&result, &toVariant, 0, VT_I4));
  EXPECT_EQ(5, result.lVal);
  VariantClear(&target);
}

TEST(VariantChangeType, ReferencesThatLeadNowhereAreAMismatch) {
  VARIANT result{};
  VARIANT null = ofType(VT_I4 | VT_BYREF);
  EXPECT_EQ(DISP_E_TYPEMISMATCH, VariantChangeType(&result, &null, 0, VT_I4));
  VARIANT circle = ofType(VT_VARIANT | VT_BYREF);
  circle.pvarVal = &circle;
  EXPECT_EQ(DISP_E_TYPEMISMATCH, VariantChangeType(&result, &circle, 0, VT_I4));
}

TEST(VariantChangeType, NonsenseIsRefused) {
  VARIANT variant = i4(1);
  VARIANT bad = ofType(VT_PTR);
  EXPECT_EQ(E_INVALIDARG, VariantChangeType(nullptr, &variant, 0, VT_I4));
  EXPECT_EQ(E_INVALIDARG, VariantChangeType(&variant, nullptr, 0, VT_I4));
  EXPECT_EQ(badVariantType, VariantChangeType(&variant, &variant, 0, VT_PTR));
  EXPECT_EQ(badVariantType, VariantChangeType(&variant, &variant, 0, VT_I4 | VT_BYREF));
  EXPECT_EQ(badVariantType, VariantChangeType(&variant, &bad, 0, VT_I4));
  VARIANT toBad = ofType(VT_VARIANT | VT_BYREF);
  toBad.pvarVal = &bad;
  EXPECT_EQ(badVariantType, VariantChangeType(&variant, &toBad, 0, VT_I4));
  EXPECT_EQ(1, variant.lVal);
}

TEST(VariantChangeType, ALockedArrayInTheDestinationStays) {
  const Balance balance;
  VARIANT destination = ofType(VT_ARRAY | VT_I4);
  destination.parray = SafeArrayCreateVector(VT_I4, 0, 1);
  void* data = nullptr;
  SafeArrayAccessData(destination.parray, &data);
  const VARIANT source = i4(5);
  EXPECT_EQ(DISP_E_ARRAYISLOCKED, VariantChangeType(&destination, &source, 0, VT_BSTR));
  SafeArrayUnaccessData(destination.parray);
  VariantClear(&destination);
}

TEST(VariantChangeType, WithoutMemoryTheDestinationStays) {
  const Balance balance;
  VARIANT destination = ownedText(L"kept");
  const VARIANT source = i4(5);
  {
    const AllocationFault fault = AllocationFault::failFrom(1);
    EXPECT_EQ(E_OUTOFMEMORY, VariantChangeType(&destination, &source, 0, VT_BSTR));
    EXPECT_EQ(E_OUTOFMEMORY, VariantChangeType(&destination, &destination, 0, VT_BSTR));
  }
  EXPECT_STREQ(L"kept", destination.bstrVal);
  VariantClear(&destination);
}

// --- against models: 128-bit integers, and the C library ----------------------------------------------------------------

__extension__ using Wide = __int128;

template <class Integer>
std::string expectedInteger(Wide value) {
  const bool fits =
      value >= std::numeric_limits<Integer>::min() && value <= std::numeric_limits<Integer>::max();
  return fits ? std::to_string(static_cast<Integer>(value)) : "overflow";
}

LONGLONG anyInteger() {
  const auto shift = *rc::gen::inRange(0, 64);
  return *rc::gen::arbitrary<LONGLONG>() >> shift;
}

RC_GTEST_PROP(VariantChangeType, IntegersChangeLikeWideIntegers, ()) {
  const LONGLONG value = anyInteger();
  RC_ASSERT(changed(i8(value), VT_I1) == expectedInteger<std::int8_t>(value));
  RC_ASSERT(changed(i8(value), VT_UI1) == expectedInteger<std::uint8_t>(value));
  RC_ASSERT(changed(i8(value), VT_I2) == expectedInteger<std::int16_t>(value));
  RC_ASSERT(changed(i8(value), VT_UI2) == expectedInteger<std::uint16_t>(value));
  RC_ASSERT(changed(i8(value), VT_I4) == expectedInteger<std::int32_t>(value));
  RC_ASSERT(changed(i8(value), VT_UI4) == expectedInteger<std::uint32_t>(value));
  RC_ASSERT(changed(i8(value), VT_UI8) == expectedInteger<std::uint64_t>(value));
  const auto unsignedValue = static_cast<ULONGLONG>(value);
  RC_ASSERT(changed(ui8(unsignedValue), VT_I8) == expectedInteger<std::int64_t>(unsignedValue));
}

RC_GTEST_PROP(VariantChangeType, IntegersSurviveBeingText, ()) {
  const LONGLONG value = anyInteger();
  VARIANT variant = i8(value);
  RC_ASSERT(VariantChangeType(&variant, &variant, 0, VT_BSTR) == S_OK);
  RC_ASSERT(VariantChangeType(&variant, &variant, 0, VT_I8) == S_OK);
  RC_ASSERT(variant.llVal == value);
}

RC_GTEST_PROP(VariantChangeType, RealsAreRoundedLikeTheCLibraryDoes, (int halves, double fraction)) {
  for (const double value : {halves / 2.0, halves + fraction}) {
    const double rounded = std::nearbyint(value);
    const bool fits = rounded >= -2147483648.0 && rounded <= 2147483647.0;
    RC_ASSERT(changed(r8(value), VT_I4) == (fits ? std::to_string(static_cast<int>(rounded)) : "overflow"));
  }
}

RC_GTEST_PROP(VariantChangeType, RealsBecomeFifteenDigitsAndThoseReadBack, (double mantissa)) {
  const double value = std::ldexp(mantissa, *rc::gen::inRange(-900, 900));
  RC_PRE(std::isfinite(value) && value != 0);
  char expected[64];
  std::snprintf(expected, sizeof expected, "%.15G", value);
  VARIANT variant = r8(value);
  RC_ASSERT(VariantChangeType(&variant, &variant, 0, VT_BSTR) == S_OK);
  const std::string written(variant.bstrVal, variant.bstrVal + SysStringLen(variant.bstrVal));
  RC_ASSERT(written == expected);
  RC_ASSERT(VariantChangeType(&variant, &variant, 0, VT_R8) == S_OK);
  RC_ASSERT(variant.dblVal == std::strtod(expected, nullptr));
}

}  // namespace
}  // namespace velt::com
