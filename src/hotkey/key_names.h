#pragma once

#include <QString>
#include <cstdint>

#include "records/hotkey_config.h"

namespace lumeno {

/// The name of a virtual key code, "Key " and the number for those without one.
[[nodiscard]] QString keyName(uint16_t keyCode);

/// Modifier signs in the order control, option, shift, command, then the key's name: "⌥⌘Space".
[[nodiscard]] QString displayString(const HotkeyConfig& config);

}  // namespace lumeno
