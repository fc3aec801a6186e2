#include "hud/shadow_provider.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <vector>

namespace lumeno {

namespace {

struct Layer {
  double offsetY;
  double blur;
  QColor color;
};

std::vector<float> gaussian(double sigma) {
  const int radius = std::max(1, static_cast<int>(std::ceil(sigma * 3)));
  std::vector<float> kernel(static_cast<size_t>(2 * radius + 1));
  double sum = 0;
  for (int i = -radius; i <= radius; ++i) sum += std::exp(-i * i / (2 * sigma * sigma));
  for (int i = -radius; i <= radius; ++i) {
    kernel[static_cast<size_t>(i + radius)] =
        static_cast<float>(std::exp(-i * i / (2 * sigma * sigma)) / sum);
  }
  return kernel;
}

/// One pass over the lines of an 8-bit mask; two passes with the picture turned in between blur both ways.
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

QImage layerImage(const QPainterPath& shape, QSize pixels, double scale, const Layer& layer) {
  QImage mask(pixels, QImage::Format_ARGB32_Premultiplied);
  mask.fill(Qt::transparent);
  {
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    painter.translate(0, layer.offsetY);
    painter.fillPath(shape, Qt::black);
  }
  const auto kernel = gaussian(layer.blur / 2 * scale);
  mask = blurredAndTurned(blurredAndTurned(mask.convertToFormat(QImage::Format_Alpha8), kernel), kernel);
  QImage colored(pixels, QImage::Format_ARGB32_Premultiplied);
  colored.fill(layer.color);
  QPainter painter(&colored);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  painter.drawImage(0, 0, mask);
  return colored;
}

}  // namespace

ShadowProvider::ShadowProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage ShadowProvider::requestImage(const QString& id, QSize* size, const QSize& /*requestedSize*/) {
  const QStringList parts = id.split(u'/');
  if (parts.size() != 7) return {};
  const double margin = parts[3].toDouble();
  const double scale = parts[4].toDouble();
  const QRectF rectangle(margin, margin, parts[0].toDouble(), parts[1].toDouble());
  const QSize pixels(static_cast<int>(std::lround((rectangle.width() + 2 * margin) * scale)),
                     static_cast<int>(std::lround((rectangle.height() + 2 * margin) * scale)));
  if (pixels.isEmpty()) return {};
  QPainterPath shape;
  shape.addRoundedRect(rectangle, parts[2].toDouble(), parts[2].toDouble());

  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  for (const Layer& layer : {Layer{2, 8, QColor(u'#' + parts[6])}, Layer{1, 2, QColor(u'#' + parts[5])}}) {
    if (layer.color.alpha() > 0) painter.drawImage(0, 0, layerImage(shape, pixels, scale, layer));
  }
  // The card is translucent: its own shadow must not darken it.
  painter.scale(scale, scale);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
  painter.fillPath(shape, Qt::black);
  painter.end();
  if (size) *size = pixels;
  return image;
}

}  // namespace lumeno
