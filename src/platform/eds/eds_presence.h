#pragma once

#include <QDBusConnection>
#include <functional>

#include "base/job.h"

namespace lumeno {

/// Whether there is an Evolution Data Server for this session, running or ready to be started by the bus.
/// Asks the bus each time, since services come and go with packages; starts nothing. Main thread.
class EdsPresence {
 public:
  explicit EdsPresence(QDBusConnection bus = QDBusConnection::sessionBus()) : bus_(std::move(bus)) {}

  /// A bus that does not answer has none.
  [[nodiscard]] Job check(std::function<void(bool isPresent)> done) const;

 private:
  QDBusConnection bus_;
};

}  // namespace lumeno
