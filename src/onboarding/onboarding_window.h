#pragma once

#include <QQuickView>
#include <functional>

#include "onboarding/demo_timeline.h"
#include "onboarding/onboarding_state.h"

namespace lumeno {

class ViewKit;

/// The onboarding window: an ordinary window of the desktop with the five scenes and the live demo. What
/// moves in it moves only while it can be seen. Made afresh for each showing. Main thread.
class OnboardingWindow : public QQuickView {
  Q_OBJECT
  Q_PROPERTY(bool live READ isLive NOTIFY liveChanged)

 public:
  /// The kit and the services must outlive the window.
  OnboardingWindow(ViewKit& kit, const OnboardingServices& services, std::function<void()> onFinish);
  ~OnboardingWindow() override;

  /// Shows it in the middle of the primary screen's work area, no larger than that.
  void open();
  /// In front of other applications' windows, with the keyboard.
  void bringToFront();

  [[nodiscard]] OnboardingState& state() { return state_; }
  [[nodiscard]] DemoTimeline& demo() { return demo_; }
  /// Whether it can be seen.
  [[nodiscard]] bool isLive() const { return isLive_; }
  /// The window is taken hold of where the pointer is, and then follows it.
  Q_INVOKABLE void beginMove();
  Q_INVOKABLE void continueMove();

 Q_SIGNALS:
  void liveChanged();
  /// It has been closed, by whatever means.
  void closed();

 protected:
  bool event(QEvent* event) override;
  void exposeEvent(QExposeEvent* event) override;

 private:
  void updateLive();

  ViewKit& kit_;
  OnboardingState state_;
  DemoTimeline demo_;
  bool isLive_ = false;
  QPoint grip_;  ///< where it was taken hold of, from the corner of its frame
};

}  // namespace lumeno
