#include "settings_ui/settings_window.h"

#include <utility>

#include "settings_ui/present_window.h"

namespace lumeno {

SettingsWindow::SettingsWindow(ViewKit& kit, Scheduler& scheduler, SettingsState::Services services)
    : kit_(kit), scheduler_(scheduler), services_(std::move(services)) {}

SettingsWindow::~SettingsWindow() {
  delete window_;
}

void SettingsWindow::show() {
  if (!window_) {
    window_ = new SettingsQuickWindow(kit_, scheduler_, services_);
    QObject::connect(window_, &SettingsQuickWindow::closed, window_, [this] { forget(); });
  }
  presentWindow(*window_);
}

void SettingsWindow::close() {
  if (window_) window_->close();
}

void SettingsWindow::forget() {
  SettingsQuickWindow* gone = window_;
  window_.clear();
  QObject::connect(gone, &QObject::destroyed, &kit_.engine(), [&kit = kit_] { kit.releaseUnused(); });
  // Not at once: it is still busy closing.
  gone->deleteLater();
}

}  // namespace lumeno
