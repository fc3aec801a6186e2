#include "platform/x11/x11_input.h"

#include <xcb/xinput.h>

#include <algorithm>

#include "platform/x11/x11_key_map.h"

namespace lumeno {

using namespace std::chrono_literals;

namespace {

constexpr auto firstCheck = 2s;
constexpr auto secondCheck = 100ms;

constexpr uint32_t escapeKeysym = 0xff1b;

constexpr bool isWheel(uint32_t button) {
  return button >= 4 && button <= 7;
}

// Shift, Ctrl, Alt, Super and the locks; AltGr and the switches between layouts; Mode switch and Num Lock.
constexpr bool isModifierKey(uint32_t keysym) {
  return (keysym >= 0xffe1 && keysym <= 0xffee) || (keysym >= 0xfe01 && keysym <= 0xfe13) ||
         keysym == 0xff7e || keysym == 0xff7f;
}

}  // namespace

X11Input::X11Input(X11Connection& connection, OwnWindows& ownWindows, Scheduler& scheduler)
    : connection_(connection),
      ownWindows_(ownWindows),
      scheduler_(scheduler),
      keyboard_(connection),
      root_(connection.root()) {
  xcb_connection_t* xcb = connection_.xcb();
  const auto* extension = xcb_get_extension_data(xcb, &xcb_input_id);
  if (!extension || !extension->present) return;
  // Before 2.1 raw events stop during other clients' grabs.
  const auto version = xcb_input_xi_query_version(xcb, 2, 2);
  const XcbPtr<xcb_input_xi_query_version_reply_t> spoken(
      xcb_input_xi_query_version_reply(xcb, version, nullptr));
  if (!spoken || spoken->major_version < 2) return;
  isAvailable_ = true;

  const auto pointer = xcb_input_xi_get_client_pointer(xcb, XCB_WINDOW_NONE);
  const XcbPtr<xcb_input_xi_get_client_pointer_reply_t> device(
      xcb_input_xi_get_client_pointer_reply(xcb, pointer, nullptr));
  if (device && device->set) pointerDevice_ = device->deviceid;

  events_ =
      connection_.onGenericEvent(extension->major_opcode, [this](const auto& event) { handleEvent(event); });
  struct {
    xcb_input_event_mask_t head;
    uint32_t mask;
  } const selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                    XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
                        XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS |
                        XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE};
  xcb_input_xi_select_events(xcb, root_, 1, &selection.head);
  connection_.flush();
}

Subscription X11Input::monitorKeyDown(std::function<void(KeyPress)> handler) {
  return isAvailable_ ? keyDown_.connect(std::move(handler)) : Subscription();
}

Subscription X11Input::monitorMouseDown(std::function<void()> handler) {
  return isAvailable_ ? mouseDown_.connect(std::move(handler)) : Subscription();
}

Subscription X11Input::onGestureEnd(std::function<void()> handler) {
  return gestureEnd_.connect(std::move(handler));
}

Subscription X11Input::recordKeys(std::function<void(KeyPress)> handler) {
  if (!isAvailable_) return {};
  // Every event carries the number of the last request that the server had seen before it. The answer to this
  // one means that from now on it has.
  const auto mark = xcb_get_input_focus(connection_.xcb());
  const XcbPtr<xcb_get_input_focus_reply_t> seen(xcb_get_input_focus_reply(connection_.xcb(), mark, nullptr));
  const uint32_t since = mark.sequence;
  return recordedKey_.connect([since, handler = std::move(handler)](KeyPress key, uint32_t sequence) {
    if (static_cast<int32_t>(sequence - since) >= 0) handler(key);
  });
}

void X11Input::expectSynthetic(const std::vector<SyntheticKey>& keys) {
  expected_.insert(expected_.end(), keys.begin(), keys.end());
}

