#include "view_kit/surface_painter.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <vector>

namespace lumeno {

namespace {

std::vector<float> gaussian(double sigma) {
  const int radius = std::max(1, static_cast<int>(std::ceil(sigma * 3)));
  std::vector<float> kernel(static_cast<size_t>(2 * radius + 1));
  const auto weight = [sigma](int i) { return std::exp(-i * i / (2 * sigma * sigma)); };
  double sum = 0;
  for (int i = -radius; i <= radius; ++i) sum += weight(i);
  for (int i = -radius; i <= radius; ++i) {
    kernel[static_cast<size_t>(i + radius)] = static_cast<float>(weight(i) / sum);
  }
  return kernel;
}

/// One pass over the lines of a mask, which comes out turned: two passes blur both ways.
QImage blurredAndTurned(const QImage& mask, const std::vector<float>& kernel) {
  const int radius = static_cast<int>(kernel.size()) / 2;
  QImage turned(mask.height(), mask.width(), QImage::Format_Alpha8);
  for (int y = 0; y < mask.height(); ++y) {
    const uchar* line = mask.constScanLine(y);
    for (int x = 0; x < mask.width(); ++x) {
      float sum = 0;
      for (int i = std::max(-radius, -x); i <= std::min(radius, mask.width() - 1 - x); ++i) {
        sum += kernel[static_cast<size_t>(i + radius)] * static_cast<float>(line[x + i]);
      }
      turned.scanLine(x)[y] = static_cast<uchar>(std::lround(sum));
    }
  }
  return turned;
}

QImage shadow(const QPainterPath& shape, QSize pixels, double scale, double offsetY, double blur,
              const QColor& color) {
  QImage mask(pixels, QImage::Format_ARGB32_Premultiplied);
  mask.fill(Qt::transparent);
  QPainter maskPainter(&mask);
  maskPainter.setRenderHint(QPainter::Antialiasing);
  maskPainter.scale(scale, scale);
  maskPainter.translate(0, offsetY);
  maskPainter.fillPath(shape, Qt::black);
  maskPainter.end();
  const auto kernel = gaussian(blur / 2 * scale);
  mask = blurredAndTurned(blurredAndTurned(mask.convertToFormat(QImage::Format_Alpha8), kernel), kernel);

  QImage colored(pixels, QImage::Format_ARGB32_Premultiplied);
  colored.fill(color);
  QPainter painter(&colored);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  painter.drawImage(0, 0, mask);
  return colored;
}

QPainterPath rounded(const QRectF& rectangle, double radius) {
  QPainterPath path;
  path.addRoundedRect(rectangle, radius, radius);
  return path;
}

}  // namespace

QImage surfaceImage(const Surface& surface, double scale) {
  const double margin = surface.margin;
  const QRectF rectangle(QPointF(margin, margin), surface.size);
  const QSize pixels(static_cast<int>(std::lround((surface.size.width() + 2 * margin) * scale)),
                     static_cast<int>(std::lround((surface.size.height() + 2 * margin) * scale)));
  if (pixels.isEmpty()) return {};
  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);

  // Lines are whole device pixels.
  const auto line = [scale](double width) { return std::max(1.0, std::floor(width * scale)) / scale; };
  const QPainterPath shape = rounded(rectangle, surface.radius);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  if (surface.farShadow.alpha() > 0) {
    painter.drawImage(0, 0, shadow(shape, pixels, scale, 2, 8, surface.farShadow));
  }
  if (surface.nearShadow.alpha() > 0) {
    painter.drawImage(0, 0, shadow(shape, pixels, scale, 1, 2, surface.nearShadow));
  }
  painter.scale(scale, scale);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
  painter.fillPath(shape, Qt::black);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);

  const double one = line(1);
  painter.fillPath(rounded(rectangle.adjusted(-one, -one, one, one), surface.radius + one) - shape,
                   surface.outerEdge);
  painter.fillPath(shape, surface.fill);
  const double inner = line(surface.innerEdgeWidth);
  painter.fillPath(shape - rounded(rectangle.adjusted(inner, inner, -inner, -inner),
                                   std::max(0.0, surface.radius - inner)),
                   surface.innerEdge);
  painter.fillPath(shape - shape.translated(0, one), surface.topLight);
  return image;
}

}  // namespace lumeno
