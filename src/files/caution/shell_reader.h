#pragma once

#include "files/caution/shell_script.h"

namespace lumeno::shell {

/// Reads one text into a script, in one pass. Substitutions are read where they stand, by `readCommands`
/// again; groups and keywords are kept on a stack of their own, so only substitutions recurse.
class ShellReader {
 public:
  ShellReader(QStringView text, const ReadingContext& context, Script& script);

  void read();

 private:
  enum class Ending { endOfText, parenthesis };
  enum class Block { thenPart, loopBody, caseBody, braces, subshell };
  enum class Piped { no, yes };

  /// A here-document whose text begins after the next line break.
  struct PendingDocument {
    std::size_t command = 0;
    std::size_t redirection = 0;
  };

  /// What is kept of one list of commands while it is read.
  struct List {
    Ending ending = Ending::endOfText;
    Command command;
    std::vector<Block> blocks;
    std::vector<PendingDocument> documents;
    qsizetype pipedFrom = -1;
    bool expectsCasePattern = false;
    bool closed = false;
  };

  // Commands (shell_reader.cpp)
  void readCommands(Ending ending);
  void readToken(List& list);
  void readOperator(List& list);
  void readAmpersand(List& list);
  void readOpeningParenthesis(List& list);
  void readClosingParenthesis(List& list);
  void readCasePattern(List& list);
  void readCommandWord(List& list);
  void finishCommand(List& list, Piped piped = Piped::no);
  void closeBlock(List& list, Block block);
  void mark(Command::Kind kind);

  // Keywords (shell_keywords.cpp)
  [[nodiscard]] bool readKeyword(List& list, const Word& word);
  void readLoopHeader(List& list);
  void readCaseHeader(List& list);
  void readFunctionName();
  void readCondition();
  void keepWords(Command words);

  // Redirections (shell_redirections.cpp)
  [[nodiscard]] bool atRedirection() const;
  void readRedirection(List& list);
  void readHereDocuments(List& list);

  // Words (shell_words.cpp)
  [[nodiscard]] Word readWord(bool inCommandPosition);
  void readProcessSubstitution(Word& word);
  void readSingleQuotes(Word& word);
  void readDoubleQuotes(Word& word);
  void readBackslash(Word& word);
  [[nodiscard]] bool endsWord(bool inCommandPosition) const;
  [[nodiscard]] bool atClosingBrace() const;
  /// The length of a pattern for numbers, such as `<3-7>`, or 0.
  [[nodiscard]] qsizetype numberPatternLength() const;
  [[nodiscard]] bool bracesOpenBlock() const;

  // Expansions (shell_expansions.cpp)
  void readDollar(Word& word, bool quoted);
  void readParameterBraces(Word& word);
  void readParameterName(Word& word, bool quoted);
  void readBackticks(Word& word);
  void readArithmetic(QChar open, QChar close, int depth);
  void readQuotedText(Word& word, qsizetype end);
  [[nodiscard]] bool looksArithmetic(qsizetype start) const;
  [[nodiscard]] bool enter();
  void leave();

  // The text
  [[nodiscard]] bool atEnd() const { return position_ >= text_.size(); }
  [[nodiscard]] QChar peek(qsizetype ahead = 0) const {
    return position_ + ahead < text_.size() ? text_[position_ + ahead] : QChar();
  }
  [[nodiscard]] bool lookingAt(QStringView piece) const { return text_.sliced(position_).startsWith(piece); }
  [[nodiscard]] bool take(QStringView piece);
  void skipBlanks();
  void skipBlanksAndLines();
  [[nodiscard]] Span spanFrom(qsizetype start) const;
  void fail(qsizetype start);

  QStringView text_;
  const ReadingContext& context_;
  Script& script_;
  qsizetype position_ = 0;
  int depth_ = 0;
};

}  // namespace lumeno::shell
