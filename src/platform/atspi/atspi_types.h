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
inline constexpr uint32_t roleCheckBox = 7;
inline constexpr uint32_t roleComboBox = 11;
inline constexpr uint32_t roleDirectoryPane = 17;
inline constexpr uint32_t roleFiller = 20;
inline constexpr uint32_t roleFrame = 23;
inline constexpr uint32_t roleImage = 27;
inline constexpr uint32_t roleLabel = 29;
inline constexpr uint32_t roleLayeredPane = 30;
inline constexpr uint32_t roleList = 31;
inline constexpr uint32_t roleMenu = 33;
inline constexpr uint32_t roleMenuBar = 34;
inline constexpr uint32_t roleMenuItem = 35;
inline constexpr uint32_t rolePageTab = 37;
inline constexpr uint32_t rolePasswordText = 40;
inline constexpr uint32_t rolePopupMenu = 41;
inline constexpr uint32_t rolePushButton = 43;
inline constexpr uint32_t roleScrollBar = 48;
inline constexpr uint32_t roleStatusBar = 54;
inline constexpr uint32_t roleTable = 55;
inline constexpr uint32_t roleTableCell = 56;
inline constexpr uint32_t roleTerminal = 60;
inline constexpr uint32_t roleText = 61;
inline constexpr uint32_t roleToggleButton = 62;
inline constexpr uint32_t roleTree = 65;
inline constexpr uint32_t roleTreeTable = 66;
inline constexpr uint32_t roleLink = 88;
inline constexpr uint32_t roleStatic = 116;
inline constexpr int stateActive = 1;
inline constexpr int stateChecked = 4;
inline constexpr int stateExpanded = 10;
inline constexpr int stateFocused = 12;
inline constexpr int stateSelected = 23;
inline constexpr int stateShowing = 25;
inline constexpr uint32_t coordinateTypeScreen = 0;

/// Stands in the text of a container for each embedded object.
inline constexpr char16_t objectReplacement = u'\uFFFC';

inline constexpr auto rootPath = "/org/a11y/atspi/accessible/root";
inline constexpr auto registryName = "org.a11y.atspi.Registry";

}  // namespace lumeno::atspi
