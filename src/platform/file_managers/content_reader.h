#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <chrono>
#include <optional>
#include <vector>

#include "platform/atspi/atspi_client.h"
#include "platform/atspi/atspi_focus.h"
#include "platform/file_managers/file_manager_recipe.h"
#include "platform/file_managers/window_parts.h"

namespace lumeno {

/// Reads over accessibility what is selected in the content view of a file manager's active window. The view
/// is looked for once per window. Lives on a worker thread; every call has a deadline.
class ContentReader {
 public:
  struct Effort {
    std::chrono::milliseconds limit;      ///< of the whole read
    std::chrono::milliseconds callLimit;  ///< of each question to the other process
    std::optional<int> mostNames;         ///< where there are more they are not read
    bool isInsistent = false;             ///< looks for the view also if it was not found a moment ago
    bool takesAnyWindow = false;          ///< one that is shown, where none is active
  };

  /// A file manager that runs.
  struct Target {
    FileManagerRecipe recipe;
    ProcessId process = 0;
  };

  /// The paths of the selected items in the order of the view; empty when nothing, or nothing local, is
  /// selected; absent when they cannot be told exactly.
  std::optional<std::vector<QByteArray>> read(const Target& target, const Effort& effort);
  /// As `read`, of the preferred one if it still runs, or else of another.
  std::optional<std::vector<QByteArray>> readAny(const std::optional<Target>& preferred,
                                                 const Effort& effort);
  void disconnect();

 private:
  bool connect();
  std::optional<Target> runningFileManager();
  std::optional<std::vector<QByteArray>> readConnected(const Target& target, const Effort& effort);
  std::optional<atspi::Reference> activeFrame(ProcessId process, const Effort& effort);
  /// The one content view of the window, from what is known or by a search.
  std::optional<atspi::Reference> viewIn(const FileManagerRecipe& recipe, const atspi::Reference& frame,
                                         const Effort& effort);

  atspi::Client client_;
  atspi::FocusTracker focus_{client_};
  ProcessId process_ = 0;
  std::optional<atspi::Reference> application_;  ///< of that process
  atspi::Reference frame_;                       ///< the window that the parts belong to
  WindowParts parts_;
  QElapsedTimer sinceFailedSearch_;
};

}  // namespace lumeno
