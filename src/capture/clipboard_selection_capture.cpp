#include "capture/clipboard_selection_capture.h"

#include <utility>

#include "capture/current_step.h"
#include "capture/selection_reading.h"
#include "records/file_selection.h"

namespace lumeno {

using namespace std::chrono_literals;

/// One capture, from the save to the restored pasteboard; what is asked of the pasteboard is the kind's.
class ClipboardSelectionCapture::Run : public std::enable_shared_from_this<Run> {
 public:
  Run(ClipboardSelectionCapture& owner, uint64_t window) : owner_(owner), window_(window) {}
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;
  virtual ~Run() { restore(); }

  void begin() {
    // From the event loop, so that no answer can come before `capture` has returned.
    next([this] { return owner_.scheduler_.after(0ms, [this] { isWanted() ? prepare() : finishEmpty(); }); });
  }

  void abandon() {
    if (!isWanted()) return;  // it has been told already
    forget();
    const bool isUnderWay = owner_.runs_.front().get() == this;
    if (!isUnderWay || isPressed_) return;
    snapshot_.reset();
    finishEmpty();
  }

 protected:
  using Pressed = std::function<void(KeystrokeSender::Outcome)>;

  /// Whether somebody still waits for the answer.
  [[nodiscard]] virtual bool isWanted() const = 0;
  virtual void forget() = 0;
  /// What comes before the pasteboard is touched; goes on with `save` or finishes.
  virtual void prepare() = 0;
  [[nodiscard]] virtual Job pressCopy(Pressed pressed) = 0;
  /// Reads what has been copied and finishes with it.
  [[nodiscard]] virtual Job read() = 0;
  virtual void finishEmpty() = 0;

  template <typename Ask>
  void next(Ask ask) {
    const auto self = shared_from_this();  // the answer may come at once and be the last one
    step_.begin(std::move(ask));
  }

  void save() {
    next([this] {
      return owner_.pasteboard_.snapshot([this](std::optional<PasteboardSnapshot> snapshot) {
        // What cannot be put back must not be replaced.
        if (!snapshot) return finishEmpty();
        snapshot_ = std::move(snapshot);
        copy();
      });
    });
  }

  /// Ends the run and begins the one after it. The caller holds the run and delivers the answer afterwards.
  void close() {
    step_.end();
    restore();
    auto& runs = owner_.runs_;
    runs.pop_front();
    if (!runs.empty()) runs.front()->begin();
  }

  ClipboardSelectionCapture& owner_;
  const uint64_t window_;

 private:
  void copy() {
    next([this] {
      return pressCopy([this](KeystrokeSender::Outcome outcome) {
        if (outcome == KeystrokeSender::Outcome::refused) {
          snapshot_.reset();
          return finishEmpty();
        }
        isPressed_ = true;
        waitForLook();
      });
    });
  }

  void waitForLook() {
    if (attempts_ >= owner_.maxAttempts_) return finishEmpty();
    next([this] { return owner_.scheduler_.after(owner_.pollInterval_, [this] { look(); }); });
  }

  void look() {
    if (owner_.pasteboard_.changeCount() == snapshot_->changeCount) {
      ++attempts_;
      return waitForLook();
    }
    next([this] { return read(); });
  }

  void restore() {
    if (const auto snapshot = std::exchange(snapshot_, std::nullopt)) owner_.pasteboard_.restore(*snapshot);
  }

  std::optional<PasteboardSnapshot> snapshot_;  ///< present from the save until it is put back
  bool isPressed_ = false;                      ///< the copy key; from then on the run goes to its end
  int attempts_ = 0;
  CurrentStep step_;
};

/// A run with its listener.
template <typename Answer>
class ClipboardSelectionCapture::RunFor : public Run {
 public:
  using Done = std::function<void(std::optional<Answer>)>;
  RunFor(ClipboardSelectionCapture& owner, uint64_t window, Done done)
      : Run(owner, window), done_(std::move(done)) {}

 protected:
  [[nodiscard]] bool isWanted() const override { return static_cast<bool>(done_); }
  void forget() override { done_ = nullptr; }
  void finishEmpty() override { finish(std::nullopt); }

  void finish(std::optional<Answer> answer) {  // by value: ending the step may take its answer away
    const auto self = shared_from_this();
    close();
    if (const auto done = std::exchange(done_, nullptr)) done(std::move(answer));
  }

 private:
  Done done_;  ///< empty once nobody waits any more
};

class ClipboardSelectionCapture::TextRun final : public RunFor<QString> {
 public:
  TextRun(ClipboardSelectionCapture& owner, uint64_t window, CopyKey copyKey, Done done)
      : RunFor(owner, window, std::move(done)), copyKey_(copyKey) {}

 private:
  void prepare() override {
    next([this] {
      return owner_.buffer_.freshText([this](const std::optional<QString>& text) {
        if (text && hasText(*text)) return finish(text);
        if (copyKey_ == CopyKey::forbidden) return finishEmpty();
        save();
      });
    });
  }
  Job pressCopy(Pressed pressed) override { return owner_.keystrokes_.sendCopy(window_, std::move(pressed)); }
  Job read() override {
    return owner_.pasteboard_.readString(
        [this](const std::optional<QString>& text) { finish(text && hasText(*text) ? text : std::nullopt); });
  }

  const CopyKey copyKey_;
};

class ClipboardSelectionCapture::FileRun final : public RunFor<std::vector<QUrl>> {
 public:
  using RunFor::RunFor;

 private:
  void prepare() override { save(); }
  Job pressCopy(Pressed pressed) override {
    return owner_.keystrokes_.sendCopyFiles(window_, std::move(pressed));
  }
  Job read() override {
    return owner_.pasteboard_.readFileUrls([this](std::optional<std::vector<QUrl>> urls) {
      if (urls && !areInOneFolder(*urls)) urls.reset();
      finish(std::move(urls));
    });
  }
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
  return start(std::make_shared<TextRun>(*this, window, copyKey, std::move(done)));
}

Job ClipboardSelectionCapture::captureFiles(uint64_t window,
                                            std::function<void(std::optional<std::vector<QUrl>>)> done) {
  return start(std::make_shared<FileRun>(*this, window, std::move(done)));
}

Job ClipboardSelectionCapture::start(std::shared_ptr<Run> run) {
  runs_.push_back(run);
  if (runs_.size() == 1) run->begin();
  return Job([weak = std::weak_ptr(run)] {
    if (const auto strong = weak.lock()) strong->abandon();
  });
}

}  // namespace lumeno
