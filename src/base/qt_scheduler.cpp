#include "base/qt_scheduler.h"

#include <QTimer>
#include <memory>

namespace lumeno {

namespace {

Job startTimer(std::chrono::milliseconds interval, bool once, std::function<void()> action) {
  auto timer = std::make_shared<QTimer>();
  // Precise timers: a coarse one may come 5 % late, and the settle delay is felt.
  timer->setTimerType(Qt::PreciseTimer);
  timer->setSingleShot(once);
  timer->setInterval(interval);
  QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [weak = std::weak_ptr(timer), action] {
    // Keeps the timer alive when the action destroys its handle.
    const auto keep = weak.lock();
    action();
  });
  timer->start();
  return Job([timer = std::move(timer)]() mutable {
    timer->stop();
    timer.reset();
  });
}

}  // namespace

Job QtScheduler::after(std::chrono::milliseconds delay, std::function<void()> action) {
  return startTimer(delay, true, std::move(action));
}

Job QtScheduler::every(std::chrono::milliseconds interval, std::function<void()> action) {
  return startTimer(interval, false, std::move(action));
}

}  // namespace lumeno
