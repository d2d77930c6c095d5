#include "host/com/ComRuntime.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <thread>

#include "embedded/com/Runtime.h"
#include "embedded/platform/Allocation.h"
#include "tests/embedded/com/Balance.h"

namespace velt::com {
namespace {

TEST(ComRuntime, TheFirstInitializationOfAThreadIsOkAndLaterOnesAreFalse) {
  EXPECT_EQ(0, initializeCount());
  EXPECT_EQ(S_OK, CoInitialize(nullptr));
  EXPECT_EQ(S_FALSE, CoInitialize(nullptr));
  EXPECT_EQ(2, initializeCount());
  CoUninitialize();
  EXPECT_EQ(S_FALSE, CoInitialize(nullptr));
  CoUninitialize();
  CoUninitialize();
  EXPECT_EQ(0, initializeCount());
  EXPECT_EQ(S_OK, CoInitialize(nullptr));
  CoUninitialize();
}

TEST(ComRuntime, EachThreadIsInitializedForItself) {
  ASSERT_EQ(S_OK, CoInitialize(nullptr));
  HRESULT other = E_FAIL;
  std::thread([&] { other = CoInitialize(nullptr); }).join();
  EXPECT_EQ(S_OK, other);
  EXPECT_EQ(1, initializeCount());
  CoUninitialize();
}

TEST(ComRuntime, AReservedArgumentIsRefusedAndNotCounted) {
  int something = 0;
  EXPECT_EQ(E_INVALIDARG, CoInitialize(&something));
  EXPECT_EQ(0, initializeCount());
}

TEST(ComRuntime, AnUninitializationTooManyIsForgiven) {
  CoUninitialize();
  EXPECT_EQ(0, initializeCount());
  EXPECT_EQ(S_OK, CoInitialize(nullptr));
  CoUninitialize();
}

TEST(ComRuntime, TaskMemoryIsCountedUntilItIsFreed) {
  const Balance balance;
  void* block = CoTaskMemAlloc(100);
  ASSERT_NE(nullptr, block);
  EXPECT_EQ(0U, reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t));
  std::memset(block, 1, 100);
  EXPECT_EQ((platform::Ledger::Difference{{"task memory", 1}}), balance.now());
  CoTaskMemFree(block);
}

TEST(ComRuntime, NoBytesOfTaskMemoryAreABlockTooAndNullMayBeFreed) {
  const Balance balance;
  void* block = CoTaskMemAlloc(0);
  EXPECT_NE(nullptr, block);
  CoTaskMemFree(block);
  CoTaskMemFree(nullptr);
}

TEST(ComRuntime, TaskMemoryThatCannotBeHadIsNullAndNotCounted) {
  const Balance balance;
  EXPECT_EQ(nullptr, CoTaskMemAlloc(std::numeric_limits<std::size_t>::max()));
  const auto fault = platform::AllocationFault::failNth(1, platform::Heap::TaskMemory);
  EXPECT_EQ(nullptr, CoTaskMemAlloc(1));
}

TEST(ComRuntimeDeathTest, TaskMemoryThatIsFreedTwiceEndsTheProcess) {
  void* const block = CoTaskMemAlloc(24);
  // Both of them there, for the test framework takes memory between.
  EXPECT_DEATH((CoTaskMemFree(block), CoTaskMemFree(block)), "");
  CoTaskMemFree(block);
}

TEST(ComRuntime, TheUserSpeaksAmericanEnglishUnlessSetOtherwise) {
  EXPECT_EQ(0x0409, GetUserDefaultLangID());
  EXPECT_EQ(0x0409U, GetUserDefaultLCID());
  setUserLanguage(0x0407, 0x10407);
  EXPECT_EQ(0x0407, GetUserDefaultLangID());
  EXPECT_EQ(0x10407U, GetUserDefaultLCID());
  setUserLanguage(0x0409, 0x0409);
}

}  // namespace
}  // namespace velt::com
