#pragma once

#include <QPointer>

#include "base/scheduler.h"
#include "settings_ui/settings_quick_window.h"
#include "settings_ui/settings_state.h"
#include "view_kit/view_kit.h"

namespace lumeno {

/// The settings window: one at most. It exists only while it is open, so that its memory goes back when it is
/// closed. Main thread.
class SettingsWindow {
 public:
  /// All must outlive it.
  SettingsWindow(ViewKit& kit, Scheduler& scheduler, SettingsState::Services services);
  ~SettingsWindow();
  SettingsWindow(const SettingsWindow&) = delete;
  SettingsWindow& operator=(const SettingsWindow&) = delete;

  /// Opens the window, or brings the open one to the front.
  void show();
  void close();
  /// Null while it is closed.
  [[nodiscard]] SettingsQuickWindow* window() const { return window_; }

 private:
  void forget();

  ViewKit& kit_;
  Scheduler& scheduler_;
  SettingsState::Services services_;
  QPointer<SettingsQuickWindow> window_;
};

}  // namespace lumeno
