#pragma once

#include <QString>
#include <QStringView>
#include <optional>

#include "base/geometry.h"
#include "platform/accessibility.h"

/// Step-by-step reading of what is selected in another application. Everything here runs on the accessibility
/// worker.
namespace lumeno {

/// Selected text that is more than white space, exactly as the application gave it, and where it is on the
/// screen (accessibility space).
struct ReadResult {
  QString text;
  std::optional<Rect> bounds;
  bool operator==(const ReadResult&) const = default;
};

/// How many elements a scan examines, its root included.
inline constexpr int maxSelectionDescendantsToScan = 120;

[[nodiscard]] bool hasText(QStringView text);

/// The selection of one element: its selected text, else its selected text-marker range.
[[nodiscard]] std::optional<ReadResult> readSelection(AccessibleElement& element);
[[nodiscard]] std::optional<ReadResult> readTextMarkerSelection(AccessibleElement& element);

/// Bounds of the selected range; one dimension may be zero (a caret line), not both.
[[nodiscard]] std::optional<Rect> selectedRangeBounds(AccessibleElement& element);
[[nodiscard]] std::optional<Rect> textMarkerRangeBounds(const TextMarkerRange& range,
                                                        AccessibleElement& element);
/// The element's own frame; both dimensions must be positive.
[[nodiscard]] std::optional<Rect> elementFrame(AccessibleElement& element);

/// Breadth-first from `root`, nearest elements first, for one that has a selection.
[[nodiscard]] std::optional<ReadResult> scanDescendants(const ElementPtr& root,
                                                        int budget = maxSelectionDescendantsToScan);

}  // namespace lumeno
