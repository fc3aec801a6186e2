#include "platform/x11/x11_server_clock.h"

#include <utility>

namespace lumeno {

X11ServerClock::X11ServerClock(X11Connection& connection)
    : connection_(connection), property_(connection.atom("LUMENO_TIME")) {
  propertyNotify_ = connection_.onEvent(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (notify.window != connection_.helperWindow() || notify.atom != property_ || questions_.empty()) return;
    const auto question = std::move(questions_.front());
    questions_.pop_front();
    if (const auto done = std::exchange(*question, nullptr)) done(notify.time);
  });
}

Job X11ServerClock::now(std::function<void(xcb_timestamp_t)> done) {
  // Appending nothing changes nothing, but is reported with the time.
  xcb_change_property(connection_.xcb(), XCB_PROP_MODE_APPEND, connection_.helperWindow(), property_,
                      XCB_ATOM_STRING, 8, 0, nullptr);
  connection_.flush();
  auto question = std::make_shared<Question>(std::move(done));
  questions_.push_back(question);
  return Job([question = std::move(question)] { *question = nullptr; });
}

}  // namespace lumeno
