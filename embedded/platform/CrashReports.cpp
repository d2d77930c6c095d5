#include "embedded/platform/CrashReports.h"

#include <atomic>
#include <mutex>
#include <new>
#include <utility>

namespace {

using velt::platform::CrashReport;

constexpr std::size_t mostReports = 10'000;

class Recorder final : public VeltCrashRecorder {
 public:
  void addNote(const wchar_t* note) override {
    const std::lock_guard lock(mutex_);
    if (note != nullptr && notes_.size() < mostReports) keep([&] { notes_.emplace_back(note); });
  }

  // Nothing is written anywhere: reports are kept in memory.
  void flush() override {}

  void report(const TqErrorStatus* error) override {
    const Velt::ErrorStatus status = error != nullptr ? error->status() : Velt::eInvalidInput;
    const std::lock_guard lock(mutex_);
    if (reports_.size() == mostReports) {
      ++dropped_;
      return;
    }
    keep([&] { reports_.push_back({status, std::exchange(notes_, {})}); });
  }

  std::vector<CrashReport> take() {
    const std::lock_guard lock(mutex_);
    dropped_ = 0;
    notes_.clear();
    return std::exchange(reports_, {});
  }

  std::size_t dropped() {
    const std::lock_guard lock(mutex_);
    return dropped_;
  }

 private:
  template <class Step>
  void keep(Step step) {
    try {
      step();
    } catch (const std::bad_alloc&) {
      // Most reports are about exhausted memory, so this is to be expected.
      ++dropped_;
    }
  }

  std::mutex mutex_;
  std::vector<CrashReport> reports_;
  std::vector<std::wstring> notes_;
  std::size_t dropped_ = 0;
};

// Never destroyed: vectors of static objects report while the process ends.
Recorder& recorder() {
  static Recorder& instance = *new Recorder;
  return instance;
}

constinit std::atomic<bool> recording{true};

}  // namespace

TqErrorStatus::TqErrorStatus(Velt::ErrorStatus status) : status_(status) {}

TqErrorStatus::~TqErrorStatus() = default;

Velt::ErrorStatus TqErrorStatus::status() const {
  return status_;
}

VeltCrashRecorder* veltGetCrashRecorder() {
  return recording.load(std::memory_order_relaxed) ? &recorder() : nullptr;
}

namespace velt::platform {

std::vector<CrashReport> CrashReports::take() {
  return recorder().take();
}

void CrashReports::clear() {
  [[maybe_unused]] const auto forgotten = recorder().take();
}

std::size_t CrashReports::dropped() {
  return recorder().dropped();
}

void CrashReports::setRecording(bool on) {
  recording.store(on, std::memory_order_relaxed);
}

}  // namespace velt::platform
