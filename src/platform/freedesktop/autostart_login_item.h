#pragma once

#include <QString>

#include "platform/login_item.h"

namespace lumeno {

/// Starting with the session through XDG autostart entries.
class AutostartLoginItem final : public LoginItem {
 public:
  /// `program` is the path that the entry starts.
  explicit AutostartLoginItem(QString program) : program_(std::move(program)) {}

  [[nodiscard]] bool isEnabled() override;
  [[nodiscard]] bool registerItem() override;
  [[nodiscard]] bool unregisterItem() override;

 private:
  QString program_;
};

}  // namespace lumeno
