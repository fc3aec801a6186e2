#pragma once

#include <QString>
#include <optional>
#include <span>
#include <vector>

#include "files/caution/caution.h"
#include "files/caution/command_options.h"
#include "files/caution/command_words.h"
#include "files/caution/findings.h"
#include "files/caution/shell_script.h"

namespace lumeno {

/// One command with its arguments, prefixes such as `env` taken off.
struct Invocation {
  QString name;  ///< without the folder it was found in
  const shell::Word& word;
  std::span<const shell::Word> arguments;
  command_words::Traits traits;
  const shell::Command* command = nullptr;  ///< what it is part of
};

/// Judges the commands of one command line, and of the texts in it that are run as commands in turn. The
/// rules of each kind stand in a file of their own.
class CommandReview {
 public:
  CommandReview(const CautionSurroundings& surroundings, qsizetype length, Findings& findings);

  void review(QStringView text);

 private:
  // What runs (command_review.cpp)
  void reviewText(QStringView text, std::optional<shell::Span> standsAt);
  void reviewNested(const shell::Word& text);
  void reviewScript(const shell::Script& script);
  void reviewCommand(const shell::Command& command);
  void reviewWords(std::span<const shell::Word> words, const shell::Command& command);
  void reviewInvocation(const Invocation& invocation);
  [[nodiscard]] std::size_t commandAfterPrefix(const Invocation& invocation,
                                               const command_words::Prefix& prefix);
  void noteName(const shell::Word& word);

  // Texts and other commands in arguments (nested_commands.cpp)
  void noteNestedCommands(const Invocation& invocation);
  void reviewShell(const Invocation& invocation);
  void reviewShellInput(const Invocation& invocation);
  void reviewFind(const Invocation& invocation);
  void reviewJoined(std::span<const shell::Word> words);
  [[nodiscard]] std::optional<shell::Word> pipedText(const shell::Command& command) const;

  // Kinds of rules
  void noteScripts(const Invocation& invocation);
  void noteChanges(const Invocation& invocation);
  void noteDeletion(const Invocation& invocation);
  void noteArchives(const Invocation& invocation);
  void noteSystem(const Invocation& invocation);
  void noteGit(const Invocation& invocation);
  void noteReplacedTargets(const Invocation& invocation);
  void noteOutputs(const Invocation& invocation);

  // Paths (path_rules.cpp)
  void notePaths(const Invocation& invocation);
  void noteArgumentPath(const shell::Word& word, bool mayBeProgram);
  void notePath(const shell::Word& path);
  void noteRedirection(const shell::Redirection& redirection);
  void noteAssignment(const shell::Word& assignment);
  void changeFolder(const Invocation& invocation);
  /// What is emptied before it is written, whichever files the target turns out to name.
  void noteOverwritten(const shell::Word& target);
  void noteReplaced(const shell::Word& path);
  void noteReplaced(const QString& path, const QString& shown, shell::Span span);
  [[nodiscard]] std::optional<QString> resolved(const shell::Word& path) const;
  [[nodiscard]] bool isOutside(const shell::Word& path) const;
  [[nodiscard]] bool exists(const QString& path);
  [[nodiscard]] bool isFolder(const QString& path);

  const CautionSurroundings& surroundings_;
  QString home_;
  QString root_;  ///< the working folder, cleaned
  /// Where commands run by now; nothing when that is not known.
  std::optional<QString> folder_;
  std::vector<std::optional<QString>> outerFolders_;
  Findings& findings_;
  const shell::Script* script_ = nullptr;
  int depth_ = 0;
  /// Texts and commands of `find` nested deeper than this are not followed.
  static constexpr int deepestNesting = 8;
  static constexpr int mostAsked = 500;
  int asked_ = 0;     ///< how often it was asked whether something exists; no more than `mostAsked`
  qsizetype budget_;  ///< how much nested text is still read, so that nesting cannot multiply the work
};

}  // namespace lumeno
