#include "errors/Guard.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace velt::errors {
namespace {

constexpr int failure = -1;

TEST(Guard, PassesTheCoresAnswerOn) {
  CStdStr<wchar_t> errorText(L"before");
  EXPECT_EQ(5, guarded(failure, [] { return 5; }));
  EXPECT_EQ(5, guarded(failure, errorText, [] { return 5; }));
  EXPECT_EQ(5, guardedFromShortage(failure, [] { return 5; }));
  EXPECT_EQ(L"before", errorText.str());
  bool ran = false;
  guarded([&] { ran = true; });
  EXPECT_TRUE(ran);
}

TEST(Guard, AnErrorOfTheHostGivesTheFailureValueAndItsDescription) {
  CStdStr<wchar_t> errorText(L"before");
  EXPECT_EQ(failure,
            guarded(failure, errorText, []() -> int { throw _com_error(E_FAIL, L"no connection"); }));
  EXPECT_EQ(L"no connection", errorText.str());
  EXPECT_EQ(failure, guarded(failure, []() -> int { throw _com_error(E_FAIL, L"no connection"); }));
  EXPECT_NO_THROW(guarded([] { throw _com_error(E_FAIL, L"no connection"); }));
}

TEST(Guard, AFunctionThatIsGuardedFromShortageAloneLetsAnErrorOfTheHostPass) {
  EXPECT_THROW(guardedFromShortage(failure, []() -> int { throw _com_error(E_FAIL, L"no connection"); }),
               _com_error);
}

TEST(Guard, ExhaustedMemoryGivesTheFailureValueAndLeavesTheErrorText) {
  CStdStr<wchar_t> errorText(L"before");
  EXPECT_EQ(failure, guarded(failure, errorText, []() -> int { throw std::bad_alloc(); }));
  EXPECT_EQ(failure, guarded(failure, []() -> int { throw ReportedShortage(); }));
  EXPECT_EQ(L"before", errorText.str());
}

TEST(Guard, TheThreadThatAsksFirstIsThePalettes) {
  EXPECT_TRUE(isPaletteThread());
  bool elsewhere = true;
  std::thread([&] { elsewhere = isPaletteThread(); }).join();
  EXPECT_FALSE(elsewhere);
}

#ifndef NDEBUG
TEST(GuardDeathTest, ACallOnAnotherThreadIsAMistakeThatDebugBuildsTell) {
  guarded([] {});
  EXPECT_DEATH(std::thread([] { guarded([] {}); }).join(), "isPaletteThread");
}
#endif

TEST(Guard, WhatIsNeitherIsADefectAndPasses) {
  EXPECT_THROW(guarded([] { throw std::logic_error("a defect"); }), std::logic_error);
}

}  // namespace
}  // namespace velt::errors
