#pragma once

#include <QString>
#include <optional>

#include "base/geometry.h"

namespace lumeno {

/// A text selection as observed in another application.
struct Selection {
  QString text;                      ///< as read, not trimmed
  QString sourceApp;                 ///< display name of the application that owns it
  std::optional<Rect> screenBounds;  ///< accessibility space; absent when the source cannot tell
  bool operator==(const Selection&) const = default;
};

}  // namespace lumeno