void X11Input::handleEvent(const xcb_generic_event_t& event) {
  // Key and button events have one layout.
  const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
  switch (raw.event_type) {
    case XCB_INPUT_RAW_KEY_PRESS:
    case XCB_INPUT_RAW_KEY_RELEASE:
      handleKey({.keycode = static_cast<xcb_keycode_t>(raw.detail),
                 .isPress = raw.event_type == XCB_INPUT_RAW_KEY_PRESS,
                 .isRepeat = (raw.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0,
                 .time = raw.time,
                 .sequence = raw.full_sequence});
      break;
    case XCB_INPUT_RAW_BUTTON_PRESS:
    case XCB_INPUT_RAW_BUTTON_RELEASE:
      handleButton(raw.detail, raw.event_type == XCB_INPUT_RAW_BUTTON_PRESS, raw.time);
      break;
  }
}

void X11Input::handleKey(const RawKey& key) {
  const xcb_keycode_t keycode = key.keycode;
  if (isSynthetic(keycode, key.isPress)) return;
  if (key.isPress && !key.isRepeat) tellRecorders(keycode, key.sequence);
  const bool isOurs = ownWindows_.focused().get() != 0;
  if (!key.isPress) {
    if (!isOurs) ++activity_;
    release(keycode);
    return;
  }
  if (isOurs) return;
  ++activity_;
  if (key.isRepeat) return;
  const uint64_t modifiers = keyboard_.modifiers();
  if (canChangeSelection(keyboard_.keysym(keycode), modifiers)) {
    gesture_.press(keycode, key.time);
    watchHeld();
  }
  if (const auto position = X11KeyMap::virtualKey(keycode)) keyDown_.emit({*position, modifiers});
}

void X11Input::tellRecorders(xcb_keycode_t keycode, uint32_t sequence) {
  if (!recordedKey_.hasListeners()) return;
  const uint32_t keysym = keyboard_.keysym(keycode);
  if (isModifierKey(keysym)) return;
  const uint16_t position =
      keysym == escapeKeysym ? escapeKeyCode : X11KeyMap::virtualKey(keycode).value_or(unknownKeyCode);
  recordedKey_.emit({position, keyboard_.modifiers()}, sequence);
}

void X11Input::handleButton(uint32_t button, bool isPress, uint32_t time) {
  if (!isPress && gesture_.held().contains(GestureTracker::button(button))) {
    ++activity_;
    release(GestureTracker::button(button));
    return;
  }
  if (!isPress || ownWindows_.isPointerInside()) return;
  ++activity_;
  if (isWheel(button)) {
    gesture_.scroll();
    return;
  }
  gesture_.press(GestureTracker::button(button), time);
  watchHeld();
  if (button == XCB_BUTTON_INDEX_1 || button == XCB_BUTTON_INDEX_3) mouseDown_.emit();
}

bool X11Input::isSynthetic(xcb_keycode_t keycode, bool isPress) {
  // Our events are sent in one piece, so they come in order, with at most the user's own in between. Those
  // that the server found to be no change may be left out.
  const auto match = std::find_if(expected_.begin(), expected_.end(), [&](const SyntheticKey& key) {
    return key.keycode == keycode && key.isPress == isPress;
  });
  if (match == expected_.end()) return false;
  expected_.erase(expected_.begin(), match + 1);
  return true;
}

void X11Input::release(uint16_t input) {
  suspects_.erase(input);
  if (gesture_.release(input)) gestureEnd_.emit();
}

// A release can get lost (a switch to a text console, a device that is pulled out): then the gesture must not
// last for ever. What the server has twice found to be up, with time between for the release still on its
// way, is let go.
void X11Input::watchHeld() {
  if (!watchdog_) watchdog_ = scheduler_.after(firstCheck, [this] { checkHeld(); });
}

void X11Input::checkHeld() {
  watchdog_.cancel();
  const auto keys = keyboard_.keysDown();
  const bool button = isAnyButtonDown();  // raw events number buttons as wired, the server's state as mapped
  std::set<uint16_t> up;
  for (const uint16_t input : gesture_.held()) {
    const bool isDown =
        GestureTracker::isButton(input) ? button : std::find(keys.begin(), keys.end(), input) != keys.end();
    if (!isDown) up.insert(input);
  }
  const auto before = std::exchange(suspects_, up);
  if (gesture_.isInProgress()) {
    watchdog_ = scheduler_.after(up.empty() ? std::chrono::milliseconds(firstCheck) : secondCheck,
                                 [this] { checkHeld(); });
  }
  for (const uint16_t input : up) {
    if (before.contains(input)) release(input);
  }
}

bool X11Input::isAnyButtonDown() const {
  const auto cookie = xcb_input_xi_query_pointer(connection_.xcb(), root_, pointerDevice_);
  const XcbPtr<xcb_input_xi_query_pointer_reply_t> reply(
      xcb_input_xi_query_pointer_reply(connection_.xcb(), cookie, nullptr));
  if (!reply) return false;
  const uint32_t* buttons = xcb_input_xi_query_pointer_buttons(reply.get());
  return std::any_of(buttons, buttons + reply->buttons_len, [](uint32_t mask) { return mask != 0; });
}

}  // namespace lumeno
