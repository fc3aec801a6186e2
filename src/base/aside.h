#pragma once

#include <QCoreApplication>
#include <QThreadPool>
#include <atomic>
#include <memory>
#include <optional>
#include <utility>

#include "base/job.h"

namespace lumeno {

/// Runs `work` on a thread of `pool` and then `done` with its result on the main thread, from the event loop.
/// What `done` holds may be let go on either thread. Main thread.
template <typename Work, typename Done>
void finishAside(QThreadPool& pool, Work work, Done done) {
  pool.start([work = std::move(work), done = std::move(done)]() mutable {
    auto result = std::make_shared<decltype(work())>(work());
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [done = std::move(done), result] { done(std::move(*result)); },
        Qt::QueuedConnection);
  });
}

/// As `finishAside`, while the handle is held: when it goes first, `done` is not called, and work that has
/// not begun is skipped.
template <typename Work, typename Done>
[[nodiscard]] Job runAside(QThreadPool& pool, Work work, Done done) {
  using Result = decltype(work());
  const auto isWanted = std::make_shared<std::atomic<bool>>(true);
  finishAside(
      pool,
      [isWanted, work = std::move(work)]() mutable {
        return *isWanted ? std::optional<Result>(work()) : std::nullopt;
      },
      [isWanted, done = std::move(done)](std::optional<Result> result) {
        if (*isWanted) done(std::move(*result));
      });
  return Job([isWanted] { *isWanted = false; });
}

}  // namespace lumeno
