#pragma once

#include "platform/application_launcher.h"

namespace lumeno {

/// Starts what the desktop's own associations name for plain text and for folders. They are looked up and
/// started on a worker thread.
class DesktopApplicationLauncher final : public ApplicationLauncher {
 public:
  void openTextEditor(std::function<void(bool opened)> done) override;
  void openHomeFolder(std::function<void(bool opened)> done) override;
};

}  // namespace lumeno
