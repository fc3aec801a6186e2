#pragma once

#include <QKeyEvent>
#include <QQuickView>
#include <QSet>

#include "base/job.h"
#include "base/scheduler.h"
#include "settings_ui/settings_state.h"
#include "view_kit/view_kit.h"

namespace lumeno {

/// The window itself, from its opening to its closing: as wide and as high as its tab wants to be, up to a
/// limit beyond which it scrolls. Main thread.
class SettingsQuickWindow : public QQuickView {
  Q_OBJECT
 public:
  /// The kit, the scheduler and the services must outlive the window.
  SettingsQuickWindow(ViewKit& kit, Scheduler& scheduler, const SettingsState::Services& services);
  ~SettingsQuickWindow() override;

  /// Whether keys are being recorded, or may still arrive from a recording: they mean nothing else.
  [[nodiscard]] bool keepsKeys() const { return keepsKeys_; }

 Q_SIGNALS:
  void closed();

 protected:
  bool event(QEvent* event) override;

 private:
  void fill();
  void followScreen();
  void fit();
  void recordingChanged();
  [[nodiscard]] bool isRecorded(const QKeyEvent& event);

  ViewKit& kit_;
  Scheduler& scheduler_;
  SettingsState state_;
  /// Not whether it is the active window: that ends already when another program, mostly the window manager,
  /// grabs a key that is part of a shortcut.
  bool hasKeyboard_ = false;
  bool keepsKeys_ = false;
  QSet<quint32> recordedKeys_;  ///< are down, and mean nothing more
  Job recordingEnd_;
  Subscription keyboard_;
  QMetaObject::Connection roomChanges_;
};

}  // namespace lumeno
