#pragma once

#include <QObject>
#include <functional>

#include "core/app/tray.h"

namespace lumeno {

/// The shortcuts of the tray's menu, in our own windows. Main thread.
class WindowShortcuts final : public QObject {
  Q_OBJECT
 public:
  /// `listens` says whether keys that come to a window may be shortcuts there. Make it after the application;
  /// the tray must outlive it.
  WindowShortcuts(Tray& tray, std::function<bool(const QObject* window)> listens);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Tray& tray_;
  std::function<bool(const QObject* window)> listens_;
};

}  // namespace lumeno
