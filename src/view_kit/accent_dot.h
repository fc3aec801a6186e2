#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace lumeno {

/// The dot of an accent in a list: a colour, or all of them where the colour is invalid.
class AccentDot : public QQuickPaintedItem {
  Q_OBJECT
  Q_PROPERTY(QColor color MEMBER color_ NOTIFY colorChanged)

 public:
  explicit AccentDot(QQuickItem* parent = nullptr);
  void paint(QPainter* painter) override;

 Q_SIGNALS:
  void colorChanged();

 private:
  QColor color_;
};

}  // namespace lumeno
