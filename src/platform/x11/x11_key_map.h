#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace lumeno {

/// Virtual key codes (hardware positions, see `HotkeyConfig`) and X key codes of the same position. X servers
/// number positions as the kernel does plus 8, whatever the layout. Modifier keys are not in the table: alone
/// they are no key press.
class X11KeyMap {
 public:
  [[nodiscard]] static std::optional<uint16_t> virtualKey(xcb_keycode_t keycode);
  [[nodiscard]] static std::optional<xcb_keycode_t> keycode(uint16_t virtualKey);

  /// Shortcut modifier bits (see `modifier`) of a core modifier mask: Ctrl is control, Alt (Mod1) option,
  /// Super (Mod4) command. Locks and AltGr are no modifiers.
  [[nodiscard]] static uint64_t modifiers(unsigned int coreMask);
};

}  // namespace lumeno
