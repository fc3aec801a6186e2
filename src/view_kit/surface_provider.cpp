#include "view_kit/surface_provider.h"

#include "view_kit/surface_painter.h"

namespace lumeno {

QImage SurfaceProvider::requestImage(const QString& id, QSize* size, const QSize& /*requestedSize*/) {
  const QStringList parts = id.split(u'/');
  if (parts.size() != 12) return {};
  const auto number = [&parts](int index) { return parts[index].toDouble(); };
  const auto color = [&parts](int index) { return QColor(u'#' + parts[index]); };
  const QImage image = surfaceImage({.size = {number(0), number(1)},
                                     .radius = number(2),
                                     .margin = number(3),
                                     .fill = color(5),
                                     .innerEdge = color(6),
                                     .innerEdgeWidth = number(7),
                                     .topLight = color(8),
                                     .outerEdge = color(9),
                                     .nearShadow = color(10),
                                     .farShadow = color(11)},
                                    number(4));
  if (size) *size = image.size();
  return image;
}

}  // namespace lumeno
