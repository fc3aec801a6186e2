#pragma once

#include <QObject>
#include <QString>

#include "base/observable.h"
#include "core/settings/settings_store.h"
#include "platform/feedback_devices.h"
#include "platform/key_recorder.h"

namespace lumeno {

/// Records a new summon shortcut: the first key pressed with a modifier is it; a key without one beeps;
/// Escape ends the recording without a change. Main thread.
class ShortcutRecorder : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool isRecording READ isRecording NOTIFY isRecordingChanged)
  Q_PROPERTY(QString label READ label NOTIFY labelChanged)
  Q_PROPERTY(bool isRefused READ isRefused NOTIFY isRefusedChanged)

 public:
  /// All must outlive the recorder.
  ShortcutRecorder(SettingsStore& settings, KeyRecorder& keys, SystemSound& sound);

  [[nodiscard]] bool isRecording() const { return static_cast<bool>(recording_); }
  /// The shortcut as it stands, or what to do.
  [[nodiscard]] QString label() const;
  /// The system did not let us see the keys when a recording was asked for last.
  [[nodiscard]] bool isRefused() const { return isRefused_; }

  /// Starts a recording, or ends it without a change. Nothing while the shortcut is switched off.
  Q_INVOKABLE void toggle();
  /// Ends a recording without a change.
  Q_INVOKABLE void cancel();
  /// Whether what is typed goes to the window. Keys typed elsewhere are none of ours; losing the keyboard
  /// ends a recording.
  void setHasKeyboard(bool hasKeyboard);

 Q_SIGNALS:
  void isRecordingChanged();
  void labelChanged();
  void isRefusedChanged();

 private:
  void start();
  void handle(KeyPress key);

  SettingsStore& settings_;
  KeyRecorder& keys_;
  SystemSound& sound_;
  bool isRefused_ = false;
  bool hasKeyboard_ = false;
  Subscription recording_;
  Subscription shortcut_;
  Subscription enabled_;
};

}  // namespace lumeno
