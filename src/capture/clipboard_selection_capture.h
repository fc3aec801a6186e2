#pragma once

#include <QString>
#include <QUrl>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/job.h"
#include "base/scheduler.h"
#include "platform/keystroke_sender.h"
#include "platform/pasteboard.h"
#include "platform/selection_buffer.h"

namespace lumeno {

/// Reads the selected text of the frontmost application where accessibility cannot: first from the buffer of
/// selected text that applications offer by themselves, else by a simulated copy whose traces are removed
/// from the pasteboard.
class ClipboardSelectionCapture {
 public:
  /// Whether the copy key may be pressed at all.
  enum class CopyKey { allowed, forbidden };

  /// All must outlive this object. `pollInterval` is the wait before each look at the pasteboard,
  /// `maxAttempts` (0 or more) the number of looks.
  ClipboardSelectionCapture(Pasteboard& pasteboard, KeystrokeSender& keystrokes, SelectionBuffer& buffer,
                            Scheduler& scheduler,
                            std::chrono::milliseconds pollInterval = std::chrono::milliseconds(15),
                            int maxAttempts = 40);
  /// Puts the pasteboard back at once if a capture is under way.
  ~ClipboardSelectionCapture();
  ClipboardSelectionCapture(const ClipboardSelectionCapture&) = delete;
  ClipboardSelectionCapture& operator=(const ClipboardSelectionCapture&) = delete;

  /// The text copied in `window` (`RunningApplication::window`), untrimmed, or absent. `done` is called on
  /// the main thread, never before the call returns. When the handle goes after the copy key was pressed,
  /// the capture runs to its end unheard, so that the pasteboard is still put back; a later capture waits for
  /// that.
  [[nodiscard]] Job capture(uint64_t window, CopyKey copyKey,
                            std::function<void(std::optional<QString>)> done);

  /// The local files that the file manager in `window` has selected, by its copy command, in its order;
  /// absent when nothing was copied, or items of several folders were. Otherwise as `capture`.
  [[nodiscard]] Job captureFiles(uint64_t window, std::function<void(std::optional<std::vector<QUrl>>)> done);

 private:
  class Run;
  template <typename Answer>
  class RunFor;
  class TextRun;
  class FileRun;

  [[nodiscard]] Job start(std::shared_ptr<Run> run);

  Pasteboard& pasteboard_;
  KeystrokeSender& keystrokes_;
  SelectionBuffer& buffer_;
  Scheduler& scheduler_;
  std::chrono::milliseconds pollInterval_;
  int maxAttempts_;
  std::deque<std::shared_ptr<Run>> runs_;  ///< the first one is under way
};

}  // namespace lumeno
