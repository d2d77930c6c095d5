#include "embedded/platform/Watch.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

#include "host/com/Cancellation.h"
#include "host/com/ComError.h"

namespace velt::platform {
namespace {

using std::chrono::milliseconds;

// Asked at every call.
constexpr milliseconds always{0};

// Whether a step ends what is running, by the exception that the layer understands.
bool isEnded(Step step = Step::ReadValue) {
  try {
    watched(step);
    return false;
  } catch (const _com_error& error) {
    EXPECT_EQ(error.Error(), E_ABORT);
    EXPECT_EQ(std::wstring(error.Description()), cancelledText);
    return true;
  }
}

TEST(Watch, IsAskedWithWhatWasDoneSinceItWasMade) {
  watched(Step::ReadValue);
  Progress told;
  const Watch watch(
      [&](const Progress& progress) {
        told = progress;
        return true;
      },
      always);
  watched(Step::MakeObject);
  watched(Step::ReadValue);
  watched(Step::ReadValue);
  watched(Step::WriteValue);
  watched(Step::Other);
  watchedBytes(7, 9);
  EXPECT_EQ(told.objectsMade, 1U);
  EXPECT_EQ(told.valuesRead, 2U);
  EXPECT_EQ(told.valuesWritten, 1U);
  EXPECT_EQ(told.bytesDone, 7U);
  EXPECT_EQ(told.bytesTotal, 9U);
  EXPECT_EQ(watch.progress().valuesRead, 2U);
  EXPECT_FALSE(watch.isCancelled());
}

TEST(Watch, IsNotAskedBeforeItsIntervalIsOver) {
  int asked = 0;
  const Watch watch([&](const Progress&) { return ++asked != 0; }, std::chrono::hours(1));
  for (int i = 0; i < 1000; ++i)
    watched(Step::ReadValue);
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(watch.progress().valuesRead, 1000U);
}

TEST(Watch, IsAskedOnceInEachInterval) {
  int asked = 0;
  const Watch watch([&](const Progress&) { return ++asked != 0; }, milliseconds(20));
  const auto begun = std::chrono::steady_clock::now();
  while (asked < 3)
    watched(Step::ReadValue);
  EXPECT_GE(std::chrono::steady_clock::now() - begun, milliseconds(40)) << "the clock is a coarse one";
}

TEST(Watch, EndsWhatRunsWhenItAnswersFalseAndLetsLaterCallsPass) {
  int asked = 0;
  const Watch watch([&](const Progress&) { return ++asked < 2; }, always);
  EXPECT_FALSE(isEnded());
  EXPECT_FALSE(watch.isCancelled());
  EXPECT_TRUE(isEnded());
  EXPECT_TRUE(watch.isCancelled());
  EXPECT_FALSE(isEnded());
  EXPECT_EQ(asked, 2) << "it has answered";
  EXPECT_EQ(watch.progress().valuesRead, 3U) << "they are counted all the same";
}

TEST(Watch, EndsLoadingAndSavingForAsLongAsItLives) {
  {
    const Watch watch([](const Progress&) { return false; }, always);
    EXPECT_THROW(watchedBytes(1, 2), Cancelled);
    EXPECT_THROW(watchedBytes(1, 2), Cancelled);
    EXPECT_THROW(watchedLoading(), Cancelled);
    EXPECT_EQ(watch.progress().bytesDone, 1U);
  }
  watchedBytes(1, 2);
  watchedLoading();
}

TEST(Watch, ALoadIsRefusedAfterAQueryWasCancelled) {
  const Watch watch([](const Progress&) { return false; }, always);
  EXPECT_TRUE(isEnded());
  try {
    watchedBytes(1, 2);
    FAIL();
  } catch (const Cancelled& cancelled) {
    EXPECT_EQ(std::string(cancelled.what()), "The operation was cancelled.");
  }
}

TEST(Watch, AllWatchesOfAThreadAreAskedAndEachCanCancel) {
  bool outerGoesOn = true;
  int outerAsked = 0, innerAsked = 0;
  const Watch outer(
      [&](const Progress&) {
        ++outerAsked;
        return outerGoesOn;
      },
      always);
  {
    const Watch inner([&](const Progress&) { return ++innerAsked != 0; }, always);
    EXPECT_FALSE(isEnded());
    EXPECT_EQ(outerAsked, 1);
    EXPECT_EQ(innerAsked, 1);
    outerGoesOn = false;
    EXPECT_TRUE(isEnded());
    EXPECT_FALSE(inner.isCancelled());
  }
  EXPECT_TRUE(outer.isCancelled());
  EXPECT_THROW(watchedLoading(), Cancelled) << "the outer one goes on when the inner one has ended";
}

TEST(Watch, OtherThreadsAreNotWatched) {
  int asked = 0;
  const Watch watch([&](const Progress&) { return ++asked == 0; }, always);
  std::thread([] { watched(Step::ReadValue); }).join();
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(watch.progress().valuesRead, 0U);
}

TEST(Watch, WhatItThrowsCancels) {
  const Watch watch([](const Progress&) -> bool { throw std::runtime_error("no window"); }, always);
  EXPECT_TRUE(isEnded());
  EXPECT_TRUE(watch.isCancelled());
}

TEST(Watch, NothingIsWatchedWhileItIsAsked) {
  int asked = 0;
  const Watch watch(
      [&](const Progress&) {
        watched(Step::ReadValue);
        // A window that handles an event may begin something of its own.
        const Watch inner([](const Progress&) { return true; }, always);
        watched(Step::ReadValue);
        EXPECT_EQ(inner.progress().valuesRead, 1U);
        return ++asked < 2;
      },
      always);
  EXPECT_FALSE(isEnded());
  EXPECT_EQ(watch.progress().valuesRead, 1U);
  EXPECT_TRUE(isEnded());
}

TEST(Watch, NothingIsWatchedInAnUnwatchedBlock) {
  const Watch watch([](const Progress&) { return false; }, always);
  {
    const Unwatched block;
    EXPECT_FALSE(isEnded());
    watchedBytes(1, 2);
  }
  EXPECT_EQ(watch.progress().valuesRead, 0U);
  EXPECT_TRUE(isEnded());
}

}  // namespace
}  // namespace velt::platform
