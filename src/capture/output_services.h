#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "base/job.h"
#include "base/scheduler.h"
#include "capture/selection_observer.h"
#include "platform/feedback_devices.h"
#include "platform/keystroke_sender.h"
#include "platform/pasteboard.h"

namespace lumeno {

/// Puts text on the general pasteboard.
class ClipboardService {
 public:
  explicit ClipboardService(Pasteboard& pasteboard) : pasteboard_(pasteboard) {}
  void copy(const QString& text) { pasteboard_.setString(text); }

 private:
  Pasteboard& pasteboard_;
};

/// Puts a text in place of the selection in the other application, by pasting it.
class SelectionReplacer {
 public:
  enum class Outcome {
    pasted,         ///< the paste keystroke was sent
    selectionGone,  ///< another window is in front, or it takes no typing; the text is on the pasteboard
  };

  SelectionReplacer(Pasteboard& pasteboard, KeystrokeSender& keystrokes, Scheduler& scheduler);

  /// Writes the text to the pasteboard and pastes it 50 ms later, provided that the window of `source` is
  /// then in front and takes typing (an absent source counts as gone). `done` is told on the main thread,
  /// later. The text is on the pasteboard in every case.
  [[nodiscard]] Job replace(const QString& text, const std::optional<SelectionSource>& source,
                            std::function<void(Outcome)> done);

 private:
  Pasteboard& pasteboard_;
  KeystrokeSender& keystrokes_;
  Scheduler& scheduler_;
};

/// The short cue when a result is ready.
class FeedbackService {
 public:
  FeedbackService(SystemSound& sound, Haptics& haptics) : sound_(sound), haptics_(haptics) {}
  /// A haptic tap first, then the system sound "Tink".
  void play(bool sound, bool haptic);

 private:
  SystemSound& sound_;
  Haptics& haptics_;
};

}  // namespace lumeno
