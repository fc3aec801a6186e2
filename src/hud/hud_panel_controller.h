#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "core/model/hud_presenter.h"
#include "platform/appearance.h"
#include "platform/event_monitor.h"
#include "platform/panel_window.h"
#include "platform/screen_layout.h"

namespace lumeno {

/// Owns the one floating panel: places it next to the selection, follows the size of its content, dismisses
/// it on clicks and Escape elsewhere, fades it out. Main thread.
class HUDPanelController final : public HUDPresenter {
 public:
  /// All must outlive the controller.
  HUDPanelController(PanelWindow& window, ScreenLayout& screens, EventMonitor& events,
                     Appearance& appearance);

  void show(const std::optional<Rect>& anchor, bool preferBelow, bool keyEligible, bool takeFocus) override;
  void hide() override;
  /// The user wants to type into the panel: it takes the keyboard, where it may and is visible.
  void takeKeyboard();

  /// The content's size report (logical pixels); places and sizes the panel.
  void layout(Size content);
  /// Whether the last placement ended up below the anchor.
  [[nodiscard]] bool isFlippedBelow() const { return isFlippedBelow_; }
  /// Whether the latest `show` was to take the keyboard.
  [[nodiscard]] bool takesFocus() const { return takesFocus_; }

  /// Called before the panel is shown or updated, so that the content can catch up and report its size
  /// unseen.
  std::function<void()> onWillShow;
  /// Called before the panel fades out, so that the content can keep still meanwhile.
  std::function<void()> onWillHide;

 private:
  void installOutsideMonitors();
  void removeOutsideMonitors();

  PanelWindow& window_;
  ScreenLayout& screens_;
  EventMonitor& events_;
  Appearance& appearance_;
  std::optional<Rect> anchor_;
  bool preferBelow_ = false;
  bool isKeyEligible_ = false;
  bool takesFocus_ = false;
  bool isFlippedBelow_ = false;
  bool isPositioned_ = false;  ///< placed since it was last shown from hidden: moves are then animated
  bool isLaidOutForShow_ = false;
  std::optional<Size> lastContent_;
  std::vector<Subscription> outsideMonitors_;
};

}  // namespace lumeno
