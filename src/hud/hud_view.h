#pragma once

#include "base/job.h"
#include "base/scheduler.h"
#include "hud/hud_panel_controller.h"
#include "hud/hud_state.h"
#include "hud/hud_theme.h"
#include "hud/hud_window.h"

namespace lumeno {

/// Fills the HUD's window from the model, in the current look, and tells the panel what size it wants. Main
/// thread.
class HudView {
 public:
  /// All must outlive the view; the window and the panel are usable without it.
  HudView(HudWindow& window, HUDPanelController& panel, AppModel& model, SettingsStore& settings,
          Appearance& appearance, Scheduler& scheduler);
  ~HudView();
  HudView(const HudView&) = delete;
  HudView& operator=(const HudView&) = delete;

  /// What the desktop can do for translucent windows; may change at any time.
  void setBackdrop(Backdrop backdrop) { theme_.setBackdrop(backdrop); }

 private:
  void present();
  void scheduleSizeReport();
  void reportSize();

  HudWindow& window_;
  HUDPanelController& panel_;
  Scheduler& scheduler_;
  HudState state_;
  HudTheme theme_;
  Size reported_;
  bool isReportDue_ = false;
  Job reportJob_;
};

}  // namespace lumeno
