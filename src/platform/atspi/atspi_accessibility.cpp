#include "platform/atspi/atspi_accessibility.h"

#include <QThread>
#include <deque>
#include <unordered_map>

#include "platform/atspi/accessibility_status.h"
#include "platform/atspi/atspi_element.h"
#include "platform/atspi/atspi_worker.h"

namespace lumeno {

using atspi::Round;
using atspi::Worker;

namespace {

// A terminal that scrolls, or a page that types by itself, sends events without end; each could cause a read.
constexpr std::chrono::milliseconds eventInterval{40};

struct PendingRead {
  std::function<void()> work;
  std::function<void()> done;
  bool wanted = true;
};

}  // namespace

class AtspiAccessibility::Private : public QObject {
 public:
  Private(Workspace& workspace, WindowGeometry& geometry, InputActivity& input, SelectionBuffer& buffer,
          Scheduler& scheduler, const QString& markerPath)
      : workspace_(workspace),
        geometry_(geometry),
        input_(input),
        buffer_(buffer),
        scheduler_(scheduler),
        status_(markerPath) {
    worker_ = new Worker([this](ProcessId process, Worker::Event event) {
      QMetaObject::invokeMethod(this, [this, process, event] { eventArrived(process, event); });
    });
    worker_->moveToThread(&thread_);
    thread_.setObjectName(QStringLiteral("accessibility"));
    thread_.start();
    subscriptions_.push_back(input_.onGestureEnd([this] { gestureEnded(); }));
    subscriptions_.push_back(buffer_.onChange([this] { offerChanged(); }));
    subscriptions_.push_back(workspace_.onActivation([this](const auto&) { ++windowSerial_; }));
    // Without trust nobody is listened to either.
    subscriptions_.push_back(status_.onTrust([this](bool trusted) {
      QMetaObject::invokeMethod(
          worker_, [worker = worker_, trusted] { trusted ? worker->ensureListening() : worker->shutDown(); });
    }));
  }

  ~Private() override {
    QMetaObject::invokeMethod(worker_, [worker = worker_] {
      worker->shutDown();
      worker->deleteLater();
    });
    thread_.quit();
    // A bus that hangs while it is being connected to must not keep the program from ending.
    if (!thread_.wait(3000)) {
      thread_.terminate();
      thread_.wait();
    }
  }

  // -- Reads, one at a time
  // ------------------------------------------------------------------------------------------

  void enqueue(std::shared_ptr<PendingRead> read) {
    queue_.push_back(std::move(read));
    pump();
  }

  void pump() {
    while (!current_ && !queue_.empty()) {
      auto read = std::move(queue_.front());
      queue_.pop_front();
      if (!read->wanted) continue;
      current_ = std::move(read);
      beginRound();
    }
  }

  void beginRound() {
    auto round = std::make_shared<Round>();
    if (const auto application = workspace_.frontmostApplication()) {
      round->process = application->processIdentifier;
      round->window = application->window;
      round->isOwn = application->bundleIdentifier == workspace_.ownBundleIdentifier();
      round->windowFrame = geometry_.deviceFrame(application->window);
    }
    round->toAccessibilitySpace = geometry_.accessibilitySpaceConverter();
    if (round->isOwn || !buffer_.isFresh()) {
      sendToWorker(std::move(round));
      return;
    }
    offerJob_ = buffer_.freshText([this, round = std::move(round)](std::optional<QString> text) {
      round->offered = std::move(text);
      sendToWorker(round);
    });
  }

  void sendToWorker(std::shared_ptr<const Round> round) {
    QMetaObject::invokeMethod(worker_, [this, worker = worker_, round = std::move(round), read = current_] {
      worker->beginRound(round);
      read->work();
      QMetaObject::invokeMethod(this, [this, read, noSelection = worker->focusHasNoSelection()] {
        current_.reset();
        focusHasNoSelection_ = noSelection;
        // A copy: the callback may drop the handle that owns it.
        if (read->wanted) {
          const auto done = std::move(read->done);
          done();
        }
        pump();
      });
    });
  }

  // -- Notifications
  // -------------------------------------------------------------------------------------------------

  struct Observed {
    ProcessId process = 0;
    std::function<void(AccessibilityNotification)> callback;
    bool wantsFocus = false;
    bool wantsSelection = false;
  };

  void eventArrived(ProcessId process, Worker::Event event) {
    if (process != frontProcess()) return;
    ++eventSerial_;
    // A caret moves with every key; only the slow poll cares.
    if (event == Worker::Event::caret) return;
    pendingFocus_ |= event == Worker::Event::focus;
    if (input_.isGestureInProgress()) {
      changedDuringGesture_ = true;
      return;
    }
    // The first event is told at once, those that follow closely are told together.
    if (eventTimer_) {
      pendingAfterInterval_ = true;
      return;
    }
    deliverEvents();
    eventTimer_ = scheduler_.after(eventInterval, [this] {
      auto self = std::move(eventTimer_);
      if (std::exchange(pendingAfterInterval_, false)) deliverEvents();
    });
  }

  void deliverEvents() {
    const bool focus = std::exchange(pendingFocus_, false);
    notify(frontProcess(), focus ? AccessibilityNotification::focusedElementChanged
                                 : AccessibilityNotification::selectedTextChanged);
  }

