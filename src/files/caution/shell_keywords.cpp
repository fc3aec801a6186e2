#include "files/caution/shell_reader.h"

namespace lumeno::shell {

bool ShellReader::readKeyword(List& list, const Word& word) {
  if (word.usesQuotes || word.isDynamic()) return false;
  const QStringView text = word.text;
  if (text == u"if" || text == u"while" || text == u"until" || text == u"else" || text == u"!" ||
      text == u"time" || text == u"nocorrect" || text == u"always" || text == u"end") {
    return true;
  }
  if (text == u"then") {
    list.blocks.push_back(Block::thenPart);
  } else if (text == u"do") {
    list.blocks.push_back(Block::loopBody);
  } else if (text == u"elif" || text == u"fi") {
    closeBlock(list, Block::thenPart);
  } else if (text == u"done") {
    closeBlock(list, Block::loopBody);
  } else if (text == u"esac") {
    closeBlock(list, Block::caseBody);
  } else if (text == u"for" || text == u"foreach" || text == u"select") {
    readLoopHeader(list);
  } else if (text == u"case") {
    readCaseHeader(list);
  } else if (text == u"function") {
    readFunctionName();
  } else if (text == u"repeat") {
    skipBlanks();
    (void)readWord(false);
  } else if (text == u"[[") {
    readCondition();
  } else if (text == u"coproc") {
    script_.background.push_back(word.span);
  } else {
    return false;
  }
  return true;
}

void ShellReader::keepWords(Command words) {
  words.kind = Command::Kind::wordsOnly;
  script_.commands.push_back(std::move(words));
}

void ShellReader::readLoopHeader(List& list) {
  skipBlanks();
  if (lookingAt(u"((")) {
    position_ += 2;
    readArithmetic(u'(', u')', 2);
    return;
  }
  Command words;
  bool inList = false;
  for (;;) {
    skipBlanks();
    if (!inList && take(u"(")) inList = true;
    if (inList) skipBlanksAndLines();
    if (atEnd() || (inList && take(u")"))) break;
    if (!inList && QStringView(u";\n|&)").contains(peek())) break;
    const qsizetype start = position_;
    Word word = readWord(false);
    if (position_ == start) return fail(start);
    if (word.text == u"do" && !word.usesQuotes && !inList) {
      list.blocks.push_back(Block::loopBody);
      break;
    }
    words.words.push_back(std::move(word));
  }
  keepWords(std::move(words));
}

void ShellReader::readCaseHeader(List& list) {
  const qsizetype start = position_;
  Command words;
  skipBlanks();
  words.words.push_back(readWord(false));
  keepWords(std::move(words));
  skipBlanksAndLines();
  const Word in = readWord(false);
  if (in.text != u"in") return fail(start);
  list.blocks.push_back(Block::caseBody);
  list.expectsCasePattern = true;
  skipBlanksAndLines();
}

void ShellReader::readFunctionName() {
  for (;;) {
    skipBlanks();
    if (atEnd() || peek() == u'{' || peek() == u'\n' || peek() == u';' || take(u"()")) return;
    const qsizetype start = position_;
    (void)readWord(true);
    if (position_ == start) return;
  }
}

void ShellReader::readCondition() {
  const qsizetype start = position_;
  Command words;
  for (;;) {
    skipBlanksAndLines();
    if (atEnd()) return fail(start);
    if (take(u"]]")) break;
    if (take(u"&&") || take(u"||") || take(u"<") || take(u">") || take(u")") || take(u"(") || take(u"|")) {
      continue;
    }
    const qsizetype before = position_;
    Word word = readWord(false);
    if (position_ == before) return fail(start);
    words.words.push_back(std::move(word));
  }
  keepWords(std::move(words));
}

}  // namespace lumeno::shell
