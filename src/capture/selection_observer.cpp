#include "capture/selection_observer.h"

#include <utility>

#include "base/text.h"
#include "capture/application_rules.h"
#include "capture/application_watch.h"
#include "capture/current_step.h"
#include "capture/selection_reading.h"
#include "platform/file_manager.h"

namespace lumeno {

using namespace std::chrono_literals;

namespace {

using FrontApplication = std::optional<RunningApplication>;

/// What the worker found out. Written on the worker, then read on the main thread.
struct Answer {
  ElementPtr focused;
  ElementRole role = ElementRole::other;
  std::optional<ReadResult> read;
  std::optional<Rect> frame;  ///< of the focused element, where nothing could be read
  bool isComplete = true;     ///< false: the application was too busy to answer everything
};

/// The selection in the application whose focused element is given: in Mail it may be in a descendant.
std::optional<ReadResult> readApplication(Accessibility& accessibility, const ElementPtr& focused,
                                          const FrontApplication& application) {
  if (auto result = readSelection(*focused)) return result;
  if (!isMail(application)) return std::nullopt;
  if (auto result = scanDescendants(focused)) return result;
  const auto root = accessibility.applicationElement(application->processIdentifier);
  return root ? scanDescendants(root) : std::nullopt;
}

bool isSameWindow(const FrontApplication& a, const FrontApplication& b) {
  if (!a || !b) return a.has_value() == b.has_value();
  return a->processIdentifier == b->processIdentifier && a->window == b->window;
}

/// Equal up to white space and embedded-object marks: the ways to read one selection differ in these.
bool isSameText(QStringView a, QStringView b) {
  const auto isFiller = [](QChar c) {
    return text::isTrimmable(c.unicode()) || c == QChar::ObjectReplacementCharacter;
  };
  const auto skipFiller = [&](QStringView s, qsizetype i) {
    while (i < s.size() && isFiller(s[i])) ++i;
    return i;
  };
  qsizetype i = skipFiller(a, 0);
  qsizetype j = skipFiller(b, 0);
  while (i < a.size() && j < b.size() && a[i] == b[j]) {
    i = skipFiller(a, i + 1);
    j = skipFiller(b, j + 1);
  }
  return i == a.size() && j == b.size();
}

}  // namespace

/// Polls and notifications ask for reads; a capture is a read of its own kind. Only one of them is under way
/// at a time: what is asked for meanwhile is remembered and done once afterwards. Dropping a step's handle is
/// what makes its late answer go unheard.
class SelectionObserver::Private {
 public:
  Private(Accessibility& accessibility, Workspace& workspace, Scheduler& scheduler,
          ClipboardSelectionCapture& clipboardCapture)
      : accessibility_(accessibility),
        workspace_(workspace),
        scheduler_(scheduler),
        clipboardCapture_(clipboardCapture),
        ownBundleID_(workspace.ownBundleIdentifier()),
        watch_(accessibility, [this](AccessibilityNotification) { handleNotification(); }) {}

  void start();
  void stop();
  Job captureSelection(std::function<void(std::optional<Selection>)> done);

  Observable<std::optional<Selection>> selection;
  std::optional<SelectionSource> lastSource;

 private:
  enum class Trigger {
    tick,    ///< needs no read while nothing has happened since the last one
    change,  ///< something is known to have changed
  };
  /// What a complete read depended on.
  struct Moment {
    uint64_t activitySerial = 0;
    ProcessId process = 0;
    uint64_t window = 0;
    bool operator==(const Moment&) const = default;
  };
  /// What the user had done when something was read.
  struct Gesture {
    uint64_t serial = 0;
    uint64_t reselectionSerial = 0;
    bool operator==(const Gesture&) const = default;
  };
  /// One read for polls and notifications, with what stood when it was begun.
  struct Read {
    FrontApplication application;
    Moment moment;
    Gesture gesture;
    Answer answer;
  };
  struct Capture {
    std::function<void(std::optional<Selection>)> done;
    FrontApplication application;
    CurrentStep step;
  };

  bool isOwn(const FrontApplication& application) const {
    return (application ? application->bundleIdentifier : std::nullopt) == ownBundleID_;
  }
  SelectionSource sourceOf(const FrontApplication& application, ElementRole role) const;

  void handleNotification();
  void refresh(Trigger trigger);
  void refreshLater(Trigger trigger);
  void refreshIfAsked();
  void finishRefresh(std::shared_ptr<const Read> read);
  void take(const Read& read);
  void publish(Selection found, SelectionSource source, Gesture gesture);
  Gesture currentGesture() { return {accessibility_.gestureSerial(), accessibility_.reselectionSerial()}; }
  void clearSelection();

  void readForCapture();
  void continueCapture(std::shared_ptr<const Answer> answer);
  void captureFound(const ReadResult& result, ElementRole role);
  void endCapture(std::optional<Selection> result);

