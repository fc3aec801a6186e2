#pragma once

#include <utility>

#include "platform/event_monitor.h"

namespace lumeno {

class FakeEventMonitor final : public EventMonitor {
 public:
  Subscription monitorKeyDown(std::function<void(KeyPress)> handler) override {
    return refuses ? Subscription() : keys_.connect(std::move(handler));
  }
  Subscription monitorMouseDown(std::function<void()> handler) override {
    return refuses ? Subscription() : presses_.connect(std::move(handler));
  }

  /// Input to another application.
  void pressKey(uint16_t keyCode, uint64_t modifiers = 0) { keys_.emit({keyCode, modifiers}); }
  void pressMouse() { presses_.emit(); }
  [[nodiscard]] bool watchesKeys() const { return keys_.hasListeners(); }
  [[nodiscard]] bool watchesMouse() const { return presses_.hasListeners(); }

  bool refuses = false;

 private:
  Signal<KeyPress> keys_;
  Signal<> presses_;
};

}  // namespace lumeno
