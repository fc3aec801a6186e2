#include "platform/x11/x11_compositor.h"

#include "platform/x11/x11_selection_watch.h"

namespace lumeno {

X11Compositor::X11Compositor(X11Connection& connection) {
  // A compositor owns this selection while it runs.
  const xcb_atom_t selection = connection.atom("_NET_WM_CM_S0");
  ownerChanges_ = watchSelectionOwner(
      connection, selection, [this](const auto& change) { isPresent_.set(change.owner != XCB_WINDOW_NONE); });
  const auto cookie = xcb_get_selection_owner(connection.xcb(), selection);
  const XcbPtr<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection.xcb(), cookie, nullptr));
  isPresent_.set(reply && reply->owner != XCB_WINDOW_NONE);
}

}  // namespace lumeno
