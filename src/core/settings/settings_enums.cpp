#include "core/settings/settings_enums.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

// In the order of the enumerations.
constexpr std::array triggerModeNames = {"auto"_L1, "hint"_L1, "manual"_L1};
constexpr std::array backendNames = {"appleIntelligence"_L1, "ollama"_L1};
constexpr std::array themeNames = {"system"_L1, "blue"_L1, "indigo"_L1, "purple"_L1,
                                   "pink"_L1,   "teal"_L1, "orange"_L1};
constexpr std::array glassNames = {"regular"_L1, "clear"_L1};
static_assert(backendNames.size() == allAIBackends.size() && themeNames.size() == allAccentThemes.size());

/// The case whose name is `raw`; the first case is each enumeration's default.
template <typename Enum, size_t size>
Enum fromRawValue(const std::array<QLatin1StringView, size>& names, QStringView raw) {
  for (size_t i = 0; i < size; ++i) {
    if (raw == names[i]) return static_cast<Enum>(i);
  }
  return Enum{};
}

}  // namespace

QString rawValue(TriggerMode mode) {
  return triggerModeNames[static_cast<size_t>(mode)];
}
QString rawValue(AIBackend backend) {
  return backendNames[static_cast<size_t>(backend)];
}
QString rawValue(AccentTheme theme) {
  return themeNames[static_cast<size_t>(theme)];
}
QString rawValue(GlassIntensity intensity) {
  return glassNames[static_cast<size_t>(intensity)];
}

QString displayLabel(AIBackend backend) {
  return backend == AIBackend::ollama ? u"Ollama (your models)"_s : u"Apple Intelligence"_s;
}

QString symbolName(AIBackend backend) {
  return backend == AIBackend::ollama ? u"server.rack"_s : u"apple.logo"_s;
}

AIBackend aiBackendFromRawValue(QStringView raw) {
  return fromRawValue<AIBackend>(backendNames, raw);
}
AccentTheme accentThemeFromRawValue(QStringView raw) {
  return fromRawValue<AccentTheme>(themeNames, raw);
}
GlassIntensity glassIntensityFromRawValue(QStringView raw) {
  return fromRawValue<GlassIntensity>(glassNames, raw);
}

}  // namespace lumeno