  void gestureEnded() {
    const bool isRemade = std::exchange(changedDuringGesture_, false);
    if (isRemade) ++reselectionSerial_;
    // Whatever was selected by the gesture is final now. Typing in a text that says it has no selection is no
    // reason to ask again: it tells when that changes.
    const bool mayHaveChanged = isRemade || !focusHasNoSelection_ || buffer_.isFresh();
    if (mayHaveChanged) notify(frontProcess(), AccessibilityNotification::selectedTextChanged);
  }

  void offerChanged() {
    if (input_.isGestureInProgress()) {
      changedDuringGesture_ = true;
      return;
    }
    // Some applications offer what was selected only after the gesture; the first offer after it counts.
    if (std::exchange(offeredGesture_, input_.gestureSerial()) != input_.gestureSerial())
      ++reselectionSerial_;
    notify(frontProcess(), AccessibilityNotification::selectedTextChanged);
  }

  ProcessId frontProcess() {
    const auto application = workspace_.frontmostApplication();
    return application ? application->processIdentifier : 0;
  }

  void notify(ProcessId process, AccessibilityNotification notification) {
    std::vector<std::shared_ptr<Observed>> observers;
    for (const auto& observed : observed_) {
      if (const auto strong = observed.lock(); strong && strong->process == process)
        observers.push_back(strong);
    }
    for (const auto& observer : observers) {
      const bool wanted = notification == AccessibilityNotification::focusedElementChanged
                              ? observer->wantsFocus
                              : observer->wantsSelection;
      if (wanted && observer->callback) observer->callback(notification);
    }
  }

  Workspace& workspace_;
  WindowGeometry& geometry_;
  InputActivity& input_;
  SelectionBuffer& buffer_;
  Scheduler& scheduler_;
  atspi::AccessibilityStatus status_;
  QThread thread_;
  Worker* worker_ = nullptr;

  std::deque<std::shared_ptr<PendingRead>> queue_;
  std::shared_ptr<PendingRead> current_;
  Job offerJob_;

  std::vector<std::weak_ptr<Observed>> observed_;
  uint64_t eventSerial_ = 0;
  uint64_t windowSerial_ = 0;
  bool pendingFocus_ = false;
  bool pendingAfterInterval_ = false;
  bool changedDuringGesture_ = false;
  uint64_t offeredGesture_ = 0;
  uint64_t reselectionSerial_ = 0;
  bool focusHasNoSelection_ = false;  // as of the last read
  Job eventTimer_;
  std::vector<Subscription> subscriptions_;
};

namespace {

class Observer final : public AccessibilityObserver {
 public:
  template <typename Observed>
  explicit Observer(std::shared_ptr<Observed> observed)
      : wantFocus_([observed] { observed->wantsFocus = true; }),
        wantSelection_([observed](bool wanted) { observed->wantsSelection = wanted; }) {}

  void addFocusNotification() override { wantFocus_(); }
  // All selection events of the process count: in documents they come from objects inside the focused one.
  bool addSelectionNotification(const ElementPtr&) override {
    wantSelection_(true);
    return true;
  }
  void removeSelectionNotification(const ElementPtr&) override { wantSelection_(false); }

 private:
  std::function<void()> wantFocus_;
  std::function<void(bool)> wantSelection_;
};

}  // namespace

AtspiAccessibility::AtspiAccessibility(Workspace& workspace, WindowGeometry& geometry, InputActivity& input,
                                       SelectionBuffer& buffer, Scheduler& scheduler,
                                       const QString& markerPath)
    : d_(std::make_unique<Private>(workspace, geometry, input, buffer, scheduler, markerPath)) {}

AtspiAccessibility::~AtspiAccessibility() = default;

bool AtspiAccessibility::isTrusted() {
  return d_->status_.isTrusted();
}

bool AtspiAccessibility::requestTrust() {
  if (!d_->status_.isTrusted()) d_->status_.grant();
  return d_->status_.isTrusted();
}

Job AtspiAccessibility::perform(std::function<void()> work, std::function<void()> done) {
  auto read = std::make_shared<PendingRead>();
  read->work = std::move(work);
  read->done = std::move(done);
  d_->enqueue(read);
  return Job([weak = std::weak_ptr(read)] {
    if (const auto read = weak.lock()) read->wanted = false;
  });
}

bool AtspiAccessibility::isReadComplete() {
  return d_->worker_->isRoundComplete();
}

ElementPtr AtspiAccessibility::focusedElement() {
  return d_->worker_->focusedElement();
}

ElementPtr AtspiAccessibility::applicationElement(ProcessId process) {
  return d_->worker_->applicationElement(process);
}

std::unique_ptr<AccessibilityObserver> AtspiAccessibility::observe(
    ProcessId process, std::function<void(AccessibilityNotification)> callback) {
  auto observed = std::make_shared<Private::Observed>();
  observed->process = process;
  observed->callback = std::move(callback);
  std::erase_if(d_->observed_, [](const auto& weak) { return weak.expired(); });
  d_->observed_.push_back(observed);
  return std::make_unique<Observer>(observed);
}

uint64_t AtspiAccessibility::activitySerial() {
  return d_->input_.activitySerial() + d_->buffer_.serial() + d_->eventSerial_ + d_->windowSerial_;
}

uint64_t AtspiAccessibility::gestureSerial() {
  return d_->input_.gestureSerial();
}

uint64_t AtspiAccessibility::reselectionSerial() {
  return d_->reselectionSerial_;
}

bool AtspiAccessibility::isGestureInProgress() {
  return d_->input_.isGestureInProgress();
}

}  // namespace lumeno
