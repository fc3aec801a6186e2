#include "core/app/window_shortcuts.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace lumeno {

WindowShortcuts::WindowShortcuts(Tray& tray, std::function<bool(const QObject* window)> listens)
    : tray_(tray), listens_(std::move(listens)) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool WindowShortcuts::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWindowType() || !listens_(watched)) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  return !key.isAutoRepeat() && tray_.handleShortcut(key.keyCombination());
}

}  // namespace lumeno
