#pragma once

#include <QString>
#include <optional>

#include "platform/workspace.h"

namespace lumeno {

/// The application whose bundle identifier begins with this hides selections in descendants of its focused
/// element.
[[nodiscard]] bool isMail(const std::optional<RunningApplication>& application);

/// Whether the application is known to hide its selections from accessibility (browsers, editors built on
/// one), so that a capture on demand need not ask there.
[[nodiscard]] bool isClipboardFirst(const std::optional<RunningApplication>& application);

/// The display name under which selections of the application are reported.
[[nodiscard]] QString sourceLabel(const std::optional<RunningApplication>& application);

}  // namespace lumeno
