#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QSize>
#include <QString>
#include <initializer_list>

namespace lumeno {

/// Stroke widths of the symbols, by the weight of the text beside them.
enum class SymbolWeight { regular, semibold, bold };

/// How the second layer of a symbol is drawn: like the first, or at half strength (the tray).
enum class SymbolLayers { equal, subdued };

/// One of our line symbols in one colour, drawn at `pixels`. An unknown name gives a transparent image. Any
/// thread.
[[nodiscard]] QImage symbolImage(const QString& name, const QColor& color, QSize pixels,
                                 SymbolWeight weight = SymbolWeight::regular,
                                 SymbolLayers layers = SymbolLayers::equal);

/// The symbol as an icon for trays and menus, in each of `sizes` (device pixels).
[[nodiscard]] QIcon symbolIcon(const QString& name, std::initializer_list<int> sizes, const QColor& color);

/// The program's own icon, for the desktop to show with a window.
[[nodiscard]] QIcon programIcon();

}  // namespace lumeno
