#include "capture/selection_reading.h"

#include <deque>

#include "base/text.h"

namespace lumeno {

namespace {

std::optional<Rect> withExtent(const std::optional<Rect>& rect) {
  if (!rect || (rect->width <= 0 && rect->height <= 0)) return std::nullopt;
  return rect;
}

std::optional<Rect> orElementFrame(const std::optional<Rect>& bounds, AccessibleElement& element) {
  return bounds ? bounds : elementFrame(element);
}

std::optional<QString> textMarkerRangeString(const TextMarkerRange& range, AccessibleElement& element) {
  if (auto string = element.stringForTextMarkerRange(range)) return string;
  return element.attributedStringForTextMarkerRange(range);
}

}  // namespace

bool hasText(QStringView text) {
  return !text::trimmed(text).isEmpty();
}

std::optional<ReadResult> readSelection(AccessibleElement& element) {
  if (auto text = element.selectedText(); text && hasText(*text)) {
    return ReadResult{*text, orElementFrame(selectedRangeBounds(element), element)};
  }
  return readTextMarkerSelection(element);
}

std::optional<ReadResult> readTextMarkerSelection(AccessibleElement& element) {
  const auto range = element.selectedTextMarkerRange();
  if (!range) return std::nullopt;
  const auto text = textMarkerRangeString(*range, element);
  if (!text || !hasText(*text)) return std::nullopt;
  return ReadResult{*text, orElementFrame(textMarkerRangeBounds(*range, element), element)};
}

std::optional<Rect> selectedRangeBounds(AccessibleElement& element) {
  const auto range = element.selectedTextRange();
  if (!range) return std::nullopt;
  return withExtent(element.boundsForRange(*range));
}

std::optional<Rect> textMarkerRangeBounds(const TextMarkerRange& range, AccessibleElement& element) {
  return withExtent(element.boundsForTextMarkerRange(range));
}

std::optional<Rect> elementFrame(AccessibleElement& element) {
  const auto position = element.position();
  const auto size = element.size();
  if (!position || !size || size->width <= 0 || size->height <= 0) return std::nullopt;
  return Rect{position->x, position->y, size->width, size->height};
}

std::optional<ReadResult> scanDescendants(const ElementPtr& root, int budget) {
  std::deque<ElementPtr> queue{root};
  for (; !queue.empty() && budget > 0; --budget) {
    const ElementPtr element = queue.front();
    queue.pop_front();
    if (auto result = readSelection(*element)) return result;
    for (auto& child : element->children()) queue.push_back(std::move(child));
  }
  return std::nullopt;
}

}  // namespace lumeno
