#include "platform/x11/x11_selection_watch.h"

namespace lumeno {

Subscription watchSelectionOwner(X11Connection& connection, xcb_atom_t selection,
                                 std::function<void(const xcb_xfixes_selection_notify_event_t&)> handler) {
  xcb_connection_t* const xcb = connection.xcb();
  const auto* extension = xcb_get_extension_data(xcb, &xcb_xfixes_id);
  if (!extension || !extension->present) return {};
  // The extension serves only clients that have said which version they speak.
  const XcbPtr<xcb_xfixes_query_version_reply_t> version(
      xcb_xfixes_query_version_reply(xcb, xcb_xfixes_query_version(xcb, 5, 0), nullptr));
  if (!version) return {};

  xcb_xfixes_select_selection_input(xcb, connection.helperWindow(), selection,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  connection.flush();
  const auto type = static_cast<uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
  return connection.onEvent(
      type, [selection, handler = std::move(handler)](const xcb_generic_event_t& event) {
        const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (notify.selection == selection) handler(notify);
      });
}

}  // namespace lumeno
