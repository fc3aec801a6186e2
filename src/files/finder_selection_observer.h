#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "base/job.h"
#include "base/observable.h"
#include "base/scheduler.h"
#include "capture/accessibility_authorization.h"
#include "capture/clipboard_selection_capture.h"
#include "platform/accessibility.h"
#include "platform/file_manager.h"
#include "platform/workspace.h"
#include "records/file_selection.h"

namespace lumeno {

/// Watches what is selected in the file manager while that is the frontmost application. While neither it nor
/// this program is in front, nothing is polled. Main thread.
class FinderSelectionObserver {
 public:
  /// All must outlive the observer, and the observer must outlive its jobs.
  FinderSelectionObserver(FileManager& fileManager, Workspace& workspace,
                          AccessibilityAuthorization& authorization, Accessibility& accessibility,
                          ClipboardSelectionCapture& capture, Scheduler& scheduler);
  ~FinderSelectionObserver();
  FinderSelectionObserver(const FinderSelectionObserver&) = delete;
  FinderSelectionObserver& operator=(const FinderSelectionObserver&) = delete;

  /// The items selected now; absent when there are none to act on.
  [[nodiscard]] Observable<std::optional<FileSelection>>& selection();

  /// Begins and ends polling; calling either again does nothing. Ending leaves `selection` as it is.
  void start();
  void stop();
  /// Makes `selection` absent, as when the file manager has gone.
  void clear();

  /// Reads what is selected now, by the copy command if it cannot be told otherwise (the clipboard is put
  /// back, and nothing is pressed in a terminal or a password field); absent when no file manager is in
  /// front or nothing is selected. The next poll does not announce
  /// the same items again.
  [[nodiscard]] Job currentSelection(std::function<void(std::optional<FileSelection>)> done);

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace lumeno
