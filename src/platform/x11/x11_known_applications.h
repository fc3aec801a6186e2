#pragma once

#include <QString>
#include <optional>

namespace lumeno {

/// The identifier that rules name for a well-known application (browsers, Electron editors, chat, file
/// managers), by its window class or desktop-entry id; absent for all others.
[[nodiscard]] std::optional<QString> knownBundleIdentifier(const QString& classOrId);

/// Whether a window class is that of a known terminal: some have no desktop entry that says so.
[[nodiscard]] bool isKnownTerminal(const QString& className);

}  // namespace lumeno
