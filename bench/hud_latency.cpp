// Measures how long the HUD takes to appear, as the X server sees it: from the last event of a real gesture
// to the MapNotify of the HUD's window. Drives the desktop that it runs on; used by bench/desktop_bench.py.
//
//   hud-latency PID drag RUNS X1 Y1 X2 Y2     button release to the pill
//   hud-latency PID summon RUNS X1 Y1 X2 Y2   press of the summon shortcut to the chips
//
// Prints one JSON object with the times in milliseconds.

#include <poll.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr xcb_keycode_t keyEscape = 9, keyAlt = 64, keySpace = 65, keySuper = 133;

class Driver {
 public:
  explicit Driver(uint32_t process) : connection_(xcb_connect(nullptr, nullptr)), process_(process) {
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &mask);
    const auto cookie = xcb_intern_atom(connection_, 0, 11, "_NET_WM_PID");
    auto* reply = xcb_intern_atom_reply(connection_, cookie, nullptr);
    processAtom_ = reply->atom;
    std::free(reply);
  }

  void move(int x, int y) { fake(XCB_MOTION_NOTIFY, 0, x, y); }
  void button(bool press) { fake(press ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, 1, 0, 0); }
  void key(xcb_keycode_t code, bool press) { fake(press ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, 0, 0); }

  void drag(int x1, int y1, int x2, int y2) {
    move(x1, y1);
    pause(30);
    button(true);
    for (int i = 1; i <= 6; ++i) {
      move(x1 + (x2 - x1) * i / 6, y1 + (y2 - y1) * i / 6);
      pause(12);
    }
    button(false);
  }

  /// Whether the HUD was mapped (or unmapped) within the time; `at` tells when.
  bool waitForHud(bool mapped, milliseconds limit, Clock::time_point& at) {
    const auto deadline = Clock::now() + limit;
    while (Clock::now() < deadline) {
      while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
        const uint8_t type = event->response_type & 0x7f;
        xcb_window_t window = 0;
        if (mapped && type == XCB_MAP_NOTIFY)
          window = reinterpret_cast<xcb_map_notify_event_t*>(event)->window;
        if (!mapped && type == XCB_UNMAP_NOTIFY) {
          window = reinterpret_cast<xcb_unmap_notify_event_t*>(event)->window;
        }
        std::free(event);
        if (!window) continue;
        at = Clock::now();
        if (belongsToProcess(window)) return true;
      }
      pollfd file{xcb_get_file_descriptor(connection_), POLLIN, 0};
      poll(&file, 1, 5);
    }
    return false;
  }

  void dropEvents() {
    xcb_flush(connection_);
    while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) std::free(event);
  }

  static void pause(int ms) { std::this_thread::sleep_for(milliseconds(ms)); }

 private:
  void fake(uint8_t type, uint8_t detail, int x, int y) {
    xcb_test_fake_input(connection_, type, detail, XCB_CURRENT_TIME, root_, static_cast<int16_t>(x),
                        static_cast<int16_t>(y), 0);
    xcb_flush(connection_);
  }

  bool belongsToProcess(xcb_window_t window) {
    const auto cookie = xcb_get_property(connection_, 0, window, processAtom_, XCB_ATOM_CARDINAL, 0, 1);
    auto* reply = xcb_get_property_reply(connection_, cookie, nullptr);
    const bool belongs = reply && xcb_get_property_value_length(reply) == 4 &&
                         *static_cast<uint32_t*>(xcb_get_property_value(reply)) == process_;
    std::free(reply);
    return belongs;
  }

  xcb_connection_t* connection_;
  xcb_window_t root_ = 0;
  xcb_atom_t processAtom_ = 0;
  uint32_t process_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 8) {
    std::fputs("usage: hud-latency PID drag|summon RUNS X1 Y1 X2 Y2\n", stderr);
    return 2;
  }
  Driver driver(static_cast<uint32_t>(std::atoi(argv[1])));
  const bool summon = std::strcmp(argv[2], "summon") == 0;
  const int runs = std::atoi(argv[3]);
  const int x1 = std::atoi(argv[4]), y1 = std::atoi(argv[5]), x2 = std::atoi(argv[6]),
            y2 = std::atoi(argv[7]);

  std::vector<double> times;
  int missed = 0;
  for (int i = 0; i < runs; ++i) {
    Clock::time_point shown, hidden;
    driver.dropEvents();
    driver.drag(x1, y1, x2, y2);
    auto start = Clock::now();
    bool seen = driver.waitForHud(true, milliseconds(2000), shown);
    if (seen && summon) {
      // The pill goes first, so that the chips are mapped anew.
      driver.key(keyEscape, true);
      driver.key(keyEscape, false);
      driver.waitForHud(false, milliseconds(2000), hidden);
      Driver::pause(50);
      driver.dropEvents();
      for (const auto code : {keyAlt, keySuper}) driver.key(code, true);
      start = Clock::now();
      driver.key(keySpace, true);
      driver.key(keySpace, false);
      for (const auto code : {keySuper, keyAlt}) driver.key(code, false);
      seen = driver.waitForHud(true, milliseconds(2000), shown);
      driver.key(keyEscape, true);
      driver.key(keyEscape, false);
    }
    if (seen) {
      times.push_back(std::chrono::duration<double, std::milli>(shown - start).count());
    } else {
      ++missed;
    }
    // A press on the selection would drag it away; a click takes it back first.
    driver.move(x1, y1);
    driver.button(true);
    driver.button(false);
    driver.waitForHud(false, milliseconds(1000), hidden);
    Driver::pause(600);  // longer than a double click
  }
  std::sort(times.begin(), times.end());
  const auto at = [&](double q) { return times.empty() ? 0 : times[size_t(q * double(times.size() - 1))]; };
  std::printf("{\"runs\": %d, \"missed\": %d, \"median\": %.1f, \"p95\": %.1f, \"worst\": %.1f}\n", runs,
              missed, at(0.5), at(0.95), at(1));
  return 0;
}
