#pragma once

// Watching long work: how far it is, and whether it is to go on.
//
//   platform::Watch watch([&](const platform::Progress& progress) {
//     window.show(progress.valuesRead);
//     return !window.isCancelPressed();  // false cancels
//   });
//   selection.query();
//
// While a watch lives it is asked every 20 milliseconds, from inside the calls that its thread makes to the host: when
// automation objects are made, read and written, and when drawings are loaded and saved. Work that is done sooner never
// asks. Once it has answered false it is not asked again, and what was running ends:
//
// - Loading and saving throw Cancelled. There is no drawing then, or the file is as it was. So do later loads and saves in
//   the life of the watch, so that nobody saves what is half done.
// - A call of the property layer ends as after any failure, because the host's call throws a _com_error with E_ABORT and
//   cancelledText; the palette library makes a palette::Cancelled of it. Later calls are not watched: whoever was
//   cancelled can find out how far it came.
// - A write ends between two entities. Those before are written, those after are not (palette::Report tells which), and
//   Drawing::record() and Drawing::undo() put them back. Only the dynamic rows are written to all entities at once.
// - GetPropInfoValue, which has no failure, answers a record whose value was not read.
//
// Nothing leaks: what a query had read is given back.
//
// Without a watch nothing happens, and a call pays for looking whether there is one; with one, for looking at the clock.
//
// Ownership: a watch belongs to the block that it stands in.
// Threads: it watches the calls of the thread that made it, and ends there.
// Several: all that live on a thread are asked, and each can cancel.
// Reentrance: while a watch is asked, nothing is watched. So it may let a window handle events, and these may ask the
// host; they must not change or end what is being worked on. The code of plug-ins is not interrupted either; property
// sources that a program registers itself hold an Unwatched while they ask the host.
// Failure: what it throws counts as false.

#include <chrono>
#include <cstdint>
#include <functional>
#include <stdexcept>

namespace velt::platform {

// What was done since the watch was made.
struct Progress {
  // Of the drawing that is being loaded or saved, or was last. Both 0 when there was none.
  std::uint64_t bytesDone = 0;
  std::uint64_t bytesTotal = 0;
  // Automation objects, one for each entity of a selection.
  std::uint64_t objectsMade = 0;
  // Values of properties and elements, one for each row and entity: at most, because a row is not read any more once it
  // is known to vary. How many there will be is not known.
  std::uint64_t valuesRead = 0;
  std::uint64_t valuesWritten = 0;
};

// Thrown by loading and saving.
class Cancelled : public std::runtime_error {
 public:
  Cancelled();
};

class Watch {
 public:
  // Whether to go on.
  using Ask = std::function<bool(const Progress&)>;

  static constexpr std::chrono::milliseconds usualInterval{20};

  // At most once in each interval; of 0, at every call.
  explicit Watch(Ask ask, std::chrono::milliseconds interval = usualInterval);
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
  ~Watch();

  // Whether it has answered false.
  [[nodiscard]] bool isCancelled() const noexcept { return isCancelled_; }
  [[nodiscard]] const Progress& progress() const noexcept { return progress_; }

 private:
  friend struct WatchedThread;

  const Ask ask_;
  const std::chrono::nanoseconds interval_;
  // On the clock of the implementation.
  std::chrono::nanoseconds askAt_;
  Progress progress_;
  bool isCancelled_ = false;
  // The one that was made before and lives on.
  Watch* const outer_;
};

// --- for the host ----------------------------------------------------------------------------------------------------

// The innermost watch of this thread. Null without one, and while nothing is to be interrupted. Only watches set it.
extern constinit thread_local Watch* currentWatch [[gnu::tls_model("initial-exec")]];

// What a call to the host is about to do.
enum class Step { MakeObject, ReadValue, WriteValue, Other };

// Counts the step and asks, when it is time.
void watchStep(Step step);
void watchBytes(std::uint64_t done, std::uint64_t total);
void watchLoading();

// At the beginning of a call, before it has any effect; only of one that the layer lets pass exceptions of: see above for
// what is thrown.
inline void watched(Step step) {
  if (currentWatch != nullptr) [[unlikely]]
    watchStep(step);
}

// The same while a drawing is loaded or saved. Throws Cancelled.
inline void watchedBytes(std::uint64_t done, std::uint64_t total) {
  if (currentWatch != nullptr) [[unlikely]]
    watchBytes(done, total);
}
// While a drawing is loaded whose bytes have been read.
inline void watchedLoading() {
  if (currentWatch != nullptr) [[unlikely]]
    watchLoading();
}

// As long as it lives, nothing is watched on this thread.
class Unwatched {
 public:
  Unwatched() noexcept : watch_(currentWatch) { currentWatch = nullptr; }
  Unwatched(const Unwatched&) = delete;
  Unwatched& operator=(const Unwatched&) = delete;
  ~Unwatched() { currentWatch = watch_; }

 private:
  Watch* const watch_;
};

}  // namespace velt::platform
