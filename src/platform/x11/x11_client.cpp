#include "platform/x11/x11_client.h"

#include <xcb/res.h>

namespace lumeno {

bool isSameClient(const X11Connection& connection, xcb_window_t a, xcb_window_t b) {
  const uint32_t clientBits = ~xcb_get_setup(connection.xcb())->resource_id_mask;
  return a != XCB_WINDOW_NONE && b != XCB_WINDOW_NONE && (a & clientBits) == (b & clientBits);
}

std::optional<ProcessId> processOfWindow(const X11Connection& connection, xcb_window_t window) {
  xcb_connection_t* const xcb = connection.xcb();
  const auto* extension = xcb_get_extension_data(xcb, &xcb_res_id);
  if (window == XCB_WINDOW_NONE || !extension || !extension->present) return std::nullopt;
  const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const XcbPtr<xcb_res_query_client_ids_reply_t> reply(
      xcb_res_query_client_ids_reply(xcb, xcb_res_query_client_ids(xcb, 1, &spec), nullptr));
  if (!reply) return std::nullopt;
  for (auto it = xcb_res_query_client_ids_ids_iterator(reply.get()); it.rem > 0;
       xcb_res_client_id_value_next(&it)) {
    if (xcb_res_client_id_value_value_length(it.data) < 1) continue;
    return static_cast<ProcessId>(*xcb_res_client_id_value_value(it.data));
  }
  return std::nullopt;
}

}  // namespace lumeno
