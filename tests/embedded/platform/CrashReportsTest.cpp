#include "embedded/platform/CrashReports.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

namespace velt::platform {
namespace {

class CrashReportsTest : public testing::Test {
 protected:
  void SetUp() override { CrashReports::clear(); }
  void TearDown() override {
    CrashReports::setRecording(true);
    CrashReports::clear();
  }
};

void report(Velt::ErrorStatus status) {
  const TqErrorStatus error(status);
  veltGetCrashRecorder()->report(&error);
}

TEST_F(CrashReportsTest, CollectWhatIsReportedInOrderUntilItIsTaken) {
  report(Velt::eInvalidIndex);
  report(Velt::eOutOfMemory);
  const auto reports = CrashReports::take();
  ASSERT_EQ(2U, reports.size());
  EXPECT_EQ(Velt::eInvalidIndex, reports[0].status);
  EXPECT_EQ(Velt::eOutOfMemory, reports[1].status);
  EXPECT_TRUE(CrashReports::take().empty());
}

TEST_F(CrashReportsTest, KeepNothingOfTheErrorItself) {
  auto error = std::make_unique<TqErrorStatus>(Velt::eNoElement);
  veltGetCrashRecorder()->report(error.get());
  error.reset();
  EXPECT_EQ(Velt::eNoElement, CrashReports::take().at(0).status);
}

TEST_F(CrashReportsTest, AskTheErrorForItsStatus) {
  class Derived : public TqErrorStatus {
   public:
    Derived() : TqErrorStatus(Velt::eOk) {}
    [[nodiscard]] Velt::ErrorStatus status() const override { return Velt::eWasErased; }
  };
  const Derived error;
  veltGetCrashRecorder()->report(&error);
  EXPECT_EQ(Velt::eWasErased, CrashReports::take().at(0).status);
}

TEST_F(CrashReportsTest, AttachNotesToTheReportThatFollows) {
  VeltCrashRecorder* recorder = veltGetCrashRecorder();
  recorder->addNote(L"first");
  recorder->addNote(nullptr);
  recorder->addNote(L"second");
  report(Velt::eNoElement);
  report(Velt::eNoElement);
  recorder->flush();
  const auto reports = CrashReports::take();
  EXPECT_EQ((std::vector<std::wstring>{L"first", L"second"}), reports.at(0).notes);
  EXPECT_TRUE(reports.at(1).notes.empty());
}

TEST_F(CrashReportsTest, CountAReportWithoutAnErrorAsInvalid) {
  veltGetCrashRecorder()->report(nullptr);
  EXPECT_EQ(Velt::eInvalidInput, CrashReports::take().at(0).status);
}

TEST_F(CrashReportsTest, ARecorderThatIsOffIsNull) {
  CrashReports::setRecording(false);
  EXPECT_EQ(nullptr, veltGetCrashRecorder());
  CrashReports::setRecording(true);
  EXPECT_NE(nullptr, veltGetCrashRecorder());
}

TEST_F(CrashReportsTest, ClearForgetsReportsAndNotes) {
  veltGetCrashRecorder()->addNote(L"note");
  report(Velt::eNoElement);
  veltGetCrashRecorder()->addNote(L"another");
  CrashReports::clear();
  report(Velt::eInvalidIndex);
  const auto reports = CrashReports::take();
  ASSERT_EQ(1U, reports.size());
  EXPECT_TRUE(reports[0].notes.empty());
}

TEST_F(CrashReportsTest, ALoopOfReportsDoesNotEatTheMemory) {
  for (int i = 0; i < 10'005; ++i)
    report(Velt::eInvalidIndex);
  EXPECT_EQ(5U, CrashReports::dropped());
  EXPECT_EQ(10'000U, CrashReports::take().size());
  EXPECT_EQ(0U, CrashReports::dropped());
}

TEST_F(CrashReportsTest, ThreadsMayReportAtOnce) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int n = 0; n < 500; ++n)
        report(Velt::eNoElement);
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(2000U, CrashReports::take().size());
}

}  // namespace
}  // namespace velt::platform
