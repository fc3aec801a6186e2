#include "hud/long_text.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <cmath>

#include "hud/visible_text.h"

namespace lumeno {

namespace {

constexpr qsizetype blockLength = 2048;  // characters, about
constexpr int blockLines = 24;
constexpr std::size_t keptLayouts = 16;  // more than any window shows
constexpr int tabColumns = 8;

bool isLineBreak(QChar c) {
  return c == u'\n' || c == u'\r';
}

QTextLayout::FormatRange formatted(int start, int length, const QTextCharFormat& format) {
  QTextLayout::FormatRange range;
  range.start = start;
  range.length = length;
  range.format = format;
  return range;
}

}  // namespace

void LongText::setStyle(const QFont& font, double width, double minimumLineHeight) {
  font_ = font;
  width_ = width;
  minimumLineHeight_ = std::max(minimumLineHeight, 1.0);
  cutIntoBlocks();
}

void LongText::setText(const QString& text) {
  text_ = text;
  cutIntoBlocks();
}

void LongText::setMarks(std::vector<Mark> marks, const QColor& color) {
  marks_ = std::move(marks);
  markColor_ = color;
  recent_.clear();
}

/// Where to cut a line that is longer than a block: not inside a character or an escape sequence.
qsizetype LongText::chunkEnd(qsizetype start, qsizetype end) const {
  const QStringView chunk = QStringView(text_).sliced(start, end - start);
  constexpr qsizetype longestSequence = 256;
  const qsizetype escape = chunk.lastIndexOf(QChar(0x1B));
  if (escape > 0 && chunk.size() - escape < longestSequence) {
    const qsizetype length = escapeSequenceLength(QStringView(text_).sliced(start + escape));
    if (escape + length > chunk.size()) return start + escape;
  }
  return text_[end - 1].isHighSurrogate() ? end - 1 : end;
}

void LongText::cutIntoBlocks() {
  blocks_.clear();
  recent_.clear();
  layoutCount_ = 0;
  if (text_.isEmpty() || width_ <= 0) return;
  const double columns = std::max(1.0, std::floor(width_ / QFontMetricsF(font_).horizontalAdvance(u'0')));
  const auto rows = [columns](qsizetype length) {
    return std::max(1.0, std::ceil(static_cast<double>(length) / columns));
  };
  const qsizetype size = text_.size();
  // Whole rows, so that a cut in a line of plain characters does not show.
  const auto longest = std::max<qsizetype>(
      2, static_cast<qsizetype>(columns) * (blockLength / static_cast<qsizetype>(columns) + 1));
  Block block;
  int lines = 0;
  double blockRows = 0;
  qsizetype lineStart = 0;
  qsizetype previousLineEnd = 0;
  const auto close = [&](qsizetype end, bool endsLine, qsizetype next) {
    block.length = end - block.start;
    block.endsLine = endsLine;
    block.height = blockRows * minimumLineHeight_;
    blocks_.push_back(block);
    block.start = lineStart = next;
    lines = 0;
    blockRows = 0;
  };
  const QChar* data = text_.constData();
  while (true) {
    const qsizetype limit = std::min(size, block.start + longest);
    const qsizetype end = std::find_if(data + lineStart, data + limit, isLineBreak) - data;
    if (end < limit) {
      const bool isPair = data[end] == u'\r' && end + 1 < size && data[end + 1] == u'\n';
      const qsizetype next = end + (isPair ? 2 : 1);
      blockRows += rows(end - lineStart);
      if (++lines == blockLines || end - block.start > blockLength / 2) {
        close(end, true, next);
      } else {
        previousLineEnd = end;
        lineStart = next;
      }
    } else if (limit == size) {
      blockRows += rows(size - lineStart);
      close(size, false, size);
      break;
    } else if (lines > 0) {
      close(previousLineEnd, true, lineStart);  // the long line gets blocks of its own
    } else {
      const qsizetype cut = chunkEnd(block.start, limit);
      blockRows += rows(cut - lineStart);
      close(cut, false, cut);
    }
  }
  reckonHeights();
}

void LongText::reckonHeights() {
  const auto measure = [this](qsizetype block) {
    double& height = blocks_[static_cast<std::size_t>(block)].height;
    height = laid(block).height;
    return height;
  };
  const auto count = static_cast<qsizetype>(blocks_.size());
  double exact = 0;
  qsizetype first = 0;
  while (first < count && exact < windowHeight) exact += measure(first++);
  exact = 0;
  for (qsizetype last = count; last > first && exact < windowHeight;) exact += measure(--last);
  double top = 0;
  for (Block& block : blocks_) {
    block.top = top;
    top += block.height;
  }
}

QString LongText::shown(qsizetype block) const {
  const Block& b = blocks_[static_cast<std::size_t>(block)];
  QString raw = text_.sliced(b.start, b.length);
  raw.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  raw.replace(u'\r', u'\n');
  return visibleOutput(raw);
}

/// The part of a mark that lies in a block: from and to, the same where there is none.
std::pair<int, int> LongText::inBlock(const Mark& mark, qsizetype block) const {
  const Block& b = blocks_[static_cast<std::size_t>(block)];
  const auto inside = [&b](qsizetype offset) {
    return static_cast<int>(std::clamp<qsizetype>(offset - b.start, 0, b.length));
  };
  return {inside(mark.start), inside(mark.start + mark.length)};
}

QList<QTextLayout::FormatRange> LongText::markFormats(qsizetype block) const {
  QTextCharFormat format;
  format.setUnderlineStyle(QTextCharFormat::SingleUnderline);
  format.setUnderlineColor(markColor_);
  QList<QTextLayout::FormatRange> formats;
  for (const Mark& mark : marks_) {
    const auto [from, to] = inBlock(mark, block);
    if (from < to) formats.append(formatted(from, to - from, format));
  }
  return formats;
}

const LongText::Laid& LongText::laid(qsizetype block) {
  const auto known = std::find_if(recent_.begin(), recent_.end(),
                                  [block](const auto& candidate) { return candidate->block == block; });
  if (known != recent_.end()) {
    std::rotate(recent_.begin(), known, known + 1);
    return *recent_.front();
  }
  ++layoutCount_;
  auto fresh = std::make_shared<Laid>();
  fresh->block = block;
  fresh->text = shown(block);
  QString text = fresh->text;
  text.replace(u'\n', QChar(QChar::LineSeparator));
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setTextDirection(Qt::LeftToRight);
  option.setTabStopDistance(tabColumns * QFontMetricsF(font_).horizontalAdvance(u'0'));
  fresh->layout = std::make_unique<QTextLayout>(text, font_);
  fresh->layout->setTextOption(option);
  fresh->layout->setFormats(markFormats(block));
  fresh->layout->setCacheEnabled(true);
  fresh->layout->beginLayout();
  while (true) {
    QTextLine line = fresh->layout->createLine();
    if (!line.isValid()) break;
    line.setLineWidth(width_);
    const double height = std::max(line.height(), minimumLineHeight_);
    fresh->lineTops.push_back(fresh->height);
    line.setPosition({0, fresh->height + std::floor((height - line.height()) / 2)});
    fresh->height += height;
  }
  fresh->layout->endLayout();
  fresh->height = std::max(fresh->height, minimumLineHeight_);
  recent_.insert(recent_.begin(), std::move(fresh));
  if (recent_.size() > keptLayouts) recent_.pop_back();
  return *recent_.front();
}

template <typename Visit>
void LongText::walk(double top, double height, Visit visit) {
  if (blocks_.empty()) return;
  auto at = std::partition_point(blocks_.begin(), blocks_.end(),
                                 [top](const Block& block) { return block.top + block.height <= top; });
  if (at == blocks_.end()) --at;
  qsizetype index = at - blocks_.begin();
  // The same share of the block is above the window as of the space that was reckoned for it.
  double y = -(top - at->top) / at->height * laid(index).height;
  for (; index < static_cast<qsizetype>(blocks_.size()) && y < height; ++index) {
    const Laid& block = laid(index);
    if (!visit(block, y)) return;
    y += block.height;
  }
}

void LongText::draw(QPainter& painter, const Colors& colors, double top, double height,
                    const std::optional<Span>& selection, std::optional<qsizetype> highlightedMark) {
  painter.setPen(colors.text);
  walk(top, height, [&](const Laid& block, double y) {
    const auto length = static_cast<int>(block.text.size());
    QList<QTextLayout::FormatRange> selected;
    if (selection && selection->first.block <= block.block && block.block <= selection->second.block) {
      const int from = selection->first.block == block.block ? selection->first.offset : 0;
      const int to = selection->second.block == block.block ? selection->second.offset : length;
      QTextCharFormat format;
      format.setBackground(colors.selection);
      if (from < to) selected.append(formatted(from, to - from, format));
    }
    if (highlightedMark && *highlightedMark < static_cast<qsizetype>(marks_.size())) {
      QTextCharFormat format;
      format.setBackground(colors.highlight);
      const auto [from, to] = inBlock(marks_[static_cast<std::size_t>(*highlightedMark)], block.block);
      if (from < to) selected.prepend(formatted(from, to - from, format));
    }
    block.layout->draw(&painter, {0, y}, selected, QRectF(0, 0, width_, height));
    return true;
  });
}

LongText::Position LongText::positionAt(QPointF point, double top) {
  Position position;
  walk(top, std::max(windowHeight, point.y() + 1), [&](const Laid& block, double y) {
    position = {block.block, static_cast<int>(block.text.size())};
    if (y + block.height <= point.y()) return true;
    const auto below = std::upper_bound(block.lineTops.begin(), block.lineTops.end(), point.y() - y);
    const auto line = std::max<qsizetype>(0, below - block.lineTops.begin() - 1);
    position.offset = block.layout->lineAt(static_cast<int>(line)).xToCursor(point.x());
    return false;
  });
  return position;
}

LongText::Span LongText::wordAt(const Position& position) {
  if (blocks_.empty()) return {};
  const QString& text = laid(position.block).text;
  QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
  words.setPosition(position.offset);
  const auto isStart = words.isAtBoundary();
  const qsizetype start = isStart ? position.offset : std::max<qsizetype>(0, words.toPreviousBoundary());
  words.setPosition(position.offset);
  const qsizetype end = words.toNextBoundary();
  return {{position.block, static_cast<int>(start)},
          {position.block, static_cast<int>(end < 0 ? text.size() : end)}};
}

QString LongText::textIn(const Span& span) const {
  QString text;
  if (blocks_.empty()) return text;
  for (qsizetype block = span.first.block; block <= span.second.block; ++block) {
    QString part = shown(block);
    if (block == span.second.block) part.truncate(span.second.offset);
    text += block == span.first.block ? QStringView(part).mid(span.first.offset) : QStringView(part);
    if (block != span.second.block && blocks_[static_cast<std::size_t>(block)].endsLine) text += u'\n';
  }
  return text;
}

QString LongText::textSeen(double top, double height) {
  std::optional<Span> seen;
  walk(top, height, [&seen](const Laid& block, double) {
    const Position end{block.block, static_cast<int>(block.text.size())};
    if (!seen) seen = Span{{block.block, 0}, end};
    seen->second = end;
    return true;
  });
  return seen ? textIn(*seen) : QString();
}

std::pair<double, double> LongText::extentOf(const Mark& mark) {
  auto after = std::partition_point(blocks_.begin(), blocks_.end(),
                                    [&mark](const Block& block) { return block.start <= mark.start; });
  if (after == blocks_.begin()) return {};
  const Block& block = *--after;
  const Laid& found = laid(after - blocks_.begin());
  const auto lineTop = [&](qsizetype offset) {
    const auto inside = static_cast<int>(std::clamp<qsizetype>(offset - block.start, 0, found.text.size()));
    const QTextLine line = found.layout->lineForTextPosition(inside);
    const double top = line.isValid() ? found.lineTops[static_cast<std::size_t>(line.lineNumber())] : 0;
    return block.top + top / found.height * block.height;
  };
  return {lineTop(mark.start), lineTop(mark.start + mark.length) + minimumLineHeight_};
}

}  // namespace lumeno
