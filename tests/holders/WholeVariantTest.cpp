#include "holders/WholeVariant.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

namespace velt::holders {
namespace {

TEST(WholeVariant, HasTheTagAndTheValueAndNothingElse) {
  const VARIANT number = wholeVariant(VT_R8, std::bit_cast<std::uint64_t>(-2.5));
  EXPECT_EQ(VT_R8, number.vt);
  EXPECT_DOUBLE_EQ(-2.5, number.dblVal);
  EXPECT_EQ(0, number.wReserved1);
  EXPECT_EQ(0, number.wReserved2);
  EXPECT_EQ(0, number.wReserved3);
  EXPECT_EQ(nullptr, number.brecVal.pRecInfo);
}

TEST(WholeVariant, HoldsANegativeIntegerAndATextAsTheirMembersDo) {
  EXPECT_EQ(-23, wholeVariant(VT_I4, static_cast<std::uint32_t>(-23)).lVal);
  EXPECT_EQ(VARIANT_TRUE, wholeVariant(VT_BOOL, static_cast<std::uint16_t>(VARIANT_TRUE)).boolVal);
  wchar_t text[] = L"text";
  EXPECT_EQ(text, wholeVariant(VT_BSTR, reinterpret_cast<std::uintptr_t>(text)).bstrVal);
}

}  // namespace
}  // namespace velt::holders
