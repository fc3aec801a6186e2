// Turns line drawings into symbolic icons: desktops recolour those by filling their shapes, so every stroke
// has to become the shape that it covers. Usage: outline-symbols OUTPUT-FOLDER DRAWING.svg...

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPathStroker>
#include <QSvgRenderer>
#include <QTextStream>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 24;  // of a drawing, in its own units

/// Writes down what is painted instead of painting it.
class OutlineEngine final : public QPaintEngine {
 public:
  explicit OutlineEngine(QString& shapes) : QPaintEngine(AllFeatures), shapes_(shapes) {}

  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  Type type() const override { return User; }
  void updateState(const QPaintEngineState& state) override {
    pen_ = state.pen();
    brush_ = state.brush();
    opacity_ = state.opacity();
    transform_ = state.transform();
  }
  void drawPath(const QPainterPath& path) override {
    if (brush_.style() != Qt::NoBrush) write(path);
    if (pen_.style() == Qt::NoPen) return;
    QPainterPathStroker stroker(pen_);
    stroker.setCurveThreshold(0.01);
    write(stroker.createStroke(path));
  }
  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
    if (mode != PolylineMode) path.closeSubpath();
    drawPath(path);
  }
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}

 private:
  void write(const QPainterPath& outline) {
    const QPainterPath path = transform_.map(outline);
    QString line;
    const auto put = [&line](QChar command, const QPointF& point) {
      line += u"%1%2 %3"_s.arg(command).arg(point.x(), 0, 'f', 2).arg(point.y(), 0, 'f', 2);
    };
    for (int i = 0; i < path.elementCount(); ++i) {
      const auto element = path.elementAt(i);
      switch (element.type) {
        case QPainterPath::MoveToElement:
          if (i > 0) line += u'Z';
          put(u'M', element);
          break;
        case QPainterPath::LineToElement:
          put(u'L', element);
          break;
        case QPainterPath::CurveToElement:
          put(u'C', element);
          break;
        case QPainterPath::CurveToDataElement:
          put(u' ', element);
          break;
      }
    }
    shapes_ += u"  <path class=\"ColorScheme-Text\" fill=\"currentColor\""_s;
    if (path.fillRule() == Qt::OddEvenFill) shapes_ += u" fill-rule=\"evenodd\""_s;
    if (opacity_ < 1) shapes_ += u" opacity=\"%1\""_s.arg(opacity_);
    shapes_ += u" d=\"%1Z\"/>\n"_s.arg(line);
  }

  QString& shapes_;
  QPen pen_;
  QBrush brush_;
  qreal opacity_ = 1;
  QTransform transform_;
};

class OutlineDevice final : public QPaintDevice {
 public:
  QPaintEngine* paintEngine() const override { return &engine_; }
  QString shapes;

 protected:
  int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmWidth:
      case PdmHeight:
        return side;
      case PdmDevicePixelRatio:
        return 1;
      case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
      default:
        return 96;  // dots per inch; the rest is not asked for
    }
  }

 private:
  mutable OutlineEngine engine_{shapes};
};

bool outline(const QString& drawing, const QString& icon) {
  QFile source(drawing);
  if (!source.open(QIODevice::ReadOnly)) return false;
  QByteArray svg = source.readAll();
  svg.replace("class=\"secondary\"", "opacity=\"0.5\"");
  QSvgRenderer renderer;
  if (!renderer.load(svg)) return false;
  OutlineDevice device;
  {
    QPainter painter(&device);
    renderer.render(&painter, QRectF(0, 0, side, side));
  }
  QFile result(icon);
  if (device.shapes.isEmpty() || !result.open(QIODevice::WriteOnly)) return false;
  // A desktop that takes the colour as it is gets one that can be seen on light and on dark.
  QTextStream(&result) << u"<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"16\" height=\"16\" "
                          u"viewBox=\"0 0 24 24\">\n"
                          u"  <style id=\"current-color-scheme\" type=\"text/css\">"
                          u".ColorScheme-Text{color:#858585}</style>\n"_s
                       << device.shapes << u"</svg>\n"_s;
  return result.flush();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "minimal");
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  for (const QString& drawing : arguments.mid(2)) {
    const QString icon =
        u"%1/org.lumeno.Lumeno-%2-symbolic.svg"_s.arg(arguments[1], QFileInfo(drawing).completeBaseName());
    if (outline(drawing, icon)) continue;
    std::fprintf(stderr, "outline-symbols: %s cannot be turned into %s\n", qPrintable(drawing),
                 qPrintable(icon));
    return 1;
  }
  return 0;
}
