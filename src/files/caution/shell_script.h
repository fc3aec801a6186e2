#pragma once

#include <QString>
#include <QStringView>
#include <optional>
#include <string>
#include <vector>

/// What a shell makes of a command line, before it expands anything.
namespace lumeno::shell {

/// A piece of the command, in UTF-16 units.
struct Span {
  qsizetype start = 0;
  qsizetype length = 0;
  [[nodiscard]] qsizetype end() const { return start + length; }
  bool operator==(const Span&) const = default;
};

/// What a unit of a word's text is to the shell.
enum class UnitKind : char {
  plain,      ///< unquoted: patterns, brace lists and the tilde mean something
  quoted,     ///< quoted or escaped
  known,      ///< from a variable whose value is known (HOME, PWD)
  parameter,  ///< `placeholder` for the value of a variable or of arithmetic
  output,     ///< `placeholder` for what a command writes, or for a file with that
};

/// Stands in a word's text for what only the running shell knows.
inline constexpr QChar placeholder{u'\uFFFC'};

/// One word: its text with quotes and escapes removed, and what each unit of it is.
struct Word {
  Span span;
  QString text;
  std::string kinds;        ///< a UnitKind for each unit of `text`
  bool usesQuotes = false;  ///< quotes or escapes stand in it
  bool isStream = false;    ///< `<(…)` and the like: what a command reads or writes, and no file of its own
  bool overflowing = false;  ///< its brace lists give more words than are looked at

  void append(QChar unit, UnitKind kind);
  [[nodiscard]] UnitKind kind(qsizetype position) const { return UnitKind(kinds[std::size_t(position)]); }
  [[nodiscard]] bool has(UnitKind kind) const { return kinds.find(char(kind)) != std::string::npos; }
  [[nodiscard]] bool isPlain(qsizetype position, QChar unit) const;
  /// Whether the text is not known before the command runs, file-name patterns aside.
  [[nodiscard]] bool isDynamic() const;
  /// Whether it is, or may become, names of files that match a pattern.
  [[nodiscard]] bool hasPattern() const;
  [[nodiscard]] bool isLiteral() const { return !isDynamic() && !hasPattern(); }
  /// The word from `position` on, or `length` units of it.
  [[nodiscard]] Word sliced(qsizetype position, qsizetype length = -1) const;
};

/// A text that is its own word.
[[nodiscard]] Word literalWord(const QString& text, Span span);

struct Redirection {
  enum class Kind { input, output, append, readWrite, duplicate, hereString, hereDocument };
  Kind kind = Kind::input;
  Word target;               ///< of a here-document: its text
  bool takesOutput = false;  ///< of a duplicate: `>&` and not `<&`
};

struct Command {
  enum class Kind {
    simple,
    wordsOnly,  ///< words that are no command: the list of a loop, a condition
    enterSubshell,
    leaveSubshell,
  };
  Kind kind = Kind::simple;
  std::vector<Word> assignments;
  std::vector<Word> words;
  std::vector<Redirection> redirections;
  /// The index of the simple command whose output this one reads, or -1.
  qsizetype pipedFrom = -1;
};

/// Every command of a command line, those in substitutions before the one they stand in.
struct Script {
  std::vector<Command> commands;
  std::vector<Span> background;      ///< operators that leave a command running
  std::vector<Span> hiddenBlanks;    ///< uses of IFS, which stands for blanks
  std::optional<Span> foreignBlank;  ///< the first unquoted blank that is a letter to the shell
  std::vector<Span> evaluated;       ///< expansions that the shell reads as commands once more
  std::optional<Span> unreadable;    ///< where a shell would give up
  std::optional<Span> tooDeep;       ///< where the nesting was followed no further
};

struct ReadingContext {
  QString home;                  ///< the value of HOME
  QString workingDirectory;      ///< the value of PWD
  std::optional<Span> standsAt;  ///< all of the text stands there; without it, positions are the text's own
  int depth = 0;                 ///< how deep the text is nested
};

/// Substitutions and texts nested deeper than this are not followed.
inline constexpr int maximumDepth = 24;

/// Reads `text` as zsh does, and as bash does where that is the more dangerous reading. Linear.
[[nodiscard]] Script readScript(QStringView text, const ReadingContext& context);

/// The words that the brace lists of a word stand for, the word itself when it has none.
[[nodiscard]] std::vector<Word> expandBraces(Word word);

}  // namespace lumeno::shell
