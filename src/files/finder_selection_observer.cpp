#include "files/finder_selection_observer.h"

#include <algorithm>
#include <utility>

namespace lumeno {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto pollInterval = 600ms;

}  // namespace

class FinderSelectionObserver::Private {
 public:
  Private(FileManager& fileManager, Workspace& workspace, AccessibilityAuthorization& authorization,
          Accessibility& accessibility, ClipboardSelectionCapture& capture, Scheduler& scheduler)
      : fileManager_(fileManager),
        workspace_(workspace),
        authorization_(authorization),
        accessibility_(accessibility),
        capture_(capture),
        scheduler_(scheduler) {}

  void start() {
    if (isStarted_) return;
    isStarted_ = true;
    activations_ = workspace_.onActivation([this](const auto&) { tickWhileNeeded(); });
    tickWhileNeeded();
  }

  void stop() {
    isStarted_ = false;
    activations_.reset();
    stopTicking();
    dropRead();
  }

  void clear() {
    dropRead();
    lastEmitted_.reset();
    if (selection.get()) selection.set(std::nullopt);
  }

  Job currentSelection(std::function<void(std::optional<FileSelection>)> done) {
    const auto request = std::make_shared<Request>(Request{frontmostFileManager(), std::move(done), {}});
    if (!request->asked) {
      request->step = scheduler_.after(0ms, [weak = std::weak_ptr(request)] {
        if (const auto current = weak.lock()) current->done(std::nullopt);
      });
    } else {
      request->step = fileManager_.readSelection(FileManager::Read::thorough,
                                                 [this, weak = std::weak_ptr(request)](auto urls) {
                                                   const auto current = weak.lock();
                                                   if (!current) return;
                                                   if (urls || !authorization_.isTrusted().get()) {
                                                     answer(*current, std::move(urls));
                                                   } else {
                                                     lookAtFocus(current);
                                                   }
                                                 });
    }
    return Job([request] { request->step.cancel(); });
  }

  Observable<std::optional<FileSelection>> selection;

 private:
  using Urls = std::optional<std::vector<QUrl>>;

  /// One request for the current selection; it lives in its job.
  struct Request {
    std::optional<RunningApplication> asked;
    std::function<void(std::optional<FileSelection>)> done;
    Job step;
  };

  [[nodiscard]] std::optional<RunningApplication> frontmostFileManager() const {
    auto application = workspace_.frontmostApplication();
    return isFileManager(application) ? application : std::nullopt;
  }

  [[nodiscard]] bool areWeInFront() const {
    const auto application = workspace_.frontmostApplication();
    const auto identifier = application ? application->bundleIdentifier : std::nullopt;
    return identifier == workspace_.ownBundleIdentifier();
  }

  /// The clock runs only while a file manager or this program is in front; the tick that finds another
  /// application there is the last one.
  void tickWhileNeeded() {
    if (!isTicking_ && (frontmostFileManager() || areWeInFront())) {
      isTicking_ = true;
      timer_ = scheduler_.every(pollInterval, [this] { poll(); });
    }
  }

  void stopTicking() {
    isTicking_ = false;
    timer_.cancel();
  }

  void poll() {
    if (areWeInFront()) return;
    const auto asked = frontmostFileManager();
    if (!asked) {
      stopTicking();
      clear();
    } else if (!isReading_) {
      isReading_ = true;
      read_ = fileManager_.readSelection(FileManager::Read::quick, [this, asked](const Urls& urls) {
        isReading_ = false;
        if (isStillInFront(*asked)) publish(urls);
      });
    }
  }

  void dropRead() {
    isReading_ = false;
    read_.cancel();
  }

  [[nodiscard]] bool isStillInFront(const RunningApplication& asked) const {
    const auto now = frontmostFileManager();
    return now && now->processIdentifier == asked.processIdentifier && now->window == asked.window;
  }

  void publish(const Urls& urls) {
    // What was handed out on request may be beyond what polling can tell.
    if (!urls && lastEmitted_ && lastEmitted_ != selection.get()) return;
    if (!urls || urls->empty()) return clear();
    FileSelection candidate = selectionOf(*urls);
    if (lastEmitted_ == candidate) return;
    lastEmitted_ = candidate;
    selection.set(std::move(candidate));
  }

  [[nodiscard]] FileSelection selectionOf(std::vector<QUrl> urls) const {
    return {std::move(urls), u"Finder"_s, anchor()};
  }

  /// A strip along the bottom edge of the file manager's window.
  [[nodiscard]] std::optional<Rect> anchor() const {
    if (!authorization_.isTrusted().get()) return std::nullopt;
    const auto frame = fileManager_.frontWindowFrame();
    if (!frame || frame->width <= 0 || frame->height <= 0) return std::nullopt;
    return Rect{frame->x, frame->y + frame->height - 1, frame->width, 1};
  }

  /// Where the keys go to a terminal inside of the file manager, the copy key would be one of its own.
  void lookAtFocus(const std::shared_ptr<Request>& request) {
    const auto role = std::make_shared<ElementRole>(ElementRole::other);
    request->step = accessibility_.perform(
        [role, &accessibility = accessibility_] {
          if (const auto focused = accessibility.focusedElement()) *role = focused->role();
        },
        [this, weak = std::weak_ptr(request), role] {
          if (const auto current = weak.lock()) askByCopying(current, *role);
        });
  }

  void askByCopying(const std::shared_ptr<Request>& request, ElementRole focused) {
    const bool isKeyHarmless = focused == ElementRole::other;
    if (!isKeyHarmless || !isStillInFront(*request->asked)) return answer(*request, std::nullopt);
    request->step =
        capture_.captureFiles(request->asked->window, [this, weak = std::weak_ptr(request)](Urls urls) {
          if (const auto current = weak.lock()) answer(*current, std::move(urls));
        });
  }

  void answer(const Request& request, Urls urls) {
    const bool isLate = !isStillInFront(*request.asked) && !areWeInFront();
    if (isLate || !urls || urls->empty()) return request.done(std::nullopt);
    lastEmitted_ = selectionOf(std::move(*urls));
    request.done(lastEmitted_);
  }

  FileManager& fileManager_;
  Workspace& workspace_;
  AccessibilityAuthorization& authorization_;
  Accessibility& accessibility_;
  ClipboardSelectionCapture& capture_;
  Scheduler& scheduler_;

  bool isStarted_ = false;
  bool isTicking_ = false;
  bool isReading_ = false;
  std::optional<FileSelection> lastEmitted_;
  Subscription activations_;
  Job timer_;
  Job read_;
};

FinderSelectionObserver::FinderSelectionObserver(FileManager& fileManager, Workspace& workspace,
                                                 AccessibilityAuthorization& authorization,
                                                 Accessibility& accessibility,
                                                 ClipboardSelectionCapture& capture, Scheduler& scheduler)
    : d_(std::make_unique<Private>(fileManager, workspace, authorization, accessibility, capture,
                                   scheduler)) {}

FinderSelectionObserver::~FinderSelectionObserver() = default;

Observable<std::optional<FileSelection>>& FinderSelectionObserver::selection() {
  return d_->selection;
}

void FinderSelectionObserver::start() {
  d_->start();
}

void FinderSelectionObserver::stop() {
  d_->stop();
}

void FinderSelectionObserver::clear() {
  d_->clear();
}

Job FinderSelectionObserver::currentSelection(std::function<void(std::optional<FileSelection>)> done) {
  return d_->currentSelection(std::move(done));
}

}  // namespace lumeno
