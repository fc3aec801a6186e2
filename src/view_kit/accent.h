#pragma once

#include <QColor>
#include <QRgb>
#include <optional>

#include "core/settings/settings_enums.h"

namespace lumeno {

/// The three uses of an accent: the fill of prominent buttons, the text on it, and lines (outline, caret,
/// focus).
struct AccentColors {
  QColor fill;
  QColor onFill;
  QColor line;
  bool operator==(const AccentColors&) const = default;
};

/// The contrast ratio of two opaque colours, 1 to 21.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);

/// The colours of a theme in the light or the dark scheme. `system` takes the desktop's own accent where
/// there is one, made lighter or darker until text on it and lines on `card` can be seen.
[[nodiscard]] AccentColors accentColors(AccentTheme theme, std::optional<QRgb> desktopAccent, bool dark,
                                        const QColor& card);

}  // namespace lumeno
