#pragma once

#include <memory>

#include "base/scheduler.h"
#include "platform/accessibility.h"
#include "platform/file_manager.h"
#include "platform/window_geometry.h"
#include "platform/workspace.h"

namespace lumeno {

/// The file managers of Linux desktops. The best source is what one reports by itself through an extension;
/// else accessibility is read, where the user lets this program do so, on a worker thread that is started at
/// the first need. While nothing happens, quick reads answer from what is known.
class DesktopFileManager final : public FileManager {
 public:
  /// All must outlive this object. Reports arrive at the program's name on the session bus, which it should
  /// hold already.
  DesktopFileManager(Workspace& workspace, WindowGeometry& geometry, Accessibility& accessibility,
                     Scheduler& scheduler);
  ~DesktopFileManager() override;

  [[nodiscard]] Job readSelection(Read read,
                                  std::function<void(std::optional<std::vector<QUrl>>)> done) override;
  [[nodiscard]] std::optional<Rect> frontWindowFrame() override;

 private:
  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace lumeno
