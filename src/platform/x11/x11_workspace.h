#pragma once

#include <QHash>
#include <QObject>
#include <memory>

#include "base/scheduler.h"
#include "platform/desktop_entry/desktop_entries.h"
#include "platform/workspace.h"
#include "platform/x11/own_windows.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// The application in front, from the window manager's active window and the keyboard focus. Event driven:
/// nothing is asked while nothing changes. Main thread.
class X11Workspace final : public QObject, public Workspace {
  Q_OBJECT
 public:
  X11Workspace(X11Connection& connection, OwnWindows& ownWindows, Scheduler& scheduler);
  ~X11Workspace() override;

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override { return frontmost_; }
  [[nodiscard]] Subscription onActivation(
      std::function<void(const std::optional<RunningApplication>&)> handler) override;
  [[nodiscard]] std::optional<QString> ownBundleIdentifier() override;

 private:
  struct Identity {
    QString bundleIdentifier;
    QString name;
    bool isTerminal = false;
    QString applicationId;
    bool isInstalled = false;  ///< an entry is known for it
  };

  void loadEntries();
  void reloadEntries();
  void refresh();
  [[nodiscard]] bool exists(xcb_window_t window) const;
  void setFrontmost(std::optional<RunningApplication> application);
  [[nodiscard]] RunningApplication ownApplication(xcb_window_t window) const;
  [[nodiscard]] RunningApplication describe(xcb_window_t window);
  [[nodiscard]] Identity identify(const QString& instanceName, const QString& className) const;
  [[nodiscard]] ProcessId processOf(xcb_window_t window) const;

  X11Connection& connection_;
  OwnWindows& ownWindows_;
  Scheduler& scheduler_;
  DesktopEntries entries_;
  QHash<QByteArray, Identity> identities_;  ///< by the bytes of WM_CLASS
  std::optional<RunningApplication> frontmost_;
  Job gap_;          ///< waits for the next window when none is active
  Job reloadPause_;  ///< runs while the entries are not to be read again
  Signal<const std::optional<RunningApplication>&> activation_;
  Subscription rootProperties_;
  Subscription destroyed_;
  Subscription ownFocus_;
};

}  // namespace lumeno
