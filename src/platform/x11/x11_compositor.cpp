#include "platform/x11/x11_compositor.h"

#include "platform/x11/x11_property.h"
#include "platform/x11/x11_selection_watch.h"

namespace lumeno {

X11Compositor::X11Compositor(X11Connection& connection) : connection_(connection) {
  // A compositor owns this selection while it runs.
  const xcb_atom_t selection = connection.atom("_NET_WM_CM_S0");
  ownerChanges_ = watchSelectionOwner(connection, selection, [this](const auto& change) {
    isPresent_ = change.owner != XCB_WINDOW_NONE;
    update();
  });
  const xcb_atom_t blur = connection.atom(blurRegionProperty);
  connection.addWindowEventMask(connection.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
  announcements_ = connection.onEvent(XCB_PROPERTY_NOTIFY, [this, blur](const auto& event) {
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window == connection_.root() && property.atom == blur) update();
  });
  const auto cookie = xcb_get_selection_owner(connection.xcb(), selection);
  const XcbPtr<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection.xcb(), cookie, nullptr));
  isPresent_ = reply && reply->owner != XCB_WINDOW_NONE;
  update();
}

void X11Compositor::update() {
  // One that blurs announces it by a property of the root window, whatever its value.
  const bool blurs =
      isPresent_ && hasProperty(connection_, connection_.root(), connection_.atom(blurRegionProperty));
  seeThrough_.set(blurs ? SeeThrough::blurred : isPresent_ ? SeeThrough::sharp : SeeThrough::nothing);
}

}  // namespace lumeno
