#include "platform/x11/x11_screens.h"

#include <xcb/randr.h>

#include <QGuiApplication>
#include <QScreen>

#include "platform/x11/x11_property.h"

namespace lumeno {

namespace {

// The scale that the toolkit draws with at a place: only then do its windows and ours measure alike.
double scaleAt(Point device) {
  if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return 1;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect geometry = screen->geometry();  // its corner in device pixels, its size in logical ones
    const double scale = screen->devicePixelRatio();
    const Rect native{static_cast<double>(geometry.x()), static_cast<double>(geometry.y()),
                      geometry.width() * scale, geometry.height() * scale};
    if (native.contains(device)) return scale;
  }
  return qGuiApp->devicePixelRatio();
}

struct Monitors {
  std::vector<X11Monitor> list;
  std::size_t primary = 0;
};

Monitors queryMonitors(const X11Connection& connection) {
  Monitors monitors;
  const auto add = [&](const Rect& device) {
    monitors.list.push_back({device, scaleAt({device.midX(), device.midY()})});
  };
  const auto cookie = xcb_randr_get_monitors(connection.xcb(), connection.root(), 1);
  const XcbPtr<xcb_randr_get_monitors_reply_t> reply(
      xcb_randr_get_monitors_reply(connection.xcb(), cookie, nullptr));
  if (reply) {
    auto monitor = xcb_randr_get_monitors_monitors_iterator(reply.get());
    for (; monitor.rem > 0; xcb_randr_monitor_info_next(&monitor)) {
      const auto& info = *monitor.data;
      if (info.width == 0 || info.height == 0) continue;
      if (info.primary) monitors.primary = monitors.list.size();
      add({static_cast<double>(info.x), static_cast<double>(info.y), static_cast<double>(info.width),
           static_cast<double>(info.height)});
    }
  }
  return monitors;
}

// _NET_WM_STRUT_PARTIAL: four thicknesses, then start and (inclusive) end of each.
void appendStruts(const uint32_t* values, std::vector<X11Strut>& struts) {
  using Edge = X11Strut::Edge;
  constexpr Edge edges[] = {Edge::left, Edge::right, Edge::top, Edge::bottom};
  for (int i = 0; i < 4; ++i) {
    if (values[i] == 0) continue;
    struts.push_back({edges[i], static_cast<double>(values[i]), static_cast<double>(values[4 + 2 * i]),
                      values[5 + 2 * i] + 1.0});
  }
}

}  // namespace

X11Screens::X11Screens(X11Connection& connection) : connection_(connection) {
  watch();
}

void X11Screens::watch() {
  const auto forget = [this] { areMonitorsKnown_ = areScreensKnown_ = false; };
  xcb_connection_t* xcb = connection_.xcb();
  const auto* extension = xcb_get_extension_data(xcb, &xcb_randr_id);
  if (extension && extension->present) {
    const auto cookie = xcb_randr_query_version(xcb, 1, 5);
    const XcbPtr<xcb_randr_query_version_reply_t> version(
        xcb_randr_query_version_reply(xcb, cookie, nullptr));
    xcb_randr_select_input(xcb, connection_.root(),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                               XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    monitorEvents_ = connection_.onEvent(extension->first_event + XCB_RANDR_SCREEN_CHANGE_NOTIFY,
                                         [forget](const auto&) { forget(); });
    outputEvents_ =
        connection_.onEvent(extension->first_event + XCB_RANDR_NOTIFY, [forget](const auto&) { forget(); });
  }
  // Monitors that the user defines are told of as a change of the root window only.
  connection_.addWindowEventMask(connection_.root(),
                                 XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
  rootEvents_ = connection_.onEvent(XCB_CONFIGURE_NOTIFY, [this, forget](const auto& event) {
    const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    if (configure.window == connection_.root()) forget();
  });
  // The window manager renews its work area when a panel comes, goes or changes.
  const xcb_atom_t clients = connection_.atom("_NET_CLIENT_LIST");
  const xcb_atom_t area = connection_.atom("_NET_WORKAREA");
  propertyEvents_ = connection_.onEvent(XCB_PROPERTY_NOTIFY, [this, clients, area](const auto& event) {
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window != connection_.root()) return;
    if (property.atom == clients || property.atom == area) areScreensKnown_ = false;
  });
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
    const auto follow = [this, forget](QScreen* screen) {
      connect(screen, &QScreen::geometryChanged, this, forget);
      connect(screen, &QScreen::logicalDotsPerInchChanged, this, forget);
      forget();
    };
    for (QScreen* screen : QGuiApplication::screens()) follow(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, follow);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, forget);
  }
}

