#pragma once

#include "platform/login_item.h"

namespace lumeno {

/// A login item in memory that can be told to refuse.
class FakeLoginItem final : public LoginItem {
 public:
  [[nodiscard]] bool isEnabled() override { return enabled; }
  [[nodiscard]] bool registerItem() override { return change(true); }
  [[nodiscard]] bool unregisterItem() override { return change(false); }

  bool enabled = false;
  bool refuses = false;
  int calls = 0;

 private:
  bool change(bool wanted) {
    ++calls;
    if (!refuses) enabled = wanted;
    return !refuses;
  }
};

}  // namespace lumeno
