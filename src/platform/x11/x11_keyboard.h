#pragma once

#include <optional>
#include <vector>

#include "platform/x11/x11_connection.h"

namespace lumeno {

/// The keyboard's modifiers and layout, as the server keeps them.
///
/// The server tells of every change of the modifiers in the same stream as the raw key events and in order
/// with them, so while a raw event is handled the state is the one that this key met: chords that came and
/// went within one delivery are read right, and so are sticky keys. Main thread.
class X11Keyboard {
 public:
  explicit X11Keyboard(X11Connection& connection);

  /// Shortcut modifier bits now in effect.
  [[nodiscard]] uint64_t modifiers() const { return modifiers_; }
  /// The same, asked of the server now instead of from the stream.
  [[nodiscard]] uint64_t queryModifiers();

  /// What a key yields in the current layout without modifiers; 0 for nothing.
  [[nodiscard]] uint32_t keysym(xcb_keycode_t keycode);
  /// The key that yields `keysym` in the current layout, else in another one of the configured layouts.
  [[nodiscard]] std::optional<xcb_keycode_t> keycodeFor(uint32_t keysym);

  /// The key codes that are down now, asked of the server.
  [[nodiscard]] std::vector<xcb_keycode_t> keysDown() const;

 private:
  void handleEvent(const xcb_generic_event_t& event);
  void loadLayout();
  [[nodiscard]] uint32_t keysymIn(unsigned int group, xcb_keycode_t keycode) const;

  X11Connection& connection_;
  uint64_t modifiers_ = 0;
  unsigned int group_ = 0;
  std::vector<std::vector<uint32_t>> keysymsByGroup_;  ///< unmodified key symbols, by group and key code
  bool isLayoutKnown_ = false;
  Subscription events_;
};

}  // namespace lumeno
