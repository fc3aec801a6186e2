#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/job.h"
#include "base/observable.h"
#include "base/scheduler.h"
#include "capture/clipboard_selection_capture.h"
#include "platform/accessibility.h"
#include "platform/workspace.h"
#include "records/selection.h"

namespace lumeno {

/// Where a captured selection came from, for whoever wants to put something in its place.
struct SelectionSource {
  ProcessId process = 0;
  uint64_t window = 0;
  bool isTerminal = false;  ///< nothing may be typed into it
  bool operator==(const SelectionSource&) const = default;
};

/// The single source of text selections from other applications: publishes what is selected in the
/// application in front while started, and captures it once on demand. Reads run on the accessibility worker,
/// one at a time, stamped with the application and window they were begun for; a late or stale answer is
/// dropped. Comparing and publishing happen on the main thread.
class SelectionObserver {
 public:
  /// All must outlive the observer.
  SelectionObserver(Accessibility& accessibility, Workspace& workspace, Scheduler& scheduler,
                    ClipboardSelectionCapture& clipboardCapture);
  ~SelectionObserver();
  SelectionObserver(const SelectionObserver&) = delete;
  SelectionObserver& operator=(const SelectionObserver&) = delete;

  /// Absent when nothing is selected.
  [[nodiscard]] Observable<std::optional<Selection>>& selection();
  /// The window that the last published or captured selection was read in.
  [[nodiscard]] std::optional<SelectionSource> lastSource() const;

  void start();  ///< nothing when already started
  void stop();   ///< withdraws the published selection

  /// Captures the current selection once; does not publish it. `done` is called on the main thread, never
  /// before the call returns. One capture at a time.
  [[nodiscard]] Job captureSelection(std::function<void(std::optional<Selection>)> done);

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace lumeno
