#include "hud/hud_panel_controller.h"

#include <algorithm>

#include "hud/placement/placement.h"

namespace lumeno {

namespace {

constexpr std::chrono::milliseconds moveDuration{180};
constexpr std::chrono::milliseconds fadeDuration{160};

}  // namespace

HUDPanelController::HUDPanelController(PanelWindow& window, ScreenLayout& screens, EventMonitor& events,
                                       Appearance& appearance)
    : window_(window), screens_(screens), events_(events), appearance_(appearance) {}

void HUDPanelController::show(const std::optional<Rect>& anchor, bool preferBelow, bool keyEligible,
                              bool takeFocus) {
  anchor_ = anchor;
  preferBelow_ = preferBelow;
  isKeyEligible_ = keyEligible;
  takesFocus_ = takeFocus;
  window_.setKeyEligible(keyEligible);
  if (!window_.isVisible()) isPositioned_ = false;
  // The content catches up before it is seen, and may report its new size from inside the call. When it has
  // none to report, the anchor is new all the same.
  isLaidOutForShow_ = false;
  if (onWillShow) onWillShow();
  if (!isLaidOutForShow_ && lastContent_) layout(*lastContent_);
  window_.setAlpha(1);
  // A panel that may take the keyboard stays when the user clicks elsewhere.
  if (takeFocus || keyEligible) {
    removeOutsideMonitors();
  } else {
    installOutsideMonitors();
  }
  window_.orderFrontRegardless();
  if (takeFocus) window_.activateAndMakeKey();
}

void HUDPanelController::takeKeyboard() {
  if (isKeyEligible_ && window_.isVisible()) window_.activateAndMakeKey();
}

void HUDPanelController::layout(Size content) {
  lastContent_ = Size{std::max(content.width, 1.0), std::max(content.height, 1.0)};
  isLaidOutForShow_ = true;
  const auto placed =
      placement::place(screens_.screens(), screens_.mouseLocation(), anchor_, preferBelow_, *lastContent_);
  if (!placed) return;
  isFlippedBelow_ = placed->isFlippedBelow;
  const bool animated = isPositioned_ && window_.isVisible() && !appearance_.preferences().get().reduceMotion;
  window_.setFrame(placed->frame, animated ? moveDuration : std::chrono::milliseconds(0));
  window_.invalidateShape();
  isPositioned_ = true;
}

void HUDPanelController::hide() {
  removeOutsideMonitors();
  if (onWillHide) onWillHide();
  if (!window_.isVisible() || appearance_.preferences().get().reduceMotion) {
    window_.orderOut();
    return;
  }
  window_.fadeOut(fadeDuration, [this] {
    window_.orderOut();
    window_.setAlpha(1);
  });
}

void HUDPanelController::installOutsideMonitors() {
  if (!outsideMonitors_.empty()) return;
  const auto keep = [this](Subscription monitor) {
    if (monitor) outsideMonitors_.push_back(std::move(monitor));
  };
  keep(events_.monitorMouseDown([this] {
    if (onOutsideDismiss) onOutsideDismiss();
  }));
  keep(events_.monitorKeyDown([this](KeyPress press) {
    if (press.keyCode == escapeKeyCode && onOutsideDismiss) onOutsideDismiss();
  }));
}

void HUDPanelController::removeOutsideMonitors() {
  outsideMonitors_.clear();
}

}  // namespace lumeno
