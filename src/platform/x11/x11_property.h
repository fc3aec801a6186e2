#pragma once

#include <QByteArray>
#include <vector>

#include "platform/x11/x11_connection.h"

namespace lumeno {

/// Whether a window has a property, of whatever type and value.
[[nodiscard]] bool hasProperty(const X11Connection& connection, xcb_window_t window, xcb_atom_t property);
/// A property of a window as 32-bit numbers; empty when it is absent or has another format.
[[nodiscard]] std::vector<uint32_t> cardinalProperty(const X11Connection& connection, xcb_window_t window,
                                                     xcb_atom_t property);
/// The first number of a property, 0 when there is none.
[[nodiscard]] uint32_t firstCardinal(const X11Connection& connection, xcb_window_t window,
                                     xcb_atom_t property);
/// A property of a window as bytes; empty when it is absent or has another format.
[[nodiscard]] QByteArray byteProperty(const X11Connection& connection, xcb_window_t window,
                                      xcb_atom_t property);

}  // namespace lumeno
