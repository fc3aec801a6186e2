#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/geometry.h"
#include "base/job.h"
#include "base/observable.h"

namespace lumeno {

using ProcessId = int32_t;

/// UTF-16 or other units as the application counts them; only handed back to the same application.
struct TextRange {
  int64_t start = 0;
  int64_t end = 0;
  bool operator==(const TextRange&) const = default;
};

/// A range of text in a web view or similar, meaningful only to the element that gave it.
class TextMarkerRange {
 public:
  virtual ~TextMarkerRange() = default;
};

/// What an element is, as far as reading or typing must know.
enum class ElementRole { other, terminal, password };

/// One element of another application's accessibility tree: an immutable, shareable handle.
///
/// Every read may ask the other process and is made on the accessibility worker only
/// (`Accessibility::perform`). Each has a deadline; an error, a missing value or a value of another type is
/// an absent answer. Rectangles and points are in accessibility space. Passwords and content marked secret
/// have no text.
class AccessibleElement {
 public:
  virtual ~AccessibleElement() = default;

  virtual std::optional<QString> selectedText() = 0;
  virtual std::optional<TextRange> selectedTextRange() = 0;
  virtual std::optional<Rect> boundsForRange(TextRange range) = 0;
  virtual std::shared_ptr<const TextMarkerRange> selectedTextMarkerRange() = 0;
  virtual std::optional<QString> stringForTextMarkerRange(const TextMarkerRange& range) = 0;
  /// The plain string of the attributed string.
  virtual std::optional<QString> attributedStringForTextMarkerRange(const TextMarkerRange& range) = 0;
  virtual std::optional<Rect> boundsForTextMarkerRange(const TextMarkerRange& range) = 0;
  virtual std::optional<Point> position() = 0;
  virtual std::optional<Size> size() = 0;
  virtual std::vector<std::shared_ptr<AccessibleElement>> children() = 0;
  virtual ElementRole role() = 0;

  /// Identity; asks nobody and may be called on any thread.
  [[nodiscard]] virtual bool isSame(const AccessibleElement& other) const = 0;
};
using ElementPtr = std::shared_ptr<AccessibleElement>;

enum class AccessibilityNotification { focusedElementChanged, selectedTextChanged };

/// Change notifications of one process, delivered on the main thread while the object lives.
class AccessibilityObserver {
 public:
  virtual ~AccessibilityObserver() = default;
  /// Registers for focus changes of the application.
  virtual void addFocusNotification() = 0;
  /// Registers for selection changes of one element; false when the platform refuses.
  [[nodiscard]] virtual bool addSelectionNotification(const ElementPtr& element) = 0;
  virtual void removeSelectionNotification(const ElementPtr& element) = 0;
};

/// Reading other applications.
class Accessibility {
 public:
  virtual ~Accessibility() = default;

  /// Whether the user lets this program read other applications, as last known. Never blocks. Main thread.
  [[nodiscard]] virtual bool isTrusted() = 0;
  /// Asks the user (or the system) for that trust and returns the state right after asking. Main thread.
  virtual bool requestTrust() = 0;

  /// Runs `work` on the worker, then `done` on the main thread. Only one piece of work runs at a time; work
  /// is done in order. When the handle goes first, `done` is not called and work that has not begun is
  /// skipped.
  [[nodiscard]] virtual Job perform(std::function<void()> work, std::function<void()> done) = 0;

  /// Whether everything that the work under way has asked for so far was answered in time. When not, an
  /// absent answer may mean that the application is busy. Worker only.
  [[nodiscard]] virtual bool isReadComplete() = 0;

  /// The element that has the keyboard focus, whichever application owns it. Worker only; null when none.
  virtual ElementPtr focusedElement() = 0;
  /// The root element of an application. Worker only; null when there is none.
  virtual ElementPtr applicationElement(ProcessId process) = 0;

  /// Null when the process cannot be observed. Main thread.
  virtual std::unique_ptr<AccessibilityObserver> observe(
      ProcessId process, std::function<void(AccessibilityNotification)> callback) = 0;

  /// A number that grows with everything that could change what a read answers: input, focus, selection or
  /// window events. While it stands still, a read made since then still holds. Main thread.
  [[nodiscard]] virtual uint64_t activitySerial() = 0;
  /// A number that grows only with what the user does to a selection: a new gesture (button or key) or a
  /// scroll. While it stands still, the same text read at other bounds is still the same selection. Main
  /// thread.
  [[nodiscard]] virtual uint64_t gestureSerial() = 0;
  /// A number that grows when a gesture is known to have remade the selection, also when the text is the same
  /// in the end: the user selected it anew. Main thread.
  [[nodiscard]] virtual uint64_t reselectionSerial() = 0;
  /// Whether a gesture (a held button, a held selecting key) is under way: what is read now is not final. The
  /// end of the gesture is told as `selectedTextChanged`. Main thread.
  [[nodiscard]] virtual bool isGestureInProgress() = 0;
};

}  // namespace lumeno
