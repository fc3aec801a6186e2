#include "platform/x11/x11_gesture.h"

#include "records/hotkey_config.h"

namespace lumeno {

namespace {

constexpr bool isBetween(uint32_t value, uint32_t first, uint32_t last) {
  return value >= first && value <= last;
}

bool isNavigation(uint32_t keysym) {
  return isBetween(keysym, 0xff50, 0xff57)      // Home, arrows, Page Up, Page Down, End
         || isBetween(keysym, 0xff95, 0xff9c);  // the same on the keypad
}

bool isTyping(uint32_t keysym) {
  switch (keysym) {
    case 0xff08:  // BackSpace
    case 0xff09:  // Tab
    case 0xfe20:  // Tab with Shift
    case 0xff0d:  // Return
    case 0xff8d:  // Enter
    case 0xffff:  // Delete
    case 0xff9e:  // Insert and Delete on the keypad: digits and the point when Num Lock is on
    case 0xff9f:
    case 0xff9d:  // the keypad's middle key
    case 0xffbd:  // = on the keypad
      return true;
  }
  return isBetween(keysym, 0x20, 0x20ff)              // characters of the older character sets
         || isBetween(keysym, 0xfe50, 0xfe8f)         // dead keys
         || isBetween(keysym, 0xffaa, 0xffb9)         // operators and digits on the keypad
         || isBetween(keysym, 0x1000100, 0x110ffff);  // characters by their code point
}

}  // namespace

bool canChangeSelection(uint32_t keysym, uint64_t modifiers) {
  if (modifiers & (modifier::option | modifier::command)) return false;
  if (isNavigation(keysym)) return true;
  if (modifiers & modifier::control) return keysym == 'a' && !(modifiers & modifier::shift);
  return isTyping(keysym);
}

void GestureTracker::press(uint16_t input, uint32_t time) {
  const bool wasInProgress = isInProgress();
  if (!held_.insert(input).second) return;  // a repeat
  ++serial_;
  if (!wasInProgress) startTime_ = time;
}

bool GestureTracker::release(uint16_t input) {
  return held_.erase(input) > 0 && held_.empty();
}

}  // namespace lumeno
