#pragma once

#include <QHashFunctions>
#include <QString>
#include <cstdint>

namespace lumeno::atspi {

/// An object of some application on the accessibility bus.
struct Reference {
  QString busName;
  QString path;

  [[nodiscard]] bool isNull() const {
    return busName.isEmpty() || path.isEmpty() || path.endsWith(QLatin1StringView("/null"));
  }
  bool operator==(const Reference&) const = default;
};

// Numbers of the AT-SPI protocol.
inline constexpr uint32_t roleImage = 27;
inline constexpr uint32_t roleLabel = 29;
inline constexpr uint32_t rolePasswordText = 40;
inline constexpr uint32_t roleTerminal = 60;
inline constexpr uint32_t roleLink = 88;
inline constexpr uint32_t roleStatic = 116;
inline constexpr int stateActive = 1;
inline constexpr int stateFocused = 12;
inline constexpr uint32_t coordinateTypeScreen = 0;

/// Stands in the text of a container for each embedded object.
inline constexpr char16_t objectReplacement = u'\uFFFC';

inline constexpr auto rootPath = "/org/a11y/atspi/accessible/root";
inline constexpr auto registryName = "org.a11y.atspi.Registry";

}  // namespace lumeno::atspi
