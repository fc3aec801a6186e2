#include "onboarding/scenery_provider.h"

#include <QColor>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <cmath>
#include <numbers>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

QColor translucent(QRgb rgb, double alpha) {
  QColor color = QColor(rgb);
  color.setAlphaF(static_cast<float>(alpha));
  return color;
}

/// The share of a normal distribution below `x` standard deviations.
double normalShare(double x) {
  return 0.5 * std::erfc(-x / std::numbers::sqrt2);
}

QPainterPath rounded(const QRectF& rectangle, double radius) {
  QPainterPath path;
  path.addRoundedRect(rectangle, radius, radius);
  return path;
}

/// A line one pixel wide along the inside of the outline.
void paintInnerEdge(QPainter& painter, const QRectF& rectangle, double radius, const QColor& color) {
  painter.fillPath(rounded(rectangle, radius) - rounded(rectangle.adjusted(1, 1, -1, -1), radius - 1), color);
}

void paintSky(QPainter& painter, bool dark) {
  const QRectF frame(0, 0, 452, 560);
  QLinearGradient air(frame.topLeft(), frame.bottomLeft());
  air.setColorAt(0, QColor(dark ? 0xFF282A52 : 0xFFCCCDFF));
  air.setColorAt(dark ? 0.55 : 0.5, QColor(dark ? 0xFF1E3040 : 0xFFD9E6F8));
  air.setColorAt(1, QColor(dark ? 0xFF35292F : 0xFFF9E4D8));
  const QPainterPath shape = rounded(frame, 22);
  painter.fillPath(shape, air);
  const auto disc = [&](const QRectF& bounds, const QColor& color) {
    QPainterPath path;
    path.addEllipse(bounds);
    painter.fillPath(path & shape, color);
  };
  disc({-230, 300, 560, 560}, translucent(0xFF8E93F2, dark ? 0.22 : 0.42));
  disc({170, 360, 520, 520}, translucent(0xFF4FB9C6, dark ? 0.22 : 0.32));
  disc({266, 40, 150, 150}, dark ? translucent(0xFFB9B4FF, 0.14) : translucent(0xFFFFF3DA, 0.70));
}

void paintBlob(QPainter& painter, const QColor& color) {
  // What a flat ellipse looks like through a wide blur: in full at the centre, half at the old outline.
  constexpr double outline = 0.56;
  constexpr double deviation = 0.22;
  constexpr int stops = 24;
  QRadialGradient light(QPointF(0.5, 0.5), 0.5);
  for (int i = 0; i <= stops; ++i) {
    const double radius = static_cast<double>(i) / stops;
    const double share = normalShare((outline - radius) / deviation) - normalShare((outline - 1) / deviation);
    QColor stop = color;
    stop.setAlphaF(color.alphaF() * static_cast<float>(std::max(0.0, share)));
    light.setColorAt(radius, stop);
  }
  painter.fillRect(QRectF(0, 0, 1, 1), light);
}

/// The colours along a line that falls at `degrees` from straight up, clockwise, over a 52 × 46 thumbnail.
void paintThumbnail(QPainter& painter, double degrees, const QGradientStops& stops) {
  const QRectF frame(0, 0, 52, 46);
  const double angle = degrees * std::numbers::pi / 180;
  const QPointF direction(std::sin(angle), -std::cos(angle));
  const QPointF half =
      direction * (std::abs(frame.width() * direction.x()) + std::abs(frame.height() * direction.y())) / 2;
  QLinearGradient colors(frame.center() - half, frame.center() + half);
  colors.setStops(stops);
  painter.fillPath(rounded(frame, 6), colors);
  paintInnerEdge(painter, frame, 6, translucent(0xFF000000, 0.10));
}

void paintFolder(QPainter& painter) {
  const QRectF frame(0, 0, 52, 46);
  painter.fillPath(rounded(frame, 7), QColor(0xFF7FA9E8));
  QPainterPath tab;
  tab.addRect(0, 0, 52, 9);
  painter.fillPath(rounded(frame, 7) & tab, QColor(0xFF5D8AD0));
}

/// A wide blur of a rectangle, to be stretched. It is too soft to need the screen's own pixels.
QImage shadowImage() {
  constexpr double deviation = 17;
  constexpr int margin = 52;
  constexpr int size = 2 * margin + 104;
  constexpr double strength = 0.22;
  const auto along = [=](int pixel) {
    return normalShare((pixel + 0.5 - margin) / deviation) -
           normalShare((pixel + 0.5 - (size - margin)) / deviation);
  };
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < size; ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < size; ++x) {
      const double alpha = 255 * strength * along(y) * along(x);
      line[x] = qPremultiply(qRgba(16, 18, 50, static_cast<int>(std::lround(alpha))));
    }
  }
  return image;
}

/// Paints in the picture's own units; false when there is no such picture.
bool paint(QPainter& painter, const QString& name, QSize pixels) {
  const auto measure = [&](double width, double height) {
    painter.scale(pixels.width() / width, pixels.height() / height);
  };
  const QString kind = name.section(u'-', 0, 0);
  const QString detail = name.section(u'-', 1);
  if (kind == "sky"_L1) {
    measure(452, 560);
    paintSky(painter, detail == "dark"_L1);
  } else if (kind == "blob"_L1) {
    measure(1, 1);
    paintBlob(painter, QColor(u'#' + detail));
  } else if (kind == "photo"_L1) {
    static const std::pair<double, QGradientStops> photos[] = {
        {150, {{0, 0xFF8FC1E8}, {0.6, 0xFF3F6F9C}, {0.601, 0xFFE2C08E}, {1, 0xFFE2C08E}}},
        {170, {{0, 0xFFF3C6A0}, {0.55, 0xFFB9657B}, {1, 0xFF4C3A63}}},
        {160, {{0, 0xFFBFE0C2}, {0.6, 0xFF3F8A72}, {1, 0xFF245A58}}}};
    const auto& photo = photos[std::min<size_t>(detail.toUInt(), std::size(photos) - 1)];
    measure(52, 46);
    paintThumbnail(painter, photo.first, photo.second);
  } else if (kind == "folder"_L1) {
    measure(52, 46);
    paintFolder(painter);
  } else {
    return false;
  }
  return true;
}

}  // namespace

QImage SceneryProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
  if (id == "shadow"_L1) {
    const QImage image = shadowImage();
    if (size) *size = image.size();
    return image;
  }
  if (requestedSize.isEmpty()) return {};
  if (size) *size = requestedSize;
  QImage image(requestedSize, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  return paint(painter, id, requestedSize) ? image : QImage();
}

}  // namespace lumeno
