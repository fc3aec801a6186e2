#include "platform/freedesktop/run_aside.h"

#include <QCoreApplication>
#include <QThreadPool>

namespace lumeno {

void runAside(std::function<bool()> work, std::function<void(bool)> done) {
  QThreadPool::globalInstance()->start([work = std::move(work), done = std::move(done)] {
    const bool result = work();
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [done, result] { done(result); }, Qt::QueuedConnection);
  });
}

}  // namespace lumeno
