#include "files/caution/shell_reader.h"

#include <algorithm>
#include <utility>

namespace lumeno::shell {

Script readScript(QStringView text, const ReadingContext& context) {
  Script script;
  ShellReader(text, context, script).read();
  return script;
}

ShellReader::ShellReader(QStringView text, const ReadingContext& context, Script& script)
    : text_(text), context_(context), script_(script), depth_(context.depth) {}

void ShellReader::read() {
  readCommands(Ending::endOfText);
}

bool ShellReader::take(QStringView piece) {
  if (!lookingAt(piece)) return false;
  position_ += piece.size();
  return true;
}

void ShellReader::skipBlanks() {
  while (!atEnd()) {
    if (peek() == u' ' || peek() == u'\t') {
      ++position_;
    } else if (!take(u"\\\n")) {
      return;
    }
  }
}

void ShellReader::skipBlanksAndLines() {
  skipBlanks();
  while (take(u"\n")) skipBlanks();
}

Span ShellReader::spanFrom(qsizetype start) const {
  if (context_.standsAt) return *context_.standsAt;
  return {start, std::max<qsizetype>(position_ - start, 0)};
}

void ShellReader::fail(qsizetype start) {
  position_ = text_.size();
  if (!script_.unreadable && !script_.tooDeep) script_.unreadable = spanFrom(start);
}

void ShellReader::readCommands(Ending ending) {
  const qsizetype start = position_;
  List list;
  list.ending = ending;
  while (!list.closed && !atEnd()) {
    skipBlanks();
    if (!atEnd()) readToken(list);
  }
  finishCommand(list);
  if (!list.closed && (ending == Ending::parenthesis || !list.blocks.empty())) fail(start);
}

void ShellReader::readToken(List& list) {
  const QChar c = peek();
  if (c == u'#') {
    while (!atEnd() && peek() != u'\n') ++position_;
  } else if (list.expectsCasePattern && c != u'\n') {
    readCasePattern(list);
  } else if (atRedirection()) {
    readRedirection(list);
  } else if (c == u'\n' || c == u';' || c == u'|') {
    readOperator(list);
  } else if (c == u'&') {
    readAmpersand(list);
  } else if (c == u')') {
    readClosingParenthesis(list);
  } else if (list.command.words.size() == 1 && take(u"()")) {
    list.command = Command();  // a function; what follows is its body
  } else if (c == u'(' && list.command.words.empty()) {
    readOpeningParenthesis(list);
  } else if (atClosingBrace()) {
    ++position_;
    finishCommand(list);
    closeBlock(list, Block::braces);
  } else if (c == u'{' && list.command.words.empty() && list.command.assignments.empty() &&
             bracesOpenBlock()) {
    ++position_;
    list.blocks.push_back(Block::braces);
  } else {
    readCommandWord(list);
  }
}

void ShellReader::readOperator(List& list) {
  if (take(u"\n")) {
    finishCommand(list);
    readHereDocuments(list);
  } else if (take(u";;") || take(u";&") || take(u";|")) {
    finishCommand(list);
    if (!list.blocks.empty() && list.blocks.back() == Block::caseBody) list.expectsCasePattern = true;
  } else if (take(u"||") || take(u";")) {
    finishCommand(list);
  } else {
    if (!take(u"|&")) ++position_;
    finishCommand(list, Piped::yes);
  }
}

void ShellReader::readAmpersand(List& list) {
  const qsizetype start = position_;
  if (take(u"&&")) {
    finishCommand(list);
    return;
  }
  if (!take(u"&!") && !take(u"&|")) ++position_;
  script_.background.push_back(spanFrom(start));
  finishCommand(list);
}

void ShellReader::readOpeningParenthesis(List& list) {
  if (take(u"()")) return;  // a function without a name
  if (lookingAt(u"((") && looksArithmetic(position_ + 2)) {
    position_ += 2;
    readArithmetic(u'(', u')', 2);
    return;
  }
  ++position_;
  list.blocks.push_back(Block::subshell);
  mark(Command::Kind::enterSubshell);
}

void ShellReader::readClosingParenthesis(List& list) {
  ++position_;
  finishCommand(list);
  if (list.blocks.empty() && list.ending == Ending::parenthesis) {
    list.closed = true;
    return;
  }
  closeBlock(list, Block::subshell);
  mark(Command::Kind::leaveSubshell);
}

void ShellReader::readCasePattern(List& list) {
  const qsizetype start = position_;
  (void)take(u"(");
  for (;;) {
    skipBlanksAndLines();
    if (atEnd()) return fail(start);
    if (take(u")")) break;
    if (take(u"|")) continue;
    const qsizetype before = position_;
    const Word word = readWord(false);
    if (word.text == u"esac" && !word.usesQuotes) {
      list.expectsCasePattern = false;
      closeBlock(list, Block::caseBody);
      return;
    }
    if (position_ == before) return fail(start);
  }
  list.expectsCasePattern = false;
}

void ShellReader::readCommandWord(List& list) {
  const qsizetype start = position_;
  const bool first = list.command.words.empty();
  Word word = readWord(first);
  if (position_ == start) return fail(start);
  if (first && list.command.assignments.empty() && readKeyword(list, word)) return;
  if (first) {
    const qsizetype equals = word.text.indexOf(u'=');
    const bool assigns = equals > 0 && word.isPlain(equals, u'=') &&
                         std::all_of(word.text.begin(), word.text.begin() + equals, [](QChar c) {
                           return c.isLetterOrNumber() || c == u'_' || c == u'[' || c == u']' || c == u'+';
                         });
    if (assigns) {
      list.command.assignments.push_back(std::move(word));
      return;
    }
    if (take(u"()")) return;  // what follows is the body of a function
  }
  list.command.words.push_back(std::move(word));
}

void ShellReader::finishCommand(List& list, Piped piped) {
  Command command = std::exchange(list.command, Command());
  const qsizetype pipedFrom = std::exchange(list.pipedFrom, -1);
  if (command.words.empty() && command.redirections.empty() && command.assignments.empty()) return;
  command.pipedFrom = pipedFrom;
  for (std::size_t i = 0; i < command.redirections.size(); ++i) {
    if (command.redirections[i].kind == Redirection::Kind::hereDocument) {
      list.documents.push_back({script_.commands.size(), i});
    }
  }
  script_.commands.push_back(std::move(command));
  if (piped == Piped::yes) list.pipedFrom = qsizetype(script_.commands.size()) - 1;
}

void ShellReader::closeBlock(List& list, Block block) {
  if (list.blocks.empty() || list.blocks.back() != block) return fail(position_ - 1);
  list.blocks.pop_back();
}

void ShellReader::mark(Command::Kind kind) {
  Command marker;
  marker.kind = kind;
  script_.commands.push_back(std::move(marker));
}

}  // namespace lumeno::shell
