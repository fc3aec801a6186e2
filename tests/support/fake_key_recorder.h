#pragma once

#include <utility>

#include "platform/key_recorder.h"

namespace lumeno {

class FakeKeyRecorder final : public KeyRecorder {
 public:
  Subscription recordKeys(std::function<void(KeyPress)> handler) override {
    return refuses ? Subscription() : keys_.connect(std::move(handler));
  }

  Observable<uint32_t>& windowWithKeyboard() override { return window; }

  /// A key pressed anywhere.
  void press(uint16_t keyCode, uint64_t modifiers = 0) { keys_.emit({keyCode, modifiers}); }
  [[nodiscard]] bool isRecording() const { return keys_.hasListeners(); }

  bool refuses = false;
  Observable<uint32_t> window;

 private:
  Signal<KeyPress> keys_;
};

}  // namespace lumeno
