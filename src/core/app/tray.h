#pragma once

#include <QActionGroup>
#include <QMenu>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>
#include <vector>

#include "base/observable.h"
#include "core/model/app_model.h"
#include "core/settings/settings_store.h"

namespace lumeno {

/// The tray item, whose icon follows the model's state, and its menu, which tells the truth at any time.
class Tray {
 public:
  /// What the menu's last entries do.
  struct Actions {
    std::function<void()> showWelcome;
    std::function<void()> showSettings;
    std::function<void()> quit;
  };

  /// All must outlive the tray.
  Tray(AppModel& model, SettingsStore& settings, AccessibilityAuthorization& accessibility,
       UrlOpener& urlOpener, const Actions& actions);

  /// A message of the desktop's own kind, for what cannot be said in the HUD.
  void showMessage(const QString& text);

 private:
  void buildMenu(const Actions& actions);
  void updateIcon();
  void updateBackend();

  AppModel& model_;
  SettingsStore& settings_;
  AccessibilityAuthorization& accessibility_;
  UrlOpener& urlOpener_;
  QMenu menu_;
  QAction* watching_ = nullptr;
  QAction* enableAccess_ = nullptr;
  QAction* accessNote_ = nullptr;
  QAction* modelLine_ = nullptr;
  QAction* fileActions_ = nullptr;
  std::vector<QAction*> backends_;
  QString shownSymbol_;
  QSystemTrayIcon icon_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace lumeno
