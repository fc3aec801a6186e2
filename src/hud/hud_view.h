#pragma once

#include "base/job.h"
#include "base/scheduler.h"
#include "hud/hud_panel_controller.h"
#include "hud/hud_state.h"
#include "hud/hud_window.h"

namespace lumeno {

/// Fills the HUD's window from the model, and tells the panel what size it wants. Main
/// thread.
class HudView {
 public:
  /// All must outlive the view; the window and the panel are usable without it.
  HudView(HudWindow& window, HUDPanelController& panel, AppModel& model, Scheduler& scheduler);
  ~HudView();
  HudView(const HudView&) = delete;
  HudView& operator=(const HudView&) = delete;

 private:
  void present();
  void scheduleSizeReport();
  void reportSize();

  HudWindow& window_;
  HUDPanelController& panel_;
  Scheduler& scheduler_;
  HudState state_;
  Size reported_;
  bool isReportDue_ = false;
  Job reportJob_;
};

}  // namespace lumeno
