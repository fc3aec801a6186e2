#pragma once

#include <QJsonObject>
#include <cstdint>
#include <optional>

namespace lumeno {

/// Device-independent modifier bits, as shortcuts are stored.
namespace modifier {
inline constexpr uint64_t shift = 0x20000;
inline constexpr uint64_t control = 0x40000;
inline constexpr uint64_t option = 0x80000;
inline constexpr uint64_t command = 0x100000;
/// The four modifiers that take part in a shortcut; all other bits are ignored.
inline constexpr uint64_t shortcutMask = 0x1E0000;
}  // namespace modifier

/// The summon shortcut: a virtual key code (a hardware position) and a modifier mask. Default: option,
/// command and Space.
struct HotkeyConfig {
  uint16_t keyCode = 49;
  uint64_t modifiers = modifier::option | modifier::command;
  bool operator==(const HotkeyConfig&) const = default;
};

/// An object with exactly the two numbers "keyCode" and "modifiers".
[[nodiscard]] QJsonObject toJson(const HotkeyConfig& config);
/// Absent when either key is missing, no number, or out of range.
[[nodiscard]] std::optional<HotkeyConfig> hotkeyConfigFromJson(const QJsonObject& object);

}  // namespace lumeno
