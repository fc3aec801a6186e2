#pragma once

#include <QFont>
#include <QString>
#include <QTextLayout>
#include <QTextOption>
#include <vector>

class QPainter;

namespace lumeno {

/// Text that grows at its end, wrapped into lines of one width. Growing costs only the new text: what stands
/// in the lines before the last two of a paragraph never changes again. Plain text; each paragraph runs in
/// its own direction.
class TextFlow {
 public:
  /// What is drawn after the text, as part of it.
  struct Caret {
    QString text;
    QColor color;
  };

  /// Lays everything out again. `minimumLineHeight` in pixels, as is `width`.
  void setStyle(const QFont& font, double width, double minimumLineHeight);
  void setCaret(const Caret& caret) { caret_ = caret; }
  void setText(const QString& text);

  [[nodiscard]] double height() const {
    return lines_.empty() ? 0 : lines_.back().top + lines_.back().height;
  }
  [[nodiscard]] int lineCount() const { return static_cast<int>(lines_.size()); }
  /// Draws the lines that touch the span from `top` to `bottom`, with `top` at y 0.
  void draw(QPainter& painter, const QColor& color, double top, double bottom) const;

 private:
  struct Line {
    qsizetype start = 0;  ///< in `text_`
    qsizetype length = 0;
    double top = 0;
    double height = 0;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    bool startsParagraph = false;
    bool hasCaret = false;  ///< the caret is drawn after the line's text
  };

  void layOutFrom(qsizetype firstKeptOut);
  void layOutParagraph(qsizetype start, qsizetype end, Qt::LayoutDirection direction, bool isStart,
                       bool isLast);
  void prepare(QTextLayout& layout, const QString& text, Qt::LayoutDirection direction,
               QTextOption::WrapMode wrapMode) const;

  QFont font_;
  double width_ = 0;
  double minimumLineHeight_ = 0;
  Caret caret_;
  QString text_;
  std::vector<Line> lines_;
};

}  // namespace lumeno
