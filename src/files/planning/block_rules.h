#pragma once

#include <QStringView>
#include <span>

namespace lumeno {

/// One reason not to run a command: a regular expression (ICU syntax, case-insensitive, searched anywhere)
/// and how the sentence "This command was blocked because it …" goes on.
struct BlockRule {
  QStringView pattern;
  /// What is searched for in place of `pattern`, which takes quadratic time on hostile commands: the rule
  /// speaks against a command exactly if group 1 takes part in one of this one's successive matches. Empty
  /// when `pattern` itself is linear.
  QStringView linearPattern;
  QStringView reason;
};

/// In the order in which they are tried.
[[nodiscard]] std::span<const BlockRule> blockRules();

/// Whether the rule `blockRules()[index]` speaks against `command`. Linear in the command.
[[nodiscard]] bool ruleMatches(size_t index, QStringView command);

}  // namespace lumeno
