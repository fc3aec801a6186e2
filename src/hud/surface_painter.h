#pragma once

#include <QColor>
#include <QImage>
#include <QSizeF>

namespace lumeno {

/// A rounded rectangle with everything that belongs to its surface, in logical pixels.
struct Surface {
  QSizeF size;
  double radius = 0;
  double margin = 0;  ///< room around it, for the shadow and the outer edge
  QColor fill;
  QColor innerEdge;  ///< inside the outline
  double innerEdgeWidth = 1;
  QColor topLight;    ///< one pixel along the upper outline, over the inner edge
  QColor outerEdge;   ///< one pixel outside the outline
  QColor nearShadow;  ///< close and hard
  QColor farShadow;   ///< soft
};

/// The surface with its margin, at `scale` device pixels to a logical one. The shadow lies only outside it,
/// so that it does not darken a translucent fill. Any thread.
[[nodiscard]] QImage surfaceImage(const Surface& surface, double scale);

}  // namespace lumeno
