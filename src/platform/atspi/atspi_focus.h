#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <optional>

#include "platform/atspi/atspi_client.h"

namespace lumeno::atspi {

/// Knows which object has the keyboard focus: remembers it from events, and searches for it once when no
/// event has told. Worker only.
class FocusTracker {
 public:
  explicit FocusTracker(Client& client) : client_(client) {}

  /// An event says that an object has, or has lost, the focus.
  void noteFocus(const Reference& object, bool focused);
  /// An event (a moved caret, a changed selection) hints that this object has the focus.
  void noteActivity(const Reference& object);
  void forgetEverything();

  /// The focused object of a process, checked live; absent when the process is not on the accessibility bus
  /// or says nothing about its focus. `window` only tells when a failed search is worth repeating.
  std::optional<Reference> focusedObject(ProcessId process, uint64_t window);

  /// The root object of a process.
  std::optional<Reference> application(ProcessId process);

 private:
  std::optional<Reference> search(ProcessId process);
  [[nodiscard]] std::optional<Reference> preferred(const std::vector<Reference>& candidates);

  Client& client_;
  QHash<ProcessId, Reference> focusByProcess_;
  struct FailedSearch {
    uint64_t window = 0;
    QElapsedTimer since;
  };
  QHash<ProcessId, FailedSearch> failedSearches_;
};

}  // namespace lumeno::atspi
