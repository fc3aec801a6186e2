#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

#include "base/job.h"
#include "base/observable.h"

namespace lumeno {

/// Selected text that applications offer by themselves, without any key being pressed and without touching
/// the clipboard, on systems that have such a thing (the PRIMARY selection of X11).
class SelectionBuffer {
 public:
  virtual ~SelectionBuffer() = default;

  /// The text that the frontmost window has offered in the user's latest gesture; absent when it offered
  /// none, when it is older than that gesture, owned by another application, marked secret, or not delivered
  /// within the deadline. Main thread; never blocks; `done` is called from the event loop, never inside this
  /// call.
  [[nodiscard]] virtual Job freshText(std::function<void(std::optional<QString>)> done) = 0;

  /// Whether `freshText` would have something to ask for: everything it requires except the text itself.
  /// Cheap, asks no application. Main thread.
  [[nodiscard]] virtual bool isFresh() = 0;

  /// Grows each time an application offers or withdraws a selection; what this program offers itself does not
  /// count. Main thread.
  [[nodiscard]] virtual uint64_t serial() const = 0;

  /// Called each time after `serial` has grown. Main thread.
  [[nodiscard]] virtual Subscription onChange(std::function<void()> handler) = 0;
};

}  // namespace lumeno
