#pragma once

#include <xcb/xfixes.h>

#include <functional>

#include "base/observable.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// Tells of every change of a selection's owner, including its owner's end. Where the server cannot tell,
/// nothing ever comes.
[[nodiscard]] Subscription watchSelectionOwner(
    X11Connection& connection, xcb_atom_t selection,
    std::function<void(const xcb_xfixes_selection_notify_event_t&)> handler);

}  // namespace lumeno
