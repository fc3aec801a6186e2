#include "hud/text_flow.h"

#include <QPainter>
#include <algorithm>

namespace lumeno {

namespace {

bool isParagraphBreak(QChar c) {
  return c == u'\n' || c == QChar::ParagraphSeparator;
}

}  // namespace

void TextFlow::setStyle(const QFont& font, double width, double minimumLineHeight) {
  font_ = font;
  width_ = width;
  minimumLineHeight_ = minimumLineHeight;
  layOutFrom(0);
}

void TextFlow::setText(const QString& text) {
  const bool isGrowth = text.startsWith(text_);
  text_ = text;
  if (!isGrowth) {
    layOutFrom(0);
    return;
  }
  // New characters can move the last break of a paragraph, never an earlier one. The line of the caret alone
  // does not count.
  qsizetype kept = lineCount();
  for (int redone = 0; kept > 0 && redone < 3; ++redone) {
    --kept;
    if (lines_[static_cast<size_t>(kept)].startsParagraph) break;
  }
  layOutFrom(kept);
}

void TextFlow::layOutFrom(qsizetype firstKeptOut) {
  const bool hasFirst = firstKeptOut < lineCount();
  const Line first = hasFirst ? lines_[static_cast<size_t>(firstKeptOut)] : Line{.startsParagraph = true};
  lines_.resize(static_cast<size_t>(hasFirst ? firstKeptOut : 0));
  qsizetype start = lines_.empty() ? 0 : first.start;
  bool isStart = lines_.empty() || first.startsParagraph;
  while (true) {
    const auto breakAt = std::find_if(text_.cbegin() + start, text_.cend(), isParagraphBreak);
    const qsizetype end = breakAt - text_.cbegin();
    const bool isLast = breakAt == text_.cend();
    const auto direction = !isStart                                                        ? first.direction
                           : QStringView(text_).sliced(start, end - start).isRightToLeft() ? Qt::RightToLeft
                                                                                           : Qt::LeftToRight;
    layOutParagraph(start, end, direction, isStart, isLast);
    if (isLast) return;
    start = end + 1;
    isStart = true;
  }
}

void TextFlow::layOutParagraph(qsizetype start, qsizetype end, Qt::LayoutDirection direction, bool isStart,
                               bool isLast) {
  const qsizetype length = end - start;
  QString paragraph = text_.mid(start, length);
  if (isLast) paragraph += caret_.text;
  QTextLayout layout;
  prepare(layout, paragraph, direction, QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.beginLayout();
  while (true) {
    QTextLine line = layout.createLine();
    if (!line.isValid() && layout.lineCount() > 0) break;
    if (line.isValid()) line.setLineWidth(width_);
    const qsizetype offset = line.isValid() ? line.textStart() : 0;
    const qsizetype taken = line.isValid() ? line.textLength() : 0;
    lines_.push_back({.start = start + std::min(offset, length),
                      .length = std::clamp<qsizetype>(length - offset, 0, taken),
                      .top = height(),
                      .height = std::max(line.isValid() ? line.height() : 0, minimumLineHeight_),
                      .direction = direction,
                      .startsParagraph = isStart && offset == 0,
                      .hasCaret = isLast && offset + taken == paragraph.size()});
    if (!line.isValid()) break;
  }
  layout.endLayout();
}

void TextFlow::draw(QPainter& painter, const QColor& color, double top, double bottom) const {
  const auto first = std::partition_point(lines_.begin(), lines_.end(),
                                          [top](const Line& line) { return line.top + line.height <= top; });
  painter.setPen(color);
  for (auto line = first; line != lines_.end() && line->top < bottom; ++line) {
    QString text = text_.mid(line->start, line->length);
    QTextLayout::FormatRange caret;
    caret.start = static_cast<int>(text.size());
    caret.format.setForeground(caret_.color);
    if (line->hasCaret) {
      // A caret that wrapped has left its blank behind.
      const bool isAlone = line->length == 0 && !line->startsParagraph;
      text += isAlone ? caret_.text.trimmed() : caret_.text;
    }
    caret.length = static_cast<int>(text.size()) - caret.start;
    QTextLayout layout;
    prepare(layout, text, line->direction, QTextOption::NoWrap);
    if (line->hasCaret) layout.setFormats({caret});
    layout.beginLayout();
    QTextLine drawn = layout.createLine();
    if (drawn.isValid()) drawn.setLineWidth(width_);
    layout.endLayout();
    if (drawn.isValid()) layout.draw(&painter, QPointF(0, line->top - top + line->height - drawn.height()));
  }
}

void TextFlow::prepare(QTextLayout& layout, const QString& text, Qt::LayoutDirection direction,
                       QTextOption::WrapMode wrapMode) const {
  QTextOption option;
  option.setWrapMode(wrapMode);
  option.setTextDirection(direction);
  layout.setTextOption(option);
  layout.setFont(font_);
  layout.setText(text);
}

}  // namespace lumeno
