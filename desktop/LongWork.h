#pragma once

// Work that may take long, in a window that stays alive meanwhile: it shows how far the work is, and can end it.
//
// All of it happens in the one thread that there is: from inside the work, now and then, the events that have come are
// handled. So whatever handles an event must look whether work is running before it changes what is being worked on.
// Work that is done within a moment handles no events and shows nothing.

#include <QElapsedTimer>
#include <QObject>
#include <chrono>
#include <functional>

#include "embedded/platform/Watch.h"

namespace velt::desktop {

class LongWork : public QObject {
  Q_OBJECT

 public:
  // What startOver() does to the work.
  enum class Kind { startsOver, goesOn };

  using QObject::QObject;

  // Runs the work and passes on what it throws: after a cancellation palette::Cancelled or platform::Cancelled, unless
  // the work answers it itself. False when it was cancelled. Not while other work runs.
  bool run(const QString& what, Kind kind, const std::function<void()>& work);
  [[nodiscard]] bool isRunning() const { return isRunning_; }

  // Ends the work as soon as possible.
  void cancel() { isCancelled_ = true; }
  // Ends it when it is of no use any more, because something else was selected; other work goes on.
  void startOver() {
    if (kind_ == Kind::startsOver) cancel();
  }

  // How long nothing is shown.
  void setPatience(std::chrono::milliseconds patience) { patience_ = patience; }

 Q_SIGNALS:
  // Only of work that takes longer.
  void shown(const QString& what);
  // From 0 to 100; -1 when nobody knows.
  void advanced(int percent);
  void ended();

 private:
  bool mayGoOn(const QString& what, const platform::Progress& progress);

  static constexpr std::chrono::milliseconds usualPatience{300};
  std::chrono::milliseconds patience_ = usualPatience;
  QElapsedTimer clock_;
  Kind kind_ = Kind::goesOn;
  bool isRunning_ = false;
  bool isShown_ = false;
  bool isCancelled_ = false;
};

}  // namespace velt::desktop
