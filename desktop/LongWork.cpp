#include "desktop/LongWork.h"

#include <QCoreApplication>
#include <algorithm>
#include <exception>

namespace velt::desktop {

bool LongWork::run(const QString& what, Kind kind, const std::function<void()>& work) {
  isRunning_ = true;
  isShown_ = isCancelled_ = false;
  kind_ = kind;
  clock_.start();
  std::exception_ptr failure;
  try {
    const platform::Watch watch([&](const platform::Progress& progress) { return mayGoOn(what, progress); },
                                std::min(patience_, platform::Watch::usualInterval));
    work();
  } catch (...) {
    failure = std::current_exception();
  }
  isRunning_ = false;
  if (isShown_) Q_EMIT ended();
  if (failure) std::rethrow_exception(failure);
  return !isCancelled_;
}

bool LongWork::mayGoOn(const QString& what, const platform::Progress& progress) {
  if (clock_.elapsed() < patience_.count()) return true;
  if (!isShown_) {
    isShown_ = true;
    Q_EMIT shown(what);
  }
  const bool isKnown = progress.bytesTotal > 0 && progress.bytesDone <= progress.bytesTotal;
  Q_EMIT advanced(isKnown ? static_cast<int>(100 * progress.bytesDone / progress.bytesTotal) : -1);
  QCoreApplication::processEvents();
  return !isCancelled_;
}

}  // namespace velt::desktop
