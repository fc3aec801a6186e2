#include "hud/hud_view.h"

namespace lumeno {

HudView::HudView(HudWindow& window, HUDPanelController& panel, AppModel& model, Scheduler& scheduler)
    : window_(window), panel_(panel), scheduler_(scheduler), state_(model, scheduler) {
  window.fill(state_);
  QObject::connect(&state_, &HudState::published, &state_, [this] { reportSize(); });
  QObject::connect(&window, &HudWindow::contentSizeChanged, &state_, [this] { scheduleSizeReport(); });
  QObject::connect(&state_, &HudState::keyboardWanted, &state_, [this] { panel_.takeKeyboard(); });
  panel.onWillShow = [this] { present(); };
  panel.onWillHide = [this] { state_.retire(); };
}

HudView::~HudView() {
  panel_.onWillShow = nullptr;
  panel_.onWillHide = nullptr;
  window_.clear();
}

void HudView::present() {
  window_.notePointer();
  state_.present(!window_.isVisible(), panel_.takesFocus());
}

void HudView::scheduleSizeReport() {
  if (isReportDue_) return;
  isReportDue_ = true;
  reportJob_ = scheduler_.after(std::chrono::milliseconds(0), [this] { reportSize(); });
}

void HudView::reportSize() {
  isReportDue_ = false;
  reportJob_.cancel();
  const Size size = window_.contentSize();
  if (size == reported_) return;
  reported_ = size;
  panel_.layout(size);
}

}  // namespace lumeno
