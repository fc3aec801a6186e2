#pragma once

#include <QStringView>
#include <QUrl>
#include <functional>
#include <optional>
#include <vector>

#include "base/geometry.h"
#include "base/job.h"
#include "platform/workspace.h"

namespace lumeno {

/// The identifier under which rules know every file manager.
inline constexpr QStringView fileManagerBundleIdentifier = u"com.apple.finder";

[[nodiscard]] inline bool isFileManager(const std::optional<RunningApplication>& application) {
  return application && application->bundleIdentifier == fileManagerBundleIdentifier;
}

/// What is selected in the file manager in front. Main thread; asynchronous, nothing here waits for another
/// process, and every answer comes within a deadline.
class FileManager {
 public:
  virtual ~FileManager() = default;

  enum class Read {
    quick,     ///< for polling: what can be told at little cost, from what is known if nothing has changed
    thorough,  ///< for a request of the user's: however many items there are
    /// As thorough, but whatever is in front: reads the file manager that was in front last, or else one that
    /// runs. What it says is of no use; but what the system asks of the user, and what has to be searched
    /// first, is asked and found by it.
    priming,
  };

  /// The exact local paths of the selected items as file URLs in the file manager's order; empty when nothing
  /// (or something that is no local file, as in the trash or on a remote place) is selected; absent when the
  /// selection cannot be told exactly this way. Never a guess. `done` is called on the main thread, never
  /// before the call returns.
  [[nodiscard]] virtual Job readSelection(Read read,
                                          std::function<void(std::optional<std::vector<QUrl>>)> done) = 0;

  /// The frame of the file manager's front window in accessibility space; absent when there is none or it is
  /// not known. Answers from what is known.
  [[nodiscard]] virtual std::optional<Rect> frontWindowFrame() = 0;
};

}  // namespace lumeno
