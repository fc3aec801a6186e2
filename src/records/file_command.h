#pragma once

#include <QString>
#include <QUrl>
#include <cstdint>
#include <optional>

namespace lumeno {

/// One shell command planned for a file selection.
struct FileCommand {
  QString instruction;  ///< the request in plain words
  QString command;
  QUrl workingDirectory;                 ///< a file URL
  std::optional<QString> blockedReason;  ///< why it may not be run
  bool operator==(const FileCommand&) const = default;
};

/// What came of running a command.
struct FileActionOutcome {
  QString command;
  QString stdoutText;
  QString stderrText;
  int32_t exitCode = 0;
  /// Whether it was stopped before its end; `stderrText` then says why, and is to be shown beside any output.
  bool wasStopped = false;
  bool operator==(const FileActionOutcome&) const = default;

  /// The one text to show: the trimmed output, else the trimmed errors, else how it ended.
  [[nodiscard]] QString summary() const;
};

}  // namespace lumeno
