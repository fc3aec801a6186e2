#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

#include "base/observable.h"
#include "platform/accessibility.h"

namespace lumeno {

/// The application in front, with the window that is active.
struct RunningApplication {
  std::optional<QString> bundleIdentifier;
  std::optional<QString> localizedName;
  ProcessId processIdentifier = 0;
  uint64_t window = 0;      ///< identity of the active window, 0 when unknown
  bool isTerminal = false;  ///< nothing may be typed into it
  QString applicationId{};  ///< the window system's own name for it, in lower case; empty when unknown
  bool operator==(const RunningApplication&) const = default;
};

/// Which application is in front. Main thread; answers from what is known, never blocks.
class Workspace {
 public:
  virtual ~Workspace() = default;
  /// Absent when there is none. This program itself, when one of its windows has the keyboard.
  [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;
  /// Called after another application or window has come to the front.
  [[nodiscard]] virtual Subscription onActivation(
      std::function<void(const std::optional<RunningApplication>&)> handler) = 0;
  /// This program's own identifier.
  [[nodiscard]] virtual std::optional<QString> ownBundleIdentifier() = 0;
};

}  // namespace lumeno
