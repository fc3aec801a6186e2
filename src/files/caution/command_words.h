#pragma once

#include <QFlags>
#include <QStringView>

#include "files/caution/command_options.h"

/// What is known of commands by their names.
namespace lumeno::command_words {

enum class Trait {
  deletesFiles = 1 << 0,
  connects = 1 << 1,  ///< always, to the network
  raisesRights = 1 << 2,
  endsPrograms = 1 << 3,
  staysRunning = 1 << 4,  ///< leaves something running when it ends
  isShell = 1 << 5,
  runsScripts = 1 << 6,        ///< in a language of its own, or from files
  changesFiles = 1 << 7,       ///< so a path that it names matters even among the system's programs
  takesTexts = 1 << 8,         ///< its arguments are no paths
  takesPatternFirst = 1 << 9,  ///< its first operand is no path
  editsInPlace = 1 << 10,      ///< changes the files that it names
};
Q_DECLARE_FLAGS(Traits, Trait)
Q_DECLARE_OPERATORS_FOR_FLAGS(Traits)

/// By base name; nothing for commands that are not known.
[[nodiscard]] Traits traits(QStringView name);

/// A command that runs the command in its arguments.
struct Prefix {
  QStringView name;
  OptionForms options;
  int operands = 0;               ///< before the command
  bool takesAssignments = false;  ///< NAME=value before the command
};
[[nodiscard]] const Prefix* prefix(QStringView name);

/// A command that writes a file which its arguments name.
struct Output {
  QStringView name;
  OptionForms options;
  QChar letter;              ///< of the option that names the file, or null
  QStringView longName;      ///< of that option
  bool lastOperand = false;  ///< otherwise, whether the last of several operands is the file
};
[[nodiscard]] const Output* output(QStringView name);

/// Variables that decide which programs others run.
[[nodiscard]] bool decidesPrograms(QStringView variable);

/// A setting of Git that only changes how something looks or who signs.
[[nodiscard]] bool isHarmlessGitSetting(QStringView key);

/// The subcommands with which a command connects to the network, by the command's name; empty for others.
[[nodiscard]] QStringView connectingSubcommands(QStringView name);

}  // namespace lumeno::command_words
