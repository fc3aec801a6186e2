#pragma once

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>

#include "hud/text_flow.h"

namespace lumeno {

/// A window onto a text that is still being written: shows the part from `viewportY` down, as high as the
/// item is, and ends the text with a caret. Costs only what is new and what can be seen.
class StreamingText : public QQuickPaintedItem {
  Q_OBJECT
  Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
  Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY styleChanged)
  Q_PROPERTY(double minimumLineHeight READ minimumLineHeight WRITE setMinimumLineHeight NOTIFY styleChanged)
  Q_PROPERTY(QColor color MEMBER color_ NOTIFY colorsChanged)
  Q_PROPERTY(QColor caretColor MEMBER caretColor_ NOTIFY colorsChanged)
  Q_PROPERTY(double viewportY MEMBER viewportY_ NOTIFY viewportYChanged)
  Q_PROPERTY(double contentHeight READ contentHeight NOTIFY contentHeightChanged)

 public:
  explicit StreamingText(QQuickItem* parent = nullptr);

  void paint(QPainter* painter) override;

  [[nodiscard]] QString text() const { return text_; }
  void setText(const QString& text);
  [[nodiscard]] QFont font() const { return font_; }
  void setFont(const QFont& font);
  [[nodiscard]] double minimumLineHeight() const { return minimumLineHeight_; }
  void setMinimumLineHeight(double height);
  /// The height of the whole text.
  [[nodiscard]] double contentHeight() const { return flow_.height(); }

 Q_SIGNALS:
  void textChanged();
  void styleChanged();
  void colorsChanged();
  void viewportYChanged();
  void contentHeightChanged();

 protected:
  void componentComplete() override;
  void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

 private:
  void restyle();
  void recolor();

  QString text_;
  QFont font_;
  double minimumLineHeight_ = 0;
  QColor color_;
  QColor caretColor_;
  double viewportY_ = 0;
  TextFlow flow_;
};

}  // namespace lumeno
