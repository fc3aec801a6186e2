#include "platform/x11/x11_connection.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>

namespace lumeno {

std::unique_ptr<X11Connection> X11Connection::open() {
  int screenNumber = 0;
  xcb_connection_t* connection = xcb_connect(nullptr, &screenNumber);
  if (xcb_connection_has_error(connection)) {
    xcb_disconnect(connection);
    return nullptr;
  }
  return std::unique_ptr<X11Connection>(new X11Connection(connection, screenNumber));
}

X11Connection::X11Connection(xcb_connection_t* connection, int screenNumber) : connection_(connection) {
  auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection_));
  for (int i = 0; i < screenNumber && roots.rem > 1; ++i) xcb_screen_next(&roots);
  screen_ = roots.data;

  helperWindow_ = xcb_generate_id(connection_);
  const uint32_t values[] = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
  xcb_create_window(connection_, 0, helperWindow_, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
  eventMasks_.insert(helperWindow_, XCB_EVENT_MASK_PROPERTY_CHANGE);
  flush();

  auto* notifier = new QSocketNotifier(xcb_get_file_descriptor(connection_), QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, &X11Connection::dispatchPending);
  // Waiting for a reply may have read events into the queue, for which the socket will not wake us again.
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
          &X11Connection::dispatchPending);
}

X11Connection::~X11Connection() {
  xcb_disconnect(connection_);
}

xcb_atom_t X11Connection::atom(const QByteArray& name) {
  const auto known = atoms_.constFind(name);
  if (known != atoms_.cend()) return *known;
  const auto cookie = xcb_intern_atom(connection_, 0, static_cast<uint16_t>(name.size()), name.constData());
  const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
  if (!reply) return XCB_ATOM_NONE;
  atoms_.insert(name, reply->atom);
  atomNames_.insert(reply->atom, name);
  return reply->atom;
}

QByteArray X11Connection::atomName(xcb_atom_t atom) {
  const auto known = atomNames_.constFind(atom);
  if (known != atomNames_.cend()) return *known;
  const auto cookie = xcb_get_atom_name(connection_, atom);
  const XcbPtr<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(connection_, cookie, nullptr));
  if (!reply) return {};
  const QByteArray name(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
  atoms_.insert(name, atom);
  atomNames_.insert(atom, name);
  return name;
}

Subscription X11Connection::onEvent(uint8_t responseType, EventHandler handler) {
  auto& signal = handlers_[responseType];
  if (!signal) signal = std::make_shared<Signal<const xcb_generic_event_t&>>();
  return signal->connect(std::move(handler));
}

Subscription X11Connection::onGenericEvent(uint8_t extensionOpcode, EventHandler handler) {
  auto& signal = genericHandlers_[extensionOpcode];
  if (!signal) signal = std::make_shared<Signal<const xcb_generic_event_t&>>();
  return signal->connect(std::move(handler));
}

void X11Connection::addWindowEventMask(xcb_window_t window, uint32_t mask) {
  uint32_t& current = eventMasks_[window];
  if ((current | mask) == current) return;
  current |= mask;
  xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &current);
  flush();
}

void X11Connection::dispatchPending() {
  while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) dispatch(*event);
  if (!isBroken_ && xcb_connection_has_error(connection_)) {
    isBroken_ = true;
    Q_EMIT broken();
  }
  flush();
}

void X11Connection::dispatch(const xcb_generic_event_t& event) {
  const uint8_t type = event.response_type & 0x7f;
  if (type == 0) return;  // the error of an unchecked request, such as one for a window that has just gone
  if (type == XCB_DESTROY_NOTIFY) {
    eventMasks_.remove(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
  }
  const bool generic = type == XCB_GE_GENERIC;
  const auto& table = generic ? genericHandlers_ : handlers_;
  const uint8_t key = generic ? reinterpret_cast<const xcb_ge_generic_event_t&>(event).extension : type;
  // By value: a handler may subscribe, which may move the table.
  const auto signal = table.value(key);
  if (signal) signal->emit(event);
}

}  // namespace lumeno
