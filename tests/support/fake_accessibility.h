#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "base/scheduler.h"
#include "platform/accessibility.h"

namespace lumeno {

/// An element whose every answer is a field; absent unless set. Counts what it is asked.
class FakeElement final : public AccessibleElement {
 public:
  static std::shared_ptr<FakeElement> withText(const QString& selectedText) {
    auto element = std::make_shared<FakeElement>();
    element->text = selectedText;
    return element;
  }
  /// Gives the element a selected range at `bounds`.
  void setRangeBounds(const Rect& bounds) {
    range = TextRange{0, 1};
    rangeBounds = bounds;
  }
  void setFrame(const Rect& frame) {
    origin = Point{frame.x, frame.y};
    extent = Size{frame.width, frame.height};
  }

  std::optional<QString> selectedText() override {
    ++textReads;
    return text;
  }
  std::optional<TextRange> selectedTextRange() override { return range; }
  std::optional<Rect> boundsForRange(TextRange asked) override {
    return asked == range ? rangeBounds : std::nullopt;
  }
  std::shared_ptr<const TextMarkerRange> selectedTextMarkerRange() override { return markerRange; }
  std::optional<QString> stringForTextMarkerRange(const TextMarkerRange& asked) override {
    return &asked == markerRange.get() ? markerString : std::nullopt;
  }
  std::optional<QString> attributedStringForTextMarkerRange(const TextMarkerRange& asked) override {
    return &asked == markerRange.get() ? markerAttributedString : std::nullopt;
  }
  std::optional<Rect> boundsForTextMarkerRange(const TextMarkerRange& asked) override {
    return &asked == markerRange.get() ? markerBounds : std::nullopt;
  }
  std::optional<Point> position() override { return origin; }
  std::optional<Size> size() override { return extent; }
  std::vector<ElementPtr> children() override { return childElements; }
  ElementRole role() override { return elementRole; }
  bool isSame(const AccessibleElement& other) const override { return &other == this; }

  std::optional<QString> text;
  std::optional<TextRange> range;
  std::optional<Rect> rangeBounds;
  std::shared_ptr<const TextMarkerRange> markerRange;
  std::optional<QString> markerString;
  std::optional<QString> markerAttributedString;
  std::optional<Rect> markerBounds;
  std::optional<Point> origin;
  std::optional<Size> extent;
  std::vector<ElementPtr> childElements;
  ElementRole elementRole = ElementRole::other;
  int textReads = 0;
};

/// Accessibility by hand. Work runs at the scheduler's next turn; its answer is delivered `readTime` later.
class FakeAccessibility final : public Accessibility {
 public:
  explicit FakeAccessibility(Scheduler& scheduler) : scheduler_(scheduler) {}

  bool isTrusted() override { return trusted; }
  bool requestTrust() override {
    ++trustRequests;
    trusted = trusted || grantsOnRequest;
    return trusted;
  }

  Job perform(std::function<void()> work, std::function<void()> done) override {
    struct Task {
      std::function<void()> done;
      bool isRunning = false;
      Job step;
    };
    const auto task = std::make_shared<Task>();
    task->done = std::move(done);
    task->step = scheduler_.after(std::chrono::milliseconds(0),
                                  [this, weak = std::weak_ptr(task), work = std::move(work)] {
                                    const auto running = weak.lock();
                                    ++reads;
                                    running->isRunning = true;
                                    mostInFlight = std::max(mostInFlight, ++inFlight_);
                                    work();
                                    running->step = scheduler_.after(readTime, [this, weak] {
                                      const auto finished = weak.lock();
                                      finished->isRunning = false;
                                      --inFlight_;
                                      finished->done();
                                    });
                                  });
    return Job([this, task] {
      task->step.cancel();
      if (std::exchange(task->isRunning, false)) --inFlight_;
    });
  }

  bool isReadComplete() override { return isAnswering; }
  ElementPtr focusedElement() override { return focused; }
  ElementPtr applicationElement(ProcessId process) override {
    const auto found = applications.find(process);
    return found == applications.end() ? nullptr : found->second;
  }

  std::unique_ptr<AccessibilityObserver> observe(
      ProcessId process, std::function<void(AccessibilityNotification)> callback) override {
    ++observeCalls;
    if (refusesToObserve) return nullptr;
    return std::make_unique<Observer>(*this, process, std::move(callback));
  }

  uint64_t activitySerial() override { return activity; }
  uint64_t gestureSerial() override { return gesture; }
  uint64_t reselectionSerial() override { return reselection; }
  bool isGestureInProgress() override { return gestureInProgress; }

  /// Something happened that is no gesture of the user: focus moved, a window changed.
  void stir() { ++activity; }
  /// The user pressed a button or key, or turned the wheel.
  void beginGesture() {
    ++activity;
    ++gesture;
  }
  /// Tells every observer of `process`.
  void notify(ProcessId process, AccessibilityNotification notification) {
    const auto snapshot = observers_;
    for (auto* observer : snapshot) {
      if (observer->process == process) observer->callback(notification);
    }
  }
  [[nodiscard]] std::vector<ProcessId> observedProcesses() const {
    std::vector<ProcessId> processes;
    for (const auto* observer : observers_) processes.push_back(observer->process);
    return processes;
  }
  /// The elements whose selection is listened to.
  [[nodiscard]] std::vector<ElementPtr> watchedElements() const {
    std::vector<ElementPtr> elements;
    for (const auto* observer : observers_) {
      elements.insert(elements.end(), observer->elements.begin(), observer->elements.end());
    }
    return elements;
  }

  bool trusted = true;
  bool isAnswering = true;  ///< false: the application is too busy to answer
  bool grantsOnRequest = false;
  bool refusesToObserve = false;
  bool refusesElements = false;
  bool gestureInProgress = false;
  uint64_t activity = 1;
  uint64_t gesture = 1;
  uint64_t reselection = 1;
  std::chrono::milliseconds readTime{0};
  ElementPtr focused;
  std::map<ProcessId, ElementPtr> applications;

  int reads = 0;
  int mostInFlight = 0;
  int trustRequests = 0;
  int observeCalls = 0;
  int elementRegistrations = 0;

 private:
  struct Observer final : AccessibilityObserver {
    Observer(FakeAccessibility& fake, ProcessId pid, std::function<void(AccessibilityNotification)> handler)
        : owner(fake), process(pid), callback(std::move(handler)) {
      owner.observers_.push_back(this);
    }
    ~Observer() override { std::erase(owner.observers_, this); }
    void addFocusNotification() override {}
    bool addSelectionNotification(const ElementPtr& element) override {
      ++owner.elementRegistrations;
      if (owner.refusesElements) return false;
      elements.push_back(element);
      return true;
    }
    void removeSelectionNotification(const ElementPtr& element) override { std::erase(elements, element); }

    FakeAccessibility& owner;
    ProcessId process;
    std::function<void(AccessibilityNotification)> callback;
    std::vector<ElementPtr> elements;
  };

  Scheduler& scheduler_;
  int inFlight_ = 0;
  std::vector<Observer*> observers_;
};

}  // namespace lumeno
