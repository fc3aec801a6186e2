#pragma once

#include <QString>
#include <QStringView>
#include <array>
#include <optional>

namespace lumeno {

/// What a selection is taken to be. The order is the order of iteration; the raw value is the case name.
enum class IntentKind {
  error,
  writing,
  date,
  code,
  filename,
  reply,
  definition,
  address,
  link,
  email,
  phone,
  translate,
  grammar,
  tone,
  explain,
  unknown,
};

/// Named system colours; `secondary` is the system's secondary label colour.
enum class Tint { red, teal, indigo, mint, orange, blue, purple, green, cyan, pink, yellow, secondary };

inline constexpr std::array allIntentKinds = {
    IntentKind::error,    IntentKind::writing, IntentKind::date,       IntentKind::code,
    IntentKind::filename, IntentKind::reply,   IntentKind::definition, IntentKind::address,
    IntentKind::link,     IntentKind::email,   IntentKind::phone,      IntentKind::translate,
    IntentKind::grammar,  IntentKind::tone,    IntentKind::explain,    IntentKind::unknown,
};

[[nodiscard]] QString rawValue(IntentKind kind);
/// Absent for anything but the exact sixteen case names.
[[nodiscard]] std::optional<IntentKind> intentKindFromRawValue(QStringView raw);
[[nodiscard]] QString symbolName(IntentKind kind);
[[nodiscard]] Tint tint(IntentKind kind);
/// The colour's name as in the enumeration ("red", …, "secondary").
[[nodiscard]] QString tintName(Tint tint);

}  // namespace lumeno
