#pragma once

#include <functional>

namespace lumeno {

/// Starts the desktop's own applications. Never blocks; `done` (may be empty) is told on the main thread
/// whether there was one to start.
class ApplicationLauncher {
 public:
  virtual ~ApplicationLauncher() = default;
  /// The user's text editor, with an empty document.
  virtual void openTextEditor(std::function<void(bool opened)> done) = 0;
  /// The user's file manager, showing the home folder.
  virtual void openHomeFolder(std::function<void(bool opened)> done) = 0;
};

}  // namespace lumeno
