#pragma once

#include <cstdint>
#include <set>

namespace lumeno {

/// Whether a key press can change what is selected: moving the caret (also with Ctrl, with or without Shift),
/// typing, and Ctrl+A. Other combinations do not count, so that a shortcut never ends a selection. `keysym`
/// is what the key yields unmodified, `modifiers` are shortcut modifier bits.
[[nodiscard]] bool canChangeSelection(uint32_t keysym, uint64_t modifiers);

/// What the user holds down that can change a selection: a gesture lasts from the first press to the last
/// release. Presses and releases may come twice or not at all; times are the window system's.
class GestureTracker {
 public:
  /// One number for keys and buttons.
  static constexpr uint16_t button(uint32_t number) { return static_cast<uint16_t>(0x100 + (number & 0xff)); }
  static constexpr bool isButton(uint16_t input) { return input >= 0x100; }

  void press(uint16_t input, uint32_t time);
  /// True when this ended the gesture.
  [[nodiscard]] bool release(uint16_t input);
  /// A turn of the wheel: it may change what is seen of a selection, and is over at once.
  void scroll() { ++serial_; }

  [[nodiscard]] uint64_t serial() const { return serial_; }
  [[nodiscard]] uint32_t startTime() const { return startTime_; }
  [[nodiscard]] bool isInProgress() const { return !held_.empty(); }
  [[nodiscard]] const std::set<uint16_t>& held() const { return held_; }

 private:
  std::set<uint16_t> held_;
  uint64_t serial_ = 0;
  uint32_t startTime_ = 0;
};

}  // namespace lumeno
