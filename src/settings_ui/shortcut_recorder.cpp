#include "settings_ui/shortcut_recorder.h"

#include "hotkey/key_names.h"

namespace lumeno {

using namespace Qt::StringLiterals;

ShortcutRecorder::ShortcutRecorder(SettingsStore& settings, KeyRecorder& keys, SystemSound& sound)
    : settings_(settings), keys_(keys), sound_(sound) {
  shortcut_ = settings.summonHotkey.subscribe([this](const HotkeyConfig&) { Q_EMIT labelChanged(); });
  enabled_ = settings.summonHotkeyEnabled.subscribe([this](bool enabled) {
    if (!enabled) cancel();
  });
}

QString ShortcutRecorder::label() const {
  return isRecording() ? u"Press keys…"_s : displayString(settings_.summonHotkey.get());
}

void ShortcutRecorder::toggle() {
  if (isRecording()) {
    cancel();
  } else if (settings_.summonHotkeyEnabled.get()) {
    start();
  }
}

void ShortcutRecorder::start() {
  recording_ = keys_.recordKeys([this](KeyPress key) { handle(key); });
  if (isRefused_ == isRecording()) {
    isRefused_ = !isRecording();
    Q_EMIT isRefusedChanged();
  }
  if (!isRecording()) return;
  Q_EMIT isRecordingChanged();
  Q_EMIT labelChanged();
}

void ShortcutRecorder::cancel() {
  if (!isRecording()) return;
  recording_.reset();
  Q_EMIT isRecordingChanged();
  Q_EMIT labelChanged();
}

void ShortcutRecorder::setHasKeyboard(bool hasKeyboard) {
  hasKeyboard_ = hasKeyboard;
  if (!hasKeyboard) cancel();
}

void ShortcutRecorder::handle(KeyPress key) {
  if (!hasKeyboard_) return;
  if (key.keyCode == escapeKeyCode) {
    cancel();
    return;
  }
  const uint64_t flags = key.modifiers & modifier::shortcutMask;
  if (flags == 0 || key.keyCode == KeyRecorder::unknownKeyCode) {
    sound_.beep();
    return;
  }
  settings_.summonHotkey.set({key.keyCode, flags});
  cancel();
}

}  // namespace lumeno
