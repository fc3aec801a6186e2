#include "files/caution/shell_reader.h"

namespace lumeno::shell {

namespace {

/// Of a brace list at the beginning of a command.
constexpr qsizetype longestList = 100;

constexpr QStringView wordEnds = u" \t\n;&|<>)";

bool isForeignBlank(QChar c) {
  return c.unicode() > 0x7F && c.category() == QChar::Separator_Space;
}

}  // namespace

bool ShellReader::endsWord(bool inCommandPosition) const {
  const QChar c = peek();
  if (c == u'(') return inCommandPosition && peek(1) == u')';
  return wordEnds.contains(c);
}

bool ShellReader::atClosingBrace() const {
  // Anywhere else in a word it is a plain character.
  return peek() == u'}' && (position_ + 1 >= text_.size() || wordEnds.contains(peek(1)));
}

qsizetype ShellReader::numberPatternLength() const {
  if (peek() != u'<') return 0;
  const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
  constexpr qsizetype longest = 40;
  qsizetype i = 1;
  while (i < longest && isDigit(peek(i))) ++i;
  if (peek(i) != u'-') return 0;
  for (++i; i < longest && isDigit(peek(i));) ++i;
  return peek(i) == u'>' ? i + 1 : 0;
}

bool ShellReader::bracesOpenBlock() const {
  // A list is no block in bash. Looks no further than the lists that hide a command would reach.
  bool list = false;
  for (qsizetype i = 1; i < longestList; ++i) {
    const QChar c = peek(i);
    if (c.isNull() || wordEnds.contains(c)) return true;
    if (c == u',' || (c == u'.' && peek(i + 1) == u'.')) list = true;
    if (c == u'}') return !list && i > 1;
  }
  return true;
}

Word ShellReader::readWord(bool inCommandPosition) {
  const qsizetype start = position_;
  Word word;
  int parentheses = 0;
  int braces = 0;
  while (!atEnd()) {
    const QChar c = peek();
    if (c == u'\\') {
      readBackslash(word);
    } else if (c == u'\'') {
      readSingleQuotes(word);
    } else if (c == u'"') {
      readDoubleQuotes(word);
    } else if (c == u'`') {
      readBackticks(word);
    } else if (c == u'$') {
      readDollar(word, false);
    } else if (word.text.isEmpty() && !word.usesQuotes && peek(1) == u'(' &&
               (c == u'<' || c == u'>' || c == u'=')) {
      readProcessSubstitution(word);
    } else {
      if (parentheses == 0) {
        if (const qsizetype length = numberPatternLength()) {
          for (qsizetype i = 0; i < length; ++i) word.append(peek(i), UnitKind::plain);
          position_ += length;
          continue;
        }
        if (endsWord(inCommandPosition) || (braces == 0 && atClosingBrace())) break;
      }
      if (c == u'(') ++parentheses;
      if (c == u')') --parentheses;
      if (c == u'{') ++braces;
      if (c == u'}' && braces > 0) --braces;
      word.append(c, c == placeholder ? UnitKind::parameter : UnitKind::plain);
      ++position_;
      if (isForeignBlank(c) && !script_.foreignBlank) script_.foreignBlank = spanFrom(position_ - 1);
    }
  }
  if (parentheses > 0) fail(start);
  word.span = spanFrom(start);
  return word;
}

void ShellReader::readProcessSubstitution(Word& word) {
  position_ += 2;
  word.append(placeholder, UnitKind::output);
  word.isStream = true;
  if (!enter()) return;
  readCommands(Ending::parenthesis);
  leave();
}

void ShellReader::readSingleQuotes(Word& word) {
  const qsizetype start = position_;
  const qsizetype end = text_.indexOf(u'\'', start + 1);
  if (end < 0) return fail(start);
  for (const QChar c : text_.sliced(start + 1, end - start - 1)) {
    word.append(c, c == placeholder ? UnitKind::parameter : UnitKind::quoted);
  }
  word.usesQuotes = true;
  position_ = end + 1;
}

void ShellReader::readDoubleQuotes(Word& word) {
  const qsizetype start = position_++;
  word.usesQuotes = true;
  while (!atEnd() && peek() != u'"') readQuotedText(word, position_ + 1);
  if (!take(u"\"")) fail(start);
}

void ShellReader::readBackslash(Word& word) {
  if (take(u"\\\n")) return;
  ++position_;
  word.usesQuotes = true;
  if (atEnd()) return;
  word.append(peek(), UnitKind::quoted);
  ++position_;
}

/// Reads what stands in double quotes, or in a here-document, up to `end` or a little beyond.
void ShellReader::readQuotedText(Word& word, qsizetype end) {
  while (position_ < end) {
    const QChar c = peek();
    if (c == u'$') {
      readDollar(word, true);
    } else if (c == u'`') {
      readBackticks(word);
    } else if (take(u"\\\n")) {
      continue;
    } else if (c == u'\\' && QStringView(u"$`\"\\").contains(peek(1)) && position_ + 1 < text_.size()) {
      word.append(peek(1), UnitKind::quoted);
      position_ += 2;
    } else {
      word.append(c, c == placeholder ? UnitKind::parameter : UnitKind::quoted);
      ++position_;
    }
  }
}

}  // namespace lumeno::shell