const X11Coordinates& X11Screens::coordinates() {
  if (!areMonitorsKnown_) {
    auto monitors = queryMonitors(connection_);
    if (monitors.list.empty()) monitors.list.push_back({deviceFrame(connection_.root()).value_or(Rect()), 1});
    coordinates_ = X11Coordinates(std::move(monitors.list), monitors.primary);
    areMonitorsKnown_ = true;
  }
  return coordinates_;
}

std::vector<Screen> X11Screens::screens() {
  if (!areScreensKnown_) {
    const Rect desktop = deviceFrame(connection_.root()).value_or(Rect());
    screens_ = coordinates().screens(desktop, struts(desktop), workArea());
    areScreensKnown_ = true;
  }
  return screens_;
}

std::vector<X11Strut> X11Screens::struts(const Rect& desktop) const {
  xcb_connection_t* xcb = connection_.xcb();
  const auto clients =
      cardinalProperty(connection_, connection_.root(), connection_.atom("_NET_CLIENT_LIST"));
  const xcb_atom_t partial = connection_.atom("_NET_WM_STRUT_PARTIAL");
  const xcb_atom_t whole = connection_.atom("_NET_WM_STRUT");
  // All questions first, then all answers: one wait however many windows there are.
  std::vector<xcb_get_property_cookie_t> cookies;
  for (const uint32_t window : clients) {
    cookies.push_back(xcb_get_property(xcb, 0, window, partial, XCB_ATOM_CARDINAL, 0, 12));
    cookies.push_back(xcb_get_property(xcb, 0, window, whole, XCB_ATOM_CARDINAL, 0, 4));
  }
  std::vector<X11Strut> struts;
  for (std::size_t i = 0; i < cookies.size(); i += 2) {
    const XcbPtr<xcb_get_property_reply_t> exact(xcb_get_property_reply(xcb, cookies[i], nullptr));
    const XcbPtr<xcb_get_property_reply_t> rough(xcb_get_property_reply(xcb, cookies[i + 1], nullptr));
    if (exact && exact->format == 32 && exact->value_len == 12) {
      appendStruts(static_cast<const uint32_t*>(xcb_get_property_value(exact.get())), struts);
    } else if (rough && rough->format == 32 && rough->value_len == 4) {
      const auto* thickness = static_cast<const uint32_t*>(xcb_get_property_value(rough.get()));
      const auto right = static_cast<uint32_t>(desktop.width) - 1;
      const auto bottom = static_cast<uint32_t>(desktop.height) - 1;
      const uint32_t values[12] = {
          thickness[0], thickness[1], thickness[2], thickness[3], 0, bottom, 0, bottom, 0, right, 0, right};
      appendStruts(values, struts);
    }
  }
  return struts;
}

Rect X11Screens::workArea() const {
  const auto areas = cardinalProperty(connection_, connection_.root(), connection_.atom("_NET_WORKAREA"));
  const uint32_t desktop =
      firstCardinal(connection_, connection_.root(), connection_.atom("_NET_CURRENT_DESKTOP"));
  const std::size_t first = areas.size() >= 4 * (desktop + 1) ? 4 * desktop : 0;
  if (areas.size() < 4) return {};
  return {static_cast<double>(areas[first]), static_cast<double>(areas[first + 1]),
          static_cast<double>(areas[first + 2]), static_cast<double>(areas[first + 3])};
}

Point X11Screens::mouseLocation() {
  const auto cookie = xcb_query_pointer(connection_.xcb(), connection_.root());
  const XcbPtr<xcb_query_pointer_reply_t> pointer(
      xcb_query_pointer_reply(connection_.xcb(), cookie, nullptr));
  if (!pointer) return {};
  const Rect point = coordinates().deviceToWindowSpace(
      {static_cast<double>(pointer->root_x), static_cast<double>(pointer->root_y), 0, 0});
  return {point.x, point.y};
}

std::optional<Rect> X11Screens::deviceFrame(uint64_t window) {
  xcb_connection_t* xcb = connection_.xcb();
  const auto id = static_cast<xcb_window_t>(window);
  const auto geometryCookie = xcb_get_geometry(xcb, id);
  const auto originCookie = xcb_translate_coordinates(xcb, id, connection_.root(), 0, 0);
  const XcbPtr<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(xcb, geometryCookie, nullptr));
  const XcbPtr<xcb_translate_coordinates_reply_t> origin(
      xcb_translate_coordinates_reply(xcb, originCookie, nullptr));
  if (!geometry || !origin) return std::nullopt;
  return Rect{static_cast<double>(origin->dst_x), static_cast<double>(origin->dst_y),
              static_cast<double>(geometry->width), static_cast<double>(geometry->height)};
}

std::function<Rect(const Rect&)> X11Screens::accessibilitySpaceConverter() {
  return [layout = coordinates()](const Rect& device) { return layout.deviceToAccessibility(device); };
}

Rect X11Screens::toDevice(const Rect& windowSpace) {
  return coordinates().windowSpaceToDevice(windowSpace);
}

}  // namespace lumeno
