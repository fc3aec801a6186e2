#pragma once

#include <memory>

#include "onboarding/onboarding_window.h"

namespace lumeno {

/// Opens the onboarding window, one at a time. Main thread.
class OnboardingWindowPresenter {
 public:
  /// The kit and the services must outlive the presenter.
  OnboardingWindowPresenter(ViewKit& kit, OnboardingServices services);
  OnboardingWindowPresenter(const OnboardingWindowPresenter&) = delete;
  OnboardingWindowPresenter& operator=(const OnboardingWindowPresenter&) = delete;

  /// Opens the window at its first scene, or brings the one that is open to the front.
  void show();
  /// The window that is open; null when there is none.
  [[nodiscard]] OnboardingWindow* window() const { return window_.get(); }

 private:
  void finish();
  void retire();

  ViewKit& kit_;
  OnboardingServices services_;
  std::unique_ptr<OnboardingWindow> window_;
  std::unique_ptr<OnboardingWindow> retired_;  ///< closed, perhaps from within one of its own handlers
  Job disposal_;
};

}  // namespace lumeno
