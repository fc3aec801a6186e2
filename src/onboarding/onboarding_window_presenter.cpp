#include "onboarding/onboarding_window_presenter.h"

#include "view_kit/view_kit.h"

namespace lumeno {

OnboardingWindowPresenter::OnboardingWindowPresenter(ViewKit& kit, OnboardingServices services)
    : kit_(kit), services_(std::move(services)) {}

void OnboardingWindowPresenter::show() {
  if (!window_) {
    window_ = std::make_unique<OnboardingWindow>(kit_, services_, [this] { finish(); });
    QObject::connect(window_.get(), &OnboardingWindow::closed, window_.get(), [this] { retire(); });
    window_->open();
  }
  window_->bringToFront();
}

void OnboardingWindowPresenter::finish() {
  services_.settings.hasCompletedOnboarding.set(true);
  if (window_) window_->close();
}

void OnboardingWindowPresenter::retire() {
  retired_ = std::move(window_);
  disposal_ = services_.scheduler.after(std::chrono::milliseconds(0), [this] {
    retired_.reset();
    kit_.releaseUnused();
  });
}

}  // namespace lumeno
