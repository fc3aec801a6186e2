#pragma once

#include <QCoreApplication>
#include <QThreadPool>
#include <atomic>
#include <memory>
#include <utility>

#include "base/job.h"

namespace lumeno {

/// Runs `work` on a thread of `pool` and then `done` with its result on the main thread, from the event loop.
/// When the handle goes first, `done` is not called, and work that has not begun is skipped. What `done`
/// holds may be let go on either thread. Main thread.
template <typename Work, typename Done>
[[nodiscard]] Job runAside(QThreadPool& pool, Work work, Done done) {
  const auto isWanted = std::make_shared<std::atomic<bool>>(true);
  pool.start([isWanted, work = std::move(work), done = std::move(done)]() mutable {
    if (!*isWanted) return;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [isWanted, done = std::move(done), result = std::make_shared<decltype(work())>(work())] {
          if (*isWanted) done(std::move(*result));
        },
        Qt::QueuedConnection);
  });
  return Job([isWanted] { *isWanted = false; });
}

}  // namespace lumeno
