#pragma once

#include <utility>

#include "platform/panel_window.h"

namespace lumeno {

/// A panel that remembers what was asked of it. A fade ends when the test says so.
class FakePanelWindow final : public PanelWindow {
 public:
  void setKeyEligible(bool eligible) override { keyEligible = eligible; }
  bool isVisible() const override { return visible; }
  void orderFrontRegardless() override { visible = true; }
  void orderOut() override {
    ++orderOuts;
    visible = false;
    isKey = false;
    fadeDone = nullptr;
  }
  void activateAndMakeKey() override { isKey = true; }
  void setFrame(const Rect& newFrame, std::chrono::milliseconds duration) override {
    ++frames;
    frame = newFrame;
    moveDuration = duration;
    if (onFrame) onFrame(newFrame);
  }
  void setAlpha(double newAlpha) override {
    alpha = newAlpha;
    fadeDone = nullptr;
  }
  void fadeOut(std::chrono::milliseconds duration, std::function<void()> done) override {
    fadeDuration = duration;
    fadeDone = std::move(done);
  }
  void invalidateShape() override { ++shapes; }

  void finishFade() {
    alpha = 0;
    if (auto done = std::exchange(fadeDone, nullptr)) done();
  }

  bool keyEligible = false;
  bool visible = false;
  bool isKey = false;
  double alpha = 1;
  Rect frame;
  std::chrono::milliseconds moveDuration{-1};
  std::chrono::milliseconds fadeDuration{-1};
  std::function<void()> fadeDone;  ///< empty when no fade is under way
  std::function<void(const Rect&)> onFrame;
  int frames = 0;
  int shapes = 0;
  int orderOuts = 0;
};

}  // namespace lumeno
