#include "hotkey/hotkey_monitor.h"

#include "records/hotkey_config.h"

namespace lumeno {

HotkeyMonitor::HotkeyMonitor(EventMonitor& events, uint16_t code, uint64_t flags)
    : keyCode(code), requiredFlags(flags), events_(events) {}

void HotkeyMonitor::start() {
  if (monitor_) return;
  monitor_ = events_.monitorKeyDown([this](KeyPress key) {
    if (key.keyCode == keyCode && (key.modifiers & modifier::shortcutMask) == requiredFlags && onSummon)
      onSummon();
  });
}

void HotkeyMonitor::stop() {
  monitor_.reset();
}

}  // namespace lumeno
