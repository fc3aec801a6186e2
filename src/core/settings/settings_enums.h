#pragma once

#include <QString>
#include <QStringView>
#include <array>
#include <optional>

namespace lumeno {

/// How a new selection reaches the user.
enum class TriggerMode { automatic, hint, manual };

/// Which service answers prompts.
enum class AIBackend { appleIntelligence, ollama };
inline constexpr std::array allAIBackends = {AIBackend::appleIntelligence, AIBackend::ollama};

/// The tint of the HUD; `system` has no colour of its own.
enum class AccentTheme { system, blue, indigo, purple, pink, teal, orange };
inline constexpr std::array allAccentThemes = {AccentTheme::system, AccentTheme::blue, AccentTheme::indigo,
                                               AccentTheme::purple, AccentTheme::pink, AccentTheme::teal,
                                               AccentTheme::orange};

/// How translucent the HUD's material is.
enum class GlassIntensity { regular, clear };

[[nodiscard]] QString rawValue(TriggerMode mode);  // "auto", "hint", "manual"
[[nodiscard]] QString rawValue(AIBackend backend);
[[nodiscard]] QString rawValue(AccentTheme theme);
[[nodiscard]] QString rawValue(GlassIntensity intensity);

/// The backend as the user chooses it, and the symbol beside that.
[[nodiscard]] QString displayLabel(AIBackend backend);
[[nodiscard]] QString symbolName(AIBackend backend);

/// Anything but the exact name of another case reads as the default.
[[nodiscard]] AIBackend aiBackendFromRawValue(QStringView raw);
[[nodiscard]] AccentTheme accentThemeFromRawValue(QStringView raw);
[[nodiscard]] GlassIntensity glassIntensityFromRawValue(QStringView raw);

}  // namespace lumeno
