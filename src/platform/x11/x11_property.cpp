#include "platform/x11/x11_property.h"

namespace lumeno {

namespace {

// Enough for a list of many thousand windows, in units of four bytes.
constexpr uint32_t longestProperty = 1 << 16;

XcbPtr<xcb_get_property_reply_t> read(const X11Connection& connection, xcb_window_t window,
                                      xcb_atom_t property) {
  const auto cookie =
      xcb_get_property(connection.xcb(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
  return XcbPtr<xcb_get_property_reply_t>(xcb_get_property_reply(connection.xcb(), cookie, nullptr));
}

}  // namespace

bool hasProperty(const X11Connection& connection, xcb_window_t window, xcb_atom_t property) {
  const auto reply = read(connection, window, property);
  return reply && reply->type != XCB_ATOM_NONE;
}

std::vector<uint32_t> cardinalProperty(const X11Connection& connection, xcb_window_t window,
                                       xcb_atom_t property) {
  const auto reply = read(connection, window, property);
  if (!reply || reply->format != 32) return {};
  const auto* values = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
  return {values, values + reply->value_len};
}

uint32_t firstCardinal(const X11Connection& connection, xcb_window_t window, xcb_atom_t property) {
  const auto values = cardinalProperty(connection, window, property);
  return values.empty() ? 0 : values.front();
}

QByteArray byteProperty(const X11Connection& connection, xcb_window_t window, xcb_atom_t property) {
  const auto reply = read(connection, window, property);
  if (!reply || reply->format != 8) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          static_cast<qsizetype>(reply->value_len)};
}

}  // namespace lumeno
