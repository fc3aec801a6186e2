#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <functional>

namespace lumeno {

/// Runs the event loop until `condition` holds. False when it does not within the deadline.
inline bool waitUntil(const std::function<bool()>& condition,
                      std::chrono::milliseconds deadline = std::chrono::seconds(20)) {
  QTimer waker;  // conditions may change without an event of this thread
  waker.start(5);
  QElapsedTimer elapsed;
  elapsed.start();
  while (!condition()) {
    if (elapsed.elapsed() > deadline.count()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}

/// Runs the event loop for a while, to see that nothing more happens.
inline void runFor(std::chrono::milliseconds span) {
  waitUntil([] { return false; }, span);
}

}  // namespace lumeno
