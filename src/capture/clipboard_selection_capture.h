#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <optional>

#include "base/job.h"
#include "base/scheduler.h"
#include "platform/keystroke_sender.h"
#include "platform/pasteboard.h"
#include "platform/selection_buffer.h"

namespace lumeno {

/// Reads the selected text of the frontmost application where accessibility cannot: first from the buffer of selected
/// text that applications offer by themselves, else by a simulated copy whose traces are removed from the pasteboard.
class ClipboardSelectionCapture {
 public:
  /// All must outlive this object. `pollInterval` is the wait before each look at the pasteboard, `maxAttempts`
  /// (0 or more) the number of looks.
  ClipboardSelectionCapture(Pasteboard& pasteboard, KeystrokeSender& keystrokes, SelectionBuffer& buffer,
                            Scheduler& scheduler,
                            std::chrono::milliseconds pollInterval = std::chrono::milliseconds(15),
                            int maxAttempts = 40);

  /// The copied text, untrimmed, or absent. `done` is called on the main thread, never before the call returns.
  /// Captures must not overlap. When the handle goes, the pasteboard is still put back.
  [[nodiscard]] Job capture(std::function<void(std::optional<QString>)> done);

 private:
  Pasteboard& pasteboard_;
  KeystrokeSender& keystrokes_;
  SelectionBuffer& buffer_;
  Scheduler& scheduler_;
  std::chrono::milliseconds pollInterval_;
  int maxAttempts_;
};

}  // namespace lumeno
