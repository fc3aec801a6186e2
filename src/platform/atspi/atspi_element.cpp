#include "platform/atspi/atspi_element.h"

#include <algorithm>

namespace lumeno::atspi {

Element::Element(Client& client, std::shared_ptr<const Round> round, std::optional<Reference> object,
                 Kind kind)
    : client_(client), round_(std::move(round)), object_(std::move(object)), kind_(kind) {}

void Element::readOnce() {
  if (hasRead_) return;
  hasRead_ = true;
  if (!object_) return;
  const auto role = client_.role(*object_);
  // What does not say what it is may be a password as well.
  if (!role || role == rolePasswordText) {
    role_ = ElementRole::password;
    knowledge_ = FocusKnowledge::secret;
    return;
  }
  if (role == roleTerminal) role_ = ElementRole::terminal;
  selected_ = readSelectedText(client_, *object_);
  if (!selected_) return;
  knowledge_ = selected_->text.isEmpty() ? FocusKnowledge::noSelection : FocusKnowledge::selection;
}

std::optional<QString> Element::selectedText() {
  readOnce();
  const auto offered = kind_ == Kind::focused ? round_->offered : std::nullopt;
  return mergeSelection(knowledge_, selected_ ? selected_->text : QString(), offered);
}

std::optional<TextRange> Element::selectedTextRange() {
  readOnce();
  if (knowledge_ != FocusKnowledge::selection) return std::nullopt;
  return TextRange{selected_->start, selected_->end};
}

std::optional<Rect> Element::boundsForRange(TextRange range) {
  readOnce();
  if (!selected_ || range != TextRange{selected_->start, selected_->end}) return std::nullopt;
  const auto first = rangeExtents(client_, selected_->first, selected_->firstStart, selected_->firstEnd);
  if (selected_->last == selected_->first && selected_->lastStart == selected_->firstStart)
    return onScreen(first);
  const auto last = rangeExtents(client_, selected_->last, selected_->lastStart, selected_->lastEnd);
  if (!first || !last) return onScreen(first ? first : last);
  const double x = std::min(first->minX(), last->minX());
  const double y = std::min(first->minY(), last->minY());
  return onScreen(
      Rect{x, y, std::max(first->maxX(), last->maxX()) - x, std::max(first->maxY(), last->maxY()) - y});
}

std::optional<Rect> Element::frame() {
  if (!object_) return std::nullopt;
  return onScreen(client_.extents(*object_));
}

std::optional<Point> Element::position() {
  const auto rect = frame();
  if (!rect) return std::nullopt;
  return Point{rect->x, rect->y};
}

std::optional<Size> Element::size() {
  const auto rect = frame();
  if (!rect) return std::nullopt;
  return Size{rect->width, rect->height};
}

std::vector<ElementPtr> Element::children() {
  std::vector<ElementPtr> elements;
  if (!object_) return elements;
  for (auto& child : client_.children(*object_)) {
    elements.push_back(std::make_shared<Element>(client_, round_, std::move(child), Kind::other));
  }
  return elements;
}

ElementRole Element::role() {
  readOnce();
  return role_;
}

bool Element::isSame(const AccessibleElement& other) const {
  const auto* element = dynamic_cast<const Element*>(&other);
  if (!element || object_ != element->object_) return false;
  return object_ || round_->window == element->round_->window;
}

std::optional<Rect> Element::onScreen(std::optional<Rect> deviceRect) {
  if (!deviceRect) return std::nullopt;
  Rect rect = *deviceRect;
  if (const auto& window = round_->windowFrame) {
    if (client_.reportsWindowCoordinates(object_->busName)) {
      rect.x += window->x;
      rect.y += window->y;
    }
    // Texts are often taller than what is in view, and some toolkits are plainly wrong.
    const double left = std::max(rect.minX(), window->minX());
    const double top = std::max(rect.minY(), window->minY());
    const double right = std::min(rect.maxX(), window->maxX());
    const double bottom = std::min(rect.maxY(), window->maxY());
    if (right < left || bottom < top) return std::nullopt;
    rect = {left, top, right - left, bottom - top};
  }
  return round_->toAccessibilitySpace(rect);
}

}  // namespace lumeno::atspi
