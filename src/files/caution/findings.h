#pragma once

#include <QSet>
#include <QString>
#include <array>
#include <vector>

#include "files/caution/caution.h"
#include "files/caution/shell_script.h"

namespace lumeno {

/// Collects the cautions of one command: each text once, and of each kind that names something only the first
/// few, so that their number has a limit.
class Findings {
 public:
  /// What a caution that names something says of it.
  enum class About { pathOutside, replacedFile, disguisedCommand, unusualCommand };

  void add(const QString& text, shell::Span span);
  void add(About about, const QString& name, shell::Span span);

  /// All of them, in the order of the command.
  [[nodiscard]] std::vector<Caution> take();

 private:
  static constexpr int namedAtMost = 6;

  std::vector<Caution> cautions_;
  QSet<QString> texts_;
  std::array<int, 4> named_{};  ///< by `About`
};

}  // namespace lumeno
