#include "capture/clipboard_selection_capture.h"

#include <utility>

#include "capture/current_step.h"
#include "capture/selection_reading.h"

namespace lumeno {

using namespace std::chrono_literals;

/// One capture, from the look into the buffer to the restored pasteboard.
class ClipboardSelectionCapture::Run : public std::enable_shared_from_this<Run> {
 public:
  Run(ClipboardSelectionCapture& owner, uint64_t window, CopyKey copyKey,
      std::function<void(std::optional<QString>)> done)
      : owner_(owner), window_(window), copyKey_(copyKey), done_(std::move(done)) {}
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;
  ~Run() { restore(); }

  void begin() {
    // From the event loop, so that no answer can come before `capture` has returned.
    next([this] { return owner_.scheduler_.after(0ms, [this] { readBuffer(); }); });
  }

  void abandon() {
    if (!done_) return;  // it has been told already
    done_ = nullptr;
    const bool isUnderWay = owner_.runs_.front().get() == this;
    if (isUnderWay && !snapshot_) finish(std::nullopt);
  }

 private:
  template <typename Ask>
  void next(Ask ask) {
    const auto self = shared_from_this();  // the answer may come at once and be the last one
    step_.begin(std::move(ask));
  }

  void readBuffer() {
    if (!done_) return finish(std::nullopt);
    next([this] {
      return owner_.buffer_.freshText([this](const std::optional<QString>& text) {
        if (text && hasText(*text)) return finish(text);
        if (copyKey_ == CopyKey::forbidden) return finish(std::nullopt);
        save();
      });
    });
  }

  void save() {
    next([this] {
      return owner_.pasteboard_.snapshot([this](std::optional<PasteboardSnapshot> snapshot) {
        // What cannot be put back must not be replaced.
        if (!snapshot) return finish(std::nullopt);
        snapshot_ = std::move(snapshot);
        copy();
      });
    });
  }

  void copy() {
    next([this] {
      return owner_.keystrokes_.sendCopy(window_, [this](KeystrokeSender::Outcome outcome) {
        if (outcome == KeystrokeSender::Outcome::refused) {
          snapshot_.reset();
          return finish(std::nullopt);
        }
        waitForLook();
      });
    });
  }

  void waitForLook() {
    if (attempts_ >= owner_.maxAttempts_) return finish(std::nullopt);
    next([this] { return owner_.scheduler_.after(owner_.pollInterval_, [this] { look(); }); });
  }

  void look() {
    if (owner_.pasteboard_.changeCount() == snapshot_->changeCount) {
      ++attempts_;
      return waitForLook();
    }
    next([this] {
      return owner_.pasteboard_.readString([this](const std::optional<QString>& text) {
        finish(text && hasText(*text) ? text : std::nullopt);
      });
    });
  }

  void restore() {
    if (const auto snapshot = std::exchange(snapshot_, std::nullopt)) owner_.pasteboard_.restore(*snapshot);
  }

  void finish(std::optional<QString> text) {  // by value: ending the step may take its answer away
    step_.end();
    restore();
    auto& runs = owner_.runs_;
    const auto self = std::move(runs.front());
    runs.pop_front();
    if (!runs.empty()) runs.front()->begin();
    if (const auto done = std::exchange(done_, nullptr)) done(std::move(text));
  }

  ClipboardSelectionCapture& owner_;
  const uint64_t window_;
  const CopyKey copyKey_;
  std::function<void(std::optional<QString>)> done_;  ///< empty once nobody waits any more
  std::optional<PasteboardSnapshot> snapshot_;        ///< present from the save until it is put back
  int attempts_ = 0;
  CurrentStep step_;
};

ClipboardSelectionCapture::ClipboardSelectionCapture(Pasteboard& pasteboard, KeystrokeSender& keystrokes,
                                                     SelectionBuffer& buffer, Scheduler& scheduler,
                                                     std::chrono::milliseconds pollInterval, int maxAttempts)
    : pasteboard_(pasteboard),
      keystrokes_(keystrokes),
      buffer_(buffer),
      scheduler_(scheduler),
      pollInterval_(pollInterval),
      maxAttempts_(maxAttempts) {}

ClipboardSelectionCapture::~ClipboardSelectionCapture() = default;

Job ClipboardSelectionCapture::capture(uint64_t window, CopyKey copyKey,
                                       std::function<void(std::optional<QString>)> done) {
  const auto run = std::make_shared<Run>(*this, window, copyKey, std::move(done));
  runs_.push_back(run);
  if (runs_.size() == 1) run->begin();
  return Job([weak = std::weak_ptr(run)] {
    if (const auto strong = weak.lock()) strong->abandon();
  });
}

}  // namespace lumeno
