#pragma once

#include <QQmlEngine>

#include "view_kit/theme.h"

namespace lumeno {

/// What every window of the program is made with: the one QML engine, its image providers and the shared
/// building blocks of `qml/`, which see the theme as `theme`. Sharing the engine keeps each further window
/// cheap. Main thread; windows must go before it.
class ViewKit {
 public:
  /// The theme must outlive the kit.
  explicit ViewKit(Theme& theme);
  ViewKit(const ViewKit&) = delete;
  ViewKit& operator=(const ViewKit&) = delete;

  [[nodiscard]] QQmlEngine& engine() { return engine_; }
  [[nodiscard]] Theme& theme() { return theme_; }

  /// Gives back what only windows that have gone needed.
  void releaseUnused();

 private:
  Theme& theme_;
  QQmlEngine engine_;
};

/// Makes the embedded symbols and QML files available; may be called again.
void initializeViewKitResources();

}  // namespace lumeno
