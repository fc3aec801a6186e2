#include "hud/streaming_text.h"

#include <QPainter>

namespace lumeno {

using namespace Qt::StringLiterals;

StreamingText::StreamingText(QQuickItem* parent) : QQuickPaintedItem(parent) {
  connect(this, &StreamingText::styleChanged, this, &StreamingText::restyle);
  connect(this, &StreamingText::colorsChanged, this, &StreamingText::recolor);
  connect(this, &StreamingText::viewportYChanged, this, [this] { update(); });
}

void StreamingText::paint(QPainter* painter) {
  flow_.draw(*painter, color_, viewportY_, viewportY_ + height());
}

void StreamingText::setText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  if (isComponentComplete()) {
    const double before = flow_.height();
    flow_.setText(text);
    if (flow_.height() != before) Q_EMIT contentHeightChanged();
    update();
  }
  Q_EMIT textChanged();
}

void StreamingText::setFont(const QFont& font) {
  if (font == font_) return;
  font_ = font;
  Q_EMIT styleChanged();
}

void StreamingText::setMinimumLineHeight(double height) {
  if (height == minimumLineHeight_) return;
  minimumLineHeight_ = height;
  Q_EMIT styleChanged();
}

void StreamingText::componentComplete() {
  QQuickPaintedItem::componentComplete();
  recolor();
  flow_.setText(text_);
  restyle();
}

void StreamingText::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
  QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
  if (newGeometry.width() != oldGeometry.width()) restyle();
}

void StreamingText::restyle() {
  if (!isComponentComplete()) return;
  flow_.setStyle(font_, width(), minimumLineHeight_);
  Q_EMIT contentHeightChanged();
  update();
}

void StreamingText::recolor() {
  flow_.setCaret({u" ▌"_s, caretColor_});
  update();
}

}  // namespace lumeno
