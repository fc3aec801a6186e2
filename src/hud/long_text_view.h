#pragma once

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>
#include <QVariantList>
#include <optional>

#include "hud/long_text.h"

namespace lumeno {

/// A window onto a text of any length: shows the part from `viewportY` down, as high as the item is. Text can
/// be selected and copied; a selection is never offered to other applications by itself.
class LongTextView : public QQuickPaintedItem {
  Q_OBJECT
  Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
  Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY styleChanged)
  Q_PROPERTY(double minimumLineHeight READ minimumLineHeight WRITE setMinimumLineHeight NOTIFY styleChanged)
  Q_PROPERTY(QColor color MEMBER color_ NOTIFY colorsChanged)
  Q_PROPERTY(QColor selectionColor MEMBER selectionColor_ NOTIFY colorsChanged)
  Q_PROPERTY(QColor markColor MEMBER markColor_ NOTIFY marksChanged)
  Q_PROPERTY(QVariantList marks MEMBER marks_ NOTIFY marksChanged)
  Q_PROPERTY(int highlightedMark MEMBER highlightedMark_ NOTIFY colorsChanged)
  Q_PROPERTY(double viewportY MEMBER viewportY_ NOTIFY viewportYChanged)
  Q_PROPERTY(double contentHeight READ contentHeight NOTIFY contentHeightChanged)
  Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectionChanged)
  Q_PROPERTY(QString excerpt READ excerpt NOTIFY excerptChanged)

 public:
  explicit LongTextView(QQuickItem* parent = nullptr);

  void paint(QPainter* painter) override;

  [[nodiscard]] QString text() const { return text_; }
  void setText(const QString& text);
  [[nodiscard]] QFont font() const { return font_; }
  void setFont(const QFont& font);
  [[nodiscard]] double minimumLineHeight() const { return minimumLineHeight_; }
  void setMinimumLineHeight(double height);
  /// The height of the whole text.
  [[nodiscard]] double contentHeight() const { return flow_.height(); }
  [[nodiscard]] bool hasSelection() const { return anchor_ != cursor_; }
  /// The whole text when it is short, else what can be seen of it.
  [[nodiscard]] QString excerpt();
  /// How many blocks of the text have been laid out.
  [[nodiscard]] int layoutCount() const { return flow_.layoutCount(); }

  // A selection, made with the pointer; in the item's coordinates.
  Q_INVOKABLE void beginSelection(double x, double y);
  Q_INVOKABLE void extendSelection(double x, double y);
  Q_INVOKABLE void selectWord(double x, double y);
  [[nodiscard]] QString selectedText() const;
  /// Puts what is selected on the clipboard.
  Q_INVOKABLE void copy() const;

  /// Where a mark is in the whole text: x is its top and y its bottom.
  Q_INVOKABLE QPointF markExtent(int mark);

 Q_SIGNALS:
  void textChanged();
  void styleChanged();
  void colorsChanged();
  void marksChanged();
  void viewportYChanged();
  void contentHeightChanged();
  void selectionChanged();
  void excerptChanged();

 protected:
  void componentComplete() override;
  void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

 private:
  void restyle();
  void renewMarks();
  void renewed();
  void select(LongText::Position anchor, LongText::Position cursor);
  [[nodiscard]] LongText::Span selection() const;

  QString text_;
  QFont font_;
  double minimumLineHeight_ = 0;
  QColor color_;
  QColor selectionColor_;
  QColor markColor_;
  QVariantList marks_;  ///< maps with "start" and "length", in UTF-16 units
  int highlightedMark_ = -1;
  double viewportY_ = 0;
  LongText::Position anchor_;
  LongText::Position cursor_;
  LongText flow_;
};

}  // namespace lumeno
