#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "base/geometry.h"
#include "platform/accessibility.h"

namespace lumeno::atspi {

/// What was known on the main thread when a round of reads began. Immutable afterwards.
struct Round {
  ProcessId process = 0;            ///< of the application in front
  uint64_t window = 0;              ///< the active window
  std::optional<Rect> windowFrame;  ///< device pixels
  bool isOwn = false;               ///< one of our own windows has the keyboard: nothing is read
  std::optional<QString> offered;   ///< text that the window offers as freshly selected
  std::function<Rect(const Rect&)> toAccessibilitySpace;  ///< from device pixels; may be called on any thread
};

}  // namespace lumeno::atspi
