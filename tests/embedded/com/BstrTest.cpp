#include "host/com/Bstr.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string>

#include "embedded/platform/Allocation.h"
#include "tests/embedded/com/Balance.h"

namespace velt::com {
namespace {

using platform::AllocationFault;
using platform::Heap;

std::uint32_t prefixOf(BSTR string) {
  std::uint32_t prefix = 0;
  std::memcpy(&prefix, reinterpret_cast<const char*>(string) - 4, 4);
  return prefix;
}

TEST(Bstr, CarriesItsByteCountInFrontAndATerminatorAtTheEnd) {
  const Balance balance;
  BSTR string = SysAllocString(L"Wall");
  EXPECT_EQ(16U, prefixOf(string));
  EXPECT_EQ(4U, SysStringLen(string));
  EXPECT_EQ(16U, SysStringByteLen(string));
  EXPECT_STREQ(L"Wall", string);
  SysFreeString(string);
}

TEST(Bstr, NullIsTheEmptyStringAndMayBeFreed) {
  EXPECT_EQ(nullptr, SysAllocString(nullptr));
  EXPECT_EQ(0U, SysStringLen(nullptr));
  EXPECT_EQ(0U, SysStringByteLen(nullptr));
  SysFreeString(nullptr);
}

TEST(Bstr, AnEmptyTextIsNotNull) {
  const Balance balance;
  BSTR string = SysAllocString(L"");
  ASSERT_NE(nullptr, string);
  EXPECT_EQ(0U, SysStringLen(string));
  EXPECT_EQ(L'\0', *string);
  SysFreeString(string);
}

TEST(Bstr, KeepsEmbeddedNulsWhenTheLengthIsGiven) {
  const Balance balance;
  BSTR string = SysAllocStringLen(L"a\0b", 3);
  EXPECT_EQ(std::wstring(L"a\0b", 3), std::wstring(string, SysStringLen(string)));
  SysFreeString(string);
}

TEST(Bstr, ANullTextOfSomeLengthIsRoomToWriteInto) {
  const Balance balance;
  BSTR string = SysAllocStringLen(nullptr, 5);
  ASSERT_NE(nullptr, string);
  std::wmemcpy(string, L"fives", 5);
  EXPECT_EQ(5U, SysStringLen(string));
  EXPECT_STREQ(L"fives", string);
  SysFreeString(string);
}

TEST(Bstr, AByteCountInsideACharacterIsKeptAndPaddedWithZeros) {
  const Balance balance;
  for (UINT bytes = 0; bytes < 12; ++bytes) {
    const std::string content(bytes, 'x');
    BSTR string = SysAllocStringByteLen(content.data(), bytes);
    ASSERT_NE(nullptr, string);
    EXPECT_EQ(bytes, SysStringByteLen(string));
    EXPECT_EQ(bytes / 4, SysStringLen(string));
    EXPECT_EQ(0, std::memcmp(string, content.data(), bytes));
    EXPECT_EQ((bytes + 3) / 4, std::wcslen(string)) << "terminated after the started character";
    SysFreeString(string);
  }
}

TEST(Bstr, BytesMayBeLeftOutToo) {
  const Balance balance;
  BSTR string = SysAllocStringByteLen(nullptr, 8);
  ASSERT_NE(nullptr, string);
  EXPECT_EQ(2U, SysStringLen(string));
  SysFreeString(string);
}

TEST(Bstr, ACountThatThePrefixCannotHoldGivesNull) {
  const Balance balance;
  EXPECT_EQ(nullptr, SysAllocStringLen(nullptr, 0x40000000U));
  EXPECT_EQ(nullptr, SysAllocStringLen(nullptr, 0xFFFFFFFFU));
}

TEST(Bstr, TheLargestByteCountAsksForMoreThan32BitsOfMemory) {
  const Balance balance;
  const AllocationFault fault = AllocationFault::failAbove(0xFFFFFFFFU, Heap::Strings);
  EXPECT_EQ(nullptr, SysAllocStringByteLen(nullptr, 0xFFFFFFFFU));
  EXPECT_EQ(1U, fault.failures());
}

TEST(Bstr, ExhaustedMemoryGivesNull) {
  const Balance balance;
  const AllocationFault fault = AllocationFault::failFrom(1, Heap::Strings);
  EXPECT_EQ(nullptr, SysAllocString(L"x"));
  EXPECT_EQ(nullptr, SysAllocStringLen(L"x", 1));
  EXPECT_EQ(nullptr, SysAllocStringByteLen("x", 1));
  EXPECT_EQ(3U, fault.failures());
}

TEST(Bstr, IsCountedByTheLedger) {
  const Balance balance;
  BSTR string = SysAllocString(L"x");
  EXPECT_EQ((platform::Ledger::Difference{{"BSTR", 1}}), balance.now());
  SysFreeString(string);
}

TEST(BstrDeathTest, AStringThatIsFreedTwiceEndsTheProcess) {
  BSTR string = SysAllocString(L"abcdefg");
  // Both of them there, for the test framework takes memory between.
  EXPECT_DEATH((SysFreeString(string), SysFreeString(string)), "");
  SysFreeString(string);
}

RC_GTEST_PROP(Bstr, GivesBackWhatWasPutIn, (const std::vector<std::uint16_t>& characters)) {
  const std::wstring text(characters.begin(), characters.end());
  BSTR string = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  RC_ASSERT(std::wstring(string, SysStringLen(string)) == text);
  RC_ASSERT(string[text.size()] == L'\0');
  SysFreeString(string);
}

}  // namespace
}  // namespace velt::com
