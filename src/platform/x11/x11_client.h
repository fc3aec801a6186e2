#pragma once

#include <xcb/xcb.h>

#include <optional>

#include "platform/accessibility.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// Whether two windows were made by the same client of the X server.
[[nodiscard]] bool isSameClient(const X11Connection& connection, xcb_window_t a, xcb_window_t b);

/// The process behind a window, as the X server knows it (not as the window claims). Absent for clients on
/// other machines and for windows that are gone. One round trip to the server.
[[nodiscard]] std::optional<ProcessId> processOfWindow(const X11Connection& connection, xcb_window_t window);

}  // namespace lumeno
