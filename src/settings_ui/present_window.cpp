#include "settings_ui/present_window.h"

namespace lumeno {

void presentWindow(QWindow& window) {
  if (window.windowStates() & Qt::WindowMinimized) {
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
  } else {
    // On another virtual desktop, or put away with all windows: shown anew, it comes to where the user is.
    if (window.isVisible() && !window.isExposed()) window.hide();
    window.show();
  }
  window.raise();
  window.requestActivate();
}

}  // namespace lumeno
