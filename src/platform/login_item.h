#pragma once

namespace lumeno {

/// Starting with the user's session. Main thread.
class LoginItem {
 public:
  virtual ~LoginItem() = default;
  [[nodiscard]] virtual bool isEnabled() = 0;
  /// False when it could not be done.
  [[nodiscard]] virtual bool registerItem() = 0;
  [[nodiscard]] virtual bool unregisterItem() = 0;
};

}  // namespace lumeno
