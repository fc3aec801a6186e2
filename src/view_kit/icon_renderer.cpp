#include "view_kit/icon_renderer.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include "view_kit/view_kit.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

QByteArray strokeWidth(SymbolWeight weight) {
  switch (weight) {
    case SymbolWeight::regular:
      return "1.75";
    case SymbolWeight::semibold:
      return "2";
    case SymbolWeight::bold:
      return "2.4";
  }
  Q_UNREACHABLE();
}

QByteArray drawing(const QString& name, const QColor& color, SymbolWeight weight, SymbolLayers layers) {
  initializeViewKitResources();
  QFile file(u":/lumeno/view_kit/icons/%1.svg"_s.arg(name));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QByteArray svg = file.readAll();
  svg.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
  svg.replace("stroke-width=\"1.75\"", "stroke-width=\"" + strokeWidth(weight) + '"');
  if (layers == SymbolLayers::subdued) svg.replace("class=\"secondary\"", "opacity=\"0.5\"");
  return svg;
}

}  // namespace

QImage symbolImage(const QString& name, const QColor& color, QSize pixels, SymbolWeight weight,
                   SymbolLayers layers) {
  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  const QByteArray svg = drawing(name, color, weight, layers);
  QSvgRenderer renderer;
  if (svg.isEmpty() || !renderer.load(svg)) return image;
  QPainter painter(&image);
  renderer.render(&painter);
  if (color.alpha() < 255) {
    // All at once, so that strokes which cross do not show through each other.
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(image.rect(), QColor(0, 0, 0, color.alpha()));
  }
  return image;
}

QIcon symbolIcon(const QString& name, std::initializer_list<int> sizes, const QColor& color) {
  QIcon icon;
  for (const int size : sizes) {
    icon.addPixmap(QPixmap::fromImage(
        symbolImage(name, color, QSize(size, size), SymbolWeight::regular, SymbolLayers::subdued)));
  }
  return icon;
}

QIcon programIcon() {
  return symbolIcon(u"lumeno"_s, {16, 24, 32, 48, 64, 128}, Qt::black);
}

}  // namespace lumeno
