#include "hud/long_text_view.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <algorithm>

#include "hud/visible_text.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestExcerpt = 4096;  // of what is told whole

QColor faint(QColor color) {
  color.setAlphaF(0.22F);
  return color;
}

}  // namespace

LongTextView::LongTextView(QQuickItem* parent) : QQuickPaintedItem(parent) {
  connect(this, &LongTextView::styleChanged, this, &LongTextView::restyle);
  connect(this, &LongTextView::colorsChanged, this, [this] { update(); });
  connect(this, &LongTextView::marksChanged, this, &LongTextView::renewMarks);
  connect(this, &LongTextView::viewportYChanged, this, [this] {
    update();
    if (text_.size() > longestExcerpt) Q_EMIT excerptChanged();
  });
}

void LongTextView::paint(QPainter* painter) {
  const std::optional<LongText::Span> selected =
      hasSelection() ? std::optional(selection()) : std::optional<LongText::Span>();
  const std::optional<qsizetype> highlighted =
      highlightedMark_ >= 0 ? std::optional<qsizetype>(highlightedMark_) : std::nullopt;
  flow_.draw(*painter, {color_, selectionColor_, faint(markColor_)}, viewportY_, height(), selected,
             highlighted);
}

void LongTextView::setText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  select({}, {});
  if (isComponentComplete()) {
    flow_.setText(text);
    renewed();
  }
  Q_EMIT textChanged();
}

void LongTextView::setFont(const QFont& font) {
  if (font == font_) return;
  font_ = font;
  Q_EMIT styleChanged();
}

void LongTextView::setMinimumLineHeight(double height) {
  if (height == minimumLineHeight_) return;
  minimumLineHeight_ = height;
  Q_EMIT styleChanged();
}

void LongTextView::componentComplete() {
  QQuickPaintedItem::componentComplete();
  flow_.setText(text_);
  renewMarks();
  restyle();
}

void LongTextView::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
  QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
  if (newGeometry.width() != oldGeometry.width()) restyle();
}

void LongTextView::restyle() {
  if (!isComponentComplete()) return;
  select({}, {});
  flow_.setStyle(font_, width(), minimumLineHeight_);
  renewed();
}

void LongTextView::renewMarks() {
  if (!isComponentComplete()) return;
  std::vector<LongText::Mark> marks;
  for (const QVariant& mark : std::as_const(marks_)) {
    const QVariantMap fields = mark.toMap();
    marks.push_back({fields[u"start"_s].toLongLong(), fields[u"length"_s].toLongLong()});
  }
  flow_.setMarks(std::move(marks), markColor_);
  update();
}

void LongTextView::renewed() {
  Q_EMIT contentHeightChanged();
  Q_EMIT excerptChanged();
  update();
}

QString LongTextView::excerpt() {
  if (text_.size() <= longestExcerpt) return visibleOutput(text_);
  return flow_.textSeen(viewportY_, height());
}

void LongTextView::beginSelection(double x, double y) {
  const auto place = flow_.positionAt({x, y}, viewportY_);
  select(place, place);
}

void LongTextView::extendSelection(double x, double y) {
  select(anchor_, flow_.positionAt({x, y}, viewportY_));
}

void LongTextView::selectWord(double x, double y) {
  const auto word = flow_.wordAt(flow_.positionAt({x, y}, viewportY_));
  select(word.first, word.second);
}

void LongTextView::select(LongText::Position anchor, LongText::Position cursor) {
  anchor_ = anchor;
  cursor_ = cursor;
  Q_EMIT selectionChanged();
  update();
}

LongText::Span LongTextView::selection() const {
  return {std::min(anchor_, cursor_), std::max(anchor_, cursor_)};
}

QString LongTextView::selectedText() const {
  return hasSelection() ? flow_.textIn(selection()) : QString();
}

void LongTextView::copy() const {
  if (hasSelection()) QGuiApplication::clipboard()->setText(selectedText());
}

QPointF LongTextView::markExtent(int mark) {
  if (mark < 0 || mark >= marks_.size()) return {};
  const QVariantMap fields = marks_[mark].toMap();
  const auto [top, bottom] =
      flow_.extentOf({fields[u"start"_s].toLongLong(), fields[u"length"_s].toLongLong()});
  return {top, bottom};
}

}  // namespace lumeno
