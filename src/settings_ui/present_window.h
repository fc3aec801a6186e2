#pragma once

#include <QWindow>

namespace lumeno {

/// Shows a window in front of all others and where the user is, with the keyboard. Main thread.
void presentWindow(QWindow& window);

}  // namespace lumeno
