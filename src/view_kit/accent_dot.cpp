#include "view_kit/accent_dot.h"

#include <QConicalGradient>
#include <QPainter>

namespace lumeno {

AccentDot::AccentDot(QQuickItem* parent) : QQuickPaintedItem(parent) {
  connect(this, &AccentDot::colorChanged, this, [this] { update(); });
}

void AccentDot::paint(QPainter* painter) {
  const QRectF circle = boundingRect();
  QBrush fill(color_);
  if (!color_.isValid()) {
    // Clockwise from the top; the gradient runs the other way.
    QConicalGradient all(circle.center(), 90);
    const QRgb colors[] = {0xFF2F6BE4, 0xFF8B3FC9, 0xFFC92C70, 0xFFF59A2E, 0xFF0B7987, 0xFF2F6BE4};
    for (int i = 0; i < 6; ++i) all.setColorAt(1 - i / 5.0, QColor(colors[i]));
    fill = all;
  }
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  painter->setBrush(fill);
  painter->drawEllipse(circle);
  painter->setBrush(Qt::NoBrush);
  painter->setPen(QPen(QColor(0, 0, 0, 31), 1));
  painter->drawEllipse(circle.adjusted(0.5, 0.5, -0.5, -0.5));
}

}  // namespace lumeno
