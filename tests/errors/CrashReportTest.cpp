#include "errors/CrashReport.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>

#include "host/platform/CrashRecorder.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/ReplacedAllocation.h"

namespace {

// What happened to error objects, in order: "made 6", "recorder", "told 6", "destroyed 6". Kept without allocating.
struct Events {
  void add(const char* what, int status = -1) {
    const std::size_t used = std::strlen(text.data());
    if (status < 0) {
      std::snprintf(text.data() + used, text.size() - used, "%s;", what);
    } else {
      std::snprintf(text.data() + used, text.size() - used, "%s %d;", what, status);
    }
  }
  std::string take() {
    const std::string all = text.data();
    text = {};
    return all;
  }
  std::array<char, 500> text{};
};

Events events;
const TqErrorStatus* lastMade = nullptr;
const TqErrorStatus* lastTold = nullptr;

struct Recorder final : VeltCrashRecorder {
  void addNote(const wchar_t*) override { events.add("note"); }
  void flush() override { events.add("flush"); }
  void report(const TqErrorStatus* error) override {
    events.add("told", error->status());
    lastTold = error;
  }
};

Recorder recorder;
bool hasRecorder = true;

}  // namespace

// An error object and a recorder that take the place of the host's own.

TqErrorStatus::TqErrorStatus(Velt::ErrorStatus status) : status_(status) {
  events.add("made", status);
  lastMade = this;
}

TqErrorStatus::~TqErrorStatus() {
  events.add("destroyed", status_);
}

Velt::ErrorStatus TqErrorStatus::status() const {
  return status_;
}

VeltCrashRecorder* veltGetCrashRecorder() {
  events.add("recorder");
  return hasRecorder ? &recorder : nullptr;
}

namespace velt::errors {
namespace {

using tests::AllocationSpy;

class CrashReport : public ::testing::Test {
 protected:
  CrashReport() {
    events = {};
    lastMade = lastTold = nullptr;
    hasRecorder = true;
  }
};

TEST_F(CrashReport, MakesAnErrorTellsTheRecorderAndDestroysIt) {
  reportToCrashRecorder(Velt::eOutOfMemory);
  EXPECT_EQ(events.take(), "made 6;recorder;told 6;destroyed 6;");
  EXPECT_NE(lastMade, nullptr);
  EXPECT_EQ(lastTold, lastMade);
}

TEST_F(CrashReport, TheErrorLivesOnTheHeapForTheTimeOfTheReport) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  const AllocationSpy spy;
  reportToCrashRecorder(Velt::eInvalidIndex);
  EXPECT_EQ(spy.counts().news, 1u);
  EXPECT_EQ(spy.counts().deletes, 1u);
}

TEST_F(CrashReport, CarriesTheStatusesOfTheContainer) {
  reportToCrashRecorder(Velt::eNoElement);
  EXPECT_EQ(events.take(), "made 2;recorder;told 2;destroyed 2;");
  reportToCrashRecorder(Velt::eInvalidIndex);
  EXPECT_EQ(events.take(), "made 24;recorder;told 24;destroyed 24;");
}

TEST_F(CrashReport, IsLostWithoutHarmWhenTheHostHasNoRecorder) {
  hasRecorder = false;
  reportToCrashRecorder(Velt::eOutOfMemory);
  EXPECT_EQ(events.take(), "made 6;recorder;destroyed 6;");
}

TEST_F(CrashReport, AsksForTheRecorderAnewEachTime) {
  hasRecorder = false;
  reportToCrashRecorder(Velt::eOutOfMemory);
  hasRecorder = true;
  reportToCrashRecorder(Velt::eOutOfMemory);
  EXPECT_EQ(events.take(), "made 6;recorder;destroyed 6;made 6;recorder;told 6;destroyed 6;");
}

TEST_F(CrashReport, IsLostWithoutHarmWhenThereIsNoMemoryForTheError) {
  if (!AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  {
    const AllocationSpy fault = AllocationSpy::failFrom(1);
    EXPECT_NO_THROW(reportToCrashRecorder(Velt::eOutOfMemory));
    EXPECT_EQ(fault.counts().failures, 1u);
  }
  const std::string happened = events.take();
  EXPECT_EQ(happened.find("told"), std::string::npos) << happened;
  EXPECT_EQ(happened.find("made"), std::string::npos) << happened;
}

TEST(VeltCrashRecorder, TakesReportsThroughTheThirdEntryOfItsFunctionTable) {
  // A pointer to a virtual member holds one more than the offset in the function table.
  const auto entry = &VeltCrashRecorder::report;
  std::array<std::uintptr_t, 2> bits{};
  static_assert(sizeof entry == sizeof bits);
  std::memcpy(bits.data(), &entry, sizeof bits);
  EXPECT_EQ(bits[0], 2 * sizeof(void*) + 1);
}

}  // namespace
}  // namespace velt::errors
