#pragma once

#include <QActionGroup>
#include <QKeyCombination>
#include <QMenu>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>
#include <vector>

#include "base/observable.h"
#include "core/model/app_model.h"
#include "core/settings/settings_store.h"
#include "view_kit/theme.h"

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
       UrlOpener& urlOpener, Theme& theme, const Actions& actions);

  /// A message of the desktop's own kind, for what cannot be said in the HUD.
  void showMessage(const QString& text);

  /// Does what the menu shows these keys for; false when they are none of the menu's.
  bool handleShortcut(QKeyCombination keys);

 private:
  void buildMenu(const Actions& actions);
  QAction* addEntry(const QString& symbol, const QString& text);
  void drawSymbols();
  void updateIcon();
  void updateBackend();

  AppModel& model_;
  SettingsStore& settings_;
  AccessibilityAuthorization& accessibility_;
  UrlOpener& urlOpener_;
  Theme& theme_;
  QMenu menu_;
  QAction* watching_ = nullptr;
  QAction* enableAccess_ = nullptr;
  QAction* accessNote_ = nullptr;
  QAction* modelLine_ = nullptr;
  QAction* fileActions_ = nullptr;
  std::vector<QAction*> backends_;
  QString shownSymbol_;
  QColor drawnColor_;
  QSystemTrayIcon icon_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace lumeno
