#pragma once

#include <QColor>
#include <QImage>
#include <QSizeF>

namespace lumeno {

/// A rounded rectangle with everything that belongs to its surface, in logical pixels.
struct Surface {
  QSizeF size{};
  double radius = 0;
  double margin = 0;  ///< room around it, for the shadow and the outer edge
  QColor fill = Qt::transparent;
  QColor innerEdge = Qt::transparent;  ///< inside the outline
  double innerEdgeWidth = 1;
  QColor topLight = Qt::transparent;    ///< one pixel along the upper outline, over the inner edge
  QColor outerEdge = Qt::transparent;   ///< one pixel outside the outline
  QColor nearShadow = Qt::transparent;  ///< close and hard
  QColor farShadow = Qt::transparent;   ///< soft
};

/// The surface with its margin, at `scale` device pixels to a logical one. The shadow lies only outside it,
/// so that it does not darken a translucent fill. Any thread.
[[nodiscard]] QImage surfaceImage(const Surface& surface, double scale);

}  // namespace lumeno
