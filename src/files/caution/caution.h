#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace lumeno {

/// Something about a command that a careful person would want to know before running it. Cautions never
/// block, and their absence promises nothing.
struct Caution {
  QString text;         ///< one calm line
  qsizetype start = 0;  ///< the piece of the command that it is about, in UTF-16 units
  qsizetype length = 0;
  bool operator==(const Caution&) const = default;
};

/// What the command would run among.
struct CautionSurroundings {
  QString workingDirectory;  ///< absolute
  QString homeDirectory;     ///< absolute
  /// Whether something is there already; paths are absolute, and one that ends in "/." asks for a folder.
  /// May read the file system; called at most a few hundred times.
  std::function<bool(const QString& path)> exists;
};

/// Reads the command as a shell does (quotes, escapes, substitutions, pipes, redirections) and lists what is
/// to be cautious about, in the order of the command, at most one of each text. Linear in the command's
/// length, apart from `exists`. Any thread; no state.
[[nodiscard]] std::vector<Caution> cautions(const QString& command, const CautionSurroundings& surroundings);

}  // namespace lumeno
