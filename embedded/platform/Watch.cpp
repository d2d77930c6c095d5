#include "embedded/platform/Watch.h"

#include <ctime>
#include <string>
#include <string_view>
#include <utility>

#include "host/com/Cancellation.h"
#include "host/com/ComError.h"

namespace velt::platform {

constinit thread_local Watch* currentWatch [[gnu::tls_model("initial-exec")]] = nullptr;

namespace {

// Not the steady clock of the library, which takes five times as long to read; a few milliseconds do not matter here.
std::chrono::nanoseconds now() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

std::string messageOf(std::wstring_view ascii) {
  return {ascii.begin(), ascii.end()};
}

void count(Progress& progress, Step step) {
  switch (step) {
    case Step::MakeObject:
      ++progress.objectsMade;
      break;
    case Step::ReadValue:
      ++progress.valuesRead;
      break;
    case Step::WriteValue:
      ++progress.valuesWritten;
      break;
    case Step::Other:
      break;
  }
}

}  // namespace

Cancelled::Cancelled() : std::runtime_error(messageOf(cancelledText)) {}

// The watches of this thread, from the innermost to the outermost.
struct WatchedThread {
  // Does `note` to the progress of each watch and asks those whose time has come. Whether one of them cancels now.
  template <class Note>
  static bool isCancelledNow(Note&& note) {
    bool isCancelled = false;
    for (Watch* watch = currentWatch; watch != nullptr; watch = watch->outer_) {
      note(watch->progress_);
      if (!watch->isCancelled_ && isTime(*watch) && !ask(*watch)) watch->isCancelled_ = isCancelled = true;
    }
    return isCancelled;
  }

  static bool isAnyCancelled() {
    for (const Watch* watch = currentWatch; watch != nullptr; watch = watch->outer_) {
      if (watch->isCancelled_) return true;
    }
    return false;
  }

 private:
  static bool isTime(const Watch& watch) { return now() >= watch.askAt_; }

  static bool ask(Watch& watch) {
    const Unwatched meanwhile;
    bool goesOn = false;
    try {
      goesOn = watch.ask_(watch.progress_);
    } catch (...) {  // NOLINT(bugprone-empty-catch): nothing but cancelling can pass through the layer
    }
    watch.askAt_ = now() + watch.interval_;
    return goesOn;
  }
};

Watch::Watch(Ask ask, std::chrono::milliseconds interval)
    : ask_(std::move(ask)), interval_(interval), askAt_(now() + interval), outer_(currentWatch) {
  currentWatch = this;
}

Watch::~Watch() {
  currentWatch = outer_;
}

void watchStep(Step step) {
  if (WatchedThread::isCancelledNow([step](Progress& progress) { count(progress, step); })) {
    _com_raise_error(E_ABORT, cancelledText);
  }
}

void watchBytes(std::uint64_t done, std::uint64_t total) {
  WatchedThread::isCancelledNow([=](Progress& progress) {
    progress.bytesDone = done;
    progress.bytesTotal = total;
  });
  if (WatchedThread::isAnyCancelled()) throw Cancelled();
}

void watchLoading() {
  WatchedThread::isCancelledNow([](Progress&) {});
  if (WatchedThread::isAnyCancelled()) throw Cancelled();
}

}  // namespace velt::platform
