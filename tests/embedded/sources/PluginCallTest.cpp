#include "embedded/sources/PluginCall.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>

namespace velt::sources {
namespace {

using testing::HasSubstr;

// By the signal, or as the sanitizer that handles it ends a process.
bool hasCrashed(int status) {
  return WIFSIGNALED(status) || (WIFEXITED(status) && WEXITSTATUS(status) != 0);
}

int descend(int depth) {
  volatile char room[4096] = {};
  return depth < 0 ? room[0] : descend(depth + 1) + room[0];
}

TEST(PluginCall, IsNotCancelled) {
  const platform::Watch watch([](const platform::Progress&) { return false; }, std::chrono::milliseconds(0));
  {
    const PluginCall calling("mine.so", "GetProperties");
    platform::watched(platform::Step::ReadValue);
  }
  EXPECT_FALSE(watch.isCancelled());
  EXPECT_EQ(watch.progress().valuesRead, 0U);
}

TEST(CrashNoticeDeathTest, ACrashNamesThePluginAndTheMethod) {
  EXPECT_EXIT(
      {
        const CrashNotice notice("tool");
        const PluginCall calling("mine.so", "GetProperties");
        std::raise(SIGSEGV);
      },
      hasCrashed, HasSubstr("tool: plug-in mine.so crashed in GetProperties\n"));
}

TEST(CrashNoticeDeathTest, AnAbortDoesTooAndSoDoesTheOuterOfTwoCalls) {
  EXPECT_EXIT(
      {
        const CrashNotice notice("tool");
        const PluginCall outer("outer.so", "GetProperties");
        { const PluginCall inner("inner.so", "Release"); }
        std::abort();
      },
      hasCrashed, HasSubstr("tool: plug-in outer.so crashed in GetProperties\n"));
}

TEST(CrashNoticeDeathTest, AnEndlessRecursionHasStackLeftForTheNotice) {
  EXPECT_EXIT(
      {
        const CrashNotice notice("tool");
        const PluginCall calling("deep.so", "GetCurrentValueData");
        std::exit(descend(0));
      },
      hasCrashed, HasSubstr("plug-in deep.so crashed in GetCurrentValueData"));
}

TEST(CrashNoticeDeathTest, ACrashOutsideOfPluginsBlamesNone) {
  EXPECT_EXIT(
      {
        const CrashNotice notice("tool");
        { const PluginCall calling("mine.so", "GetProperties"); }
        std::raise(SIGSEGV);
      },
      hasCrashed, testing::Not(HasSubstr("plug-in")));
}

}  // namespace
}  // namespace velt::sources
