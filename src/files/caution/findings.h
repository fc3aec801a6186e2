#pragma once

#include <QSet>
#include <QString>
#include <vector>

#include "files/caution/caution.h"
#include "files/caution/shell_script.h"

namespace lumeno {

/// Collects the cautions of one command: each text once, and only the first few that name a path.
class Findings {
 public:
  void add(const QString& text, shell::Span span);
  void addOutside(const QString& path, shell::Span span);
  void addReplaced(const QString& path, shell::Span span);
  /// Whether a further replaced file would still be named.
  [[nodiscard]] bool namesReplaced() const { return replaced_ < namedAtMost; }

  /// All of them, in the order of the command.
  [[nodiscard]] std::vector<Caution> take();

  /// `name` fit for a line: cut in the middle when it is long, with no characters that cannot be seen.
  [[nodiscard]] static QString shown(const QString& name);

 private:
  static constexpr int namedAtMost = 6;

  std::vector<Caution> cautions_;
  QSet<QString> texts_;
  int outside_ = 0;
  int replaced_ = 0;
};

}  // namespace lumeno