  Accessibility& accessibility_;
  Workspace& workspace_;
  Scheduler& scheduler_;
  ClipboardSelectionCapture& clipboardCapture_;
  const std::optional<QString> ownBundleID_;

  Job timer_;  ///< held exactly while started
  Subscription activationToken_;
  ApplicationWatch watch_;
  Job notified_;

  /// The last selection published or captured, and the gesture it belongs to.
  std::optional<Selection> lastEmittedSelection_;
  Gesture lastEmittedGesture_;

  CurrentStep read_;
  bool isReading_ = false;
  std::optional<Trigger> askedMeanwhile_;
  std::optional<Moment> lastCompleteRead_;
  std::shared_ptr<Capture> capture_;
};

void SelectionObserver::Private::start() {
  if (timer_) return;
  timer_ = scheduler_.every(500ms, [this] { refresh(Trigger::tick); });
  activationToken_ = workspace_.onActivation([this](const FrontApplication&) { refresh(Trigger::change); });
  refresh(Trigger::change);
}

void SelectionObserver::Private::stop() {
  timer_.cancel();
  activationToken_.reset();
  notified_.cancel();
  read_.end();
  isReading_ = false;
  askedMeanwhile_.reset();
  lastCompleteRead_.reset();
  watch_.detachObserver();
  clearSelection();
}

void SelectionObserver::Private::handleNotification() {
  // From the event loop: a refresh may replace the very observer that is telling this. Notifications come in
  // bursts (a focus change with a selection change), and one read answers them all.
  if (notified_) return;
  notified_ = scheduler_.after(0ms, [this] {
    notified_.cancel();
    refresh(Trigger::change);
  });
}

void SelectionObserver::Private::refresh(Trigger trigger) {
  if (!accessibility_.isTrusted()) return;
  const FrontApplication application = workspace_.frontmostApplication();
  if (application && isOwn(application)) return;
  if (application) watch_.attachObserver(application->processIdentifier);

  // A half-made selection is not read; the end of the gesture is told as a change.
  if (accessibility_.isGestureInProgress()) return;
  if (isReading_ || capture_) {
    refreshLater(trigger);
    return;
  }
  const Moment moment{accessibility_.activitySerial(), application ? application->processIdentifier : 0,
                      application ? application->window : 0};
  if (trigger == Trigger::tick && lastCompleteRead_ == moment) return;

  isReading_ = true;
  const auto read = std::make_shared<Read>(Read{application, moment, currentGesture(), {}});
  read_.begin([&] {
    return accessibility_.perform(
        [read, &accessibility = accessibility_] {
          Answer& answer = read->answer;
          answer.focused = accessibility.focusedElement();
          if (answer.focused) answer.read = readApplication(accessibility, answer.focused, read->application);
          if (answer.read) answer.role = answer.focused->role();
          answer.isComplete = accessibility.isReadComplete();
        },
        [this, read] { finishRefresh(read); });
  });
}

void SelectionObserver::Private::refreshLater(Trigger trigger) {
  if (askedMeanwhile_ != Trigger::change) askedMeanwhile_ = trigger;
}

void SelectionObserver::Private::refreshIfAsked() {
  if (const auto trigger = std::exchange(askedMeanwhile_, std::nullopt)) refresh(*trigger);
}

void SelectionObserver::Private::finishRefresh(std::shared_ptr<const Read> read) {
  isReading_ = false;
  const auto held = std::move(read);  // whoever is told of it may stop the observer, which drops the job
  take(*held);
  refreshIfAsked();
}

void SelectionObserver::Private::take(const Read& read) {
  if (!isSameWindow(read.application, workspace_.frontmostApplication())) {
    refreshLater(Trigger::change);
    return;
  }
  if (!accessibility_.isTrusted() || accessibility_.isGestureInProgress()) return;

  // A busy application has not said that nothing is selected; the next tick asks again.
  if (!read.answer.read && !read.answer.isComplete) return;
  lastCompleteRead_ = read.moment;
  watch_.updateFocusedObservation(read.answer.focused);
  if (!read.answer.read) {
    clearSelection();
    return;
  }
  publish({read.answer.read->text, sourceLabel(read.application), read.answer.read->bounds},
          sourceOf(read.application, read.answer.role), read.gesture);
}

void SelectionObserver::Private::publish(Selection found, SelectionSource source, Gesture gesture) {
  const bool isReselected = gesture.reselectionSerial != lastEmittedGesture_.reselectionSerial;
  if (found == lastEmittedSelection_ && !isReselected) {
    lastEmittedGesture_ = gesture;
    return;
  }
  // Until the user acts again it is the same selection, even when it is now seen elsewhere or by another way:
  // publishing it would take away the chips that it has been summoned for.
  if (lastEmittedSelection_ && gesture == lastEmittedGesture_ &&
      found.sourceApp == lastEmittedSelection_->sourceApp &&
      isSameText(found.text, lastEmittedSelection_->text)) {
    return;
  }
  lastEmittedSelection_ = found;
  lastEmittedGesture_ = gesture;
  lastSource = source;
  selection.set(std::move(found));
}

void SelectionObserver::Private::clearSelection() {
  lastEmittedSelection_.reset();
  if (selection.get()) selection.set(std::nullopt);
}

SelectionSource SelectionObserver::Private::sourceOf(const FrontApplication& application,
                                                     ElementRole role) const {
  SelectionSource source;
  if (application) source = {application->processIdentifier, application->window, application->isTerminal};
  source.isTerminal = source.isTerminal || role == ElementRole::terminal;
  return source;
}

Job SelectionObserver::Private::captureSelection(std::function<void(std::optional<Selection>)> done) {
  const auto capture = std::make_shared<Capture>();
  capture->done = std::move(done);
  capture->application = workspace_.frontmostApplication();
  capture_ = capture;
  if (isReading_) {
    read_.end();
    isReading_ = false;
    refreshLater(Trigger::change);
  }
  if (!accessibility_.isTrusted() || isOwn(capture->application)) {
    capture->step.begin([this] { return scheduler_.after(0ms, [this] { endCapture(std::nullopt); }); });
  } else {
    readForCapture();
  }
  return Job([this, weak = std::weak_ptr(capture)] {
    const auto abandoned = weak.lock();  // held by the observer alone, which therefore is still there
    if (!abandoned || abandoned != capture_) return;
    abandoned->done = nullptr;
    endCapture(std::nullopt);
  });
}

void SelectionObserver::Private::readForCapture() {
  const auto answer = std::make_shared<Answer>();
  capture_->step.begin([&] {
    return accessibility_.perform(
        [answer, application = capture_->application, &accessibility = accessibility_] {
          answer->focused = accessibility.focusedElement();
          if (!answer->focused) return;
          answer->role = answer->focused->role();
          if (!isClipboardFirst(application)) {
            answer->read = readApplication(accessibility, answer->focused, application);
          }
          if (!answer->read) answer->frame = elementFrame(*answer->focused);
        },
        [this, answer] { continueCapture(answer); });
  });
}

void SelectionObserver::Private::continueCapture(std::shared_ptr<const Answer> answer) {
  // What was read, and what a key would reach, must be the window that the capture began in.
  if (!isSameWindow(capture_->application, workspace_.frontmostApplication()) ||
      answer->role == ElementRole::password) {
    endCapture(std::nullopt);
    return;
  }
  if (answer->read) {
    captureFound(*answer->read, answer->role);
    return;
  }
  using CopyKey = ClipboardSelectionCapture::CopyKey;
  // In a file manager the key would copy files, whose paths are no text that the user has selected.
  const bool isKeyRight =
      !sourceOf(capture_->application, answer->role).isTerminal && !isFileManager(capture_->application);
  capture_->step.begin([&] {
    return clipboardCapture_.capture(
        capture_->application ? capture_->application->window : 0,
        isKeyRight ? CopyKey::allowed : CopyKey::forbidden,
        [this, frame = answer->frame, role = answer->role](std::optional<QString> text) {
          const bool isSameAsBefore = accessibility_.isTrusted() &&
                                      isSameWindow(capture_->application, workspace_.frontmostApplication());
          if (text && isSameAsBefore) {
            captureFound({*text, frame}, role);
          } else {
            endCapture(std::nullopt);
          }
        });
  });
}

void SelectionObserver::Private::captureFound(const ReadResult& result, ElementRole role) {
  const Selection found{result.text, sourceLabel(capture_->application), result.bounds};
  lastEmittedSelection_ = found;
  lastEmittedGesture_ = currentGesture();
  lastSource = sourceOf(capture_->application, role);
  endCapture(found);
}

void SelectionObserver::Private::endCapture(std::optional<Selection> result) {
  const auto capture = std::exchange(capture_, nullptr);
  capture->step.end();
  if (const auto done = std::exchange(capture->done, nullptr)) done(std::move(result));
  refreshIfAsked();
}

SelectionObserver::SelectionObserver(Accessibility& accessibility, Workspace& workspace, Scheduler& scheduler,
                                     ClipboardSelectionCapture& clipboardCapture)
    : d_(std::make_unique<Private>(accessibility, workspace, scheduler, clipboardCapture)) {}

SelectionObserver::~SelectionObserver() = default;

Observable<std::optional<Selection>>& SelectionObserver::selection() {
  return d_->selection;
}

std::optional<SelectionSource> SelectionObserver::lastSource() const {
  return d_->lastSource;
}

void SelectionObserver::start() {
  d_->start();
}

void SelectionObserver::stop() {
  d_->stop();
}

Job SelectionObserver::captureSelection(std::function<void(std::optional<Selection>)> done) {
  return d_->captureSelection(std::move(done));
}

}  // namespace lumeno
