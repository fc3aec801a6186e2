#pragma once

#include <QRgb>
#include <optional>

#include "base/observable.h"

namespace lumeno {

/// How the desktop wants programs to look and move.
struct AppearancePreferences {
  bool dark = false;
  bool reduceMotion = false;
  bool highContrast = false;
  std::optional<QRgb> accent;  ///< the desktop's own accent colour, where it has one
  bool operator==(const AppearancePreferences&) const = default;
};

/// Follows the desktop's settings. Main thread; the first value is the default until the desktop has
/// answered.
class Appearance {
 public:
  virtual ~Appearance() = default;
  [[nodiscard]] virtual Observable<AppearancePreferences>& preferences() = 0;
};

}  // namespace lumeno
