#include <algorithm>

#include "files/caution/dollar_quotes.h"
#include "files/caution/shell_reader.h"

namespace lumeno::shell {

namespace {

/// How far the end of an arithmetic expression is looked for.
constexpr qsizetype arithmeticReach = 256;
constexpr int deepestArithmetic = 16;

bool isNameUnit(QChar c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_';
}

void appendText(Word& word, const QString& text, UnitKind kind) {
  for (const QChar c : text) word.append(c, kind);
}

}  // namespace

bool ShellReader::enter() {
  if (depth_ < maximumDepth) {
    ++depth_;
    mark(Command::Kind::enterSubshell);
    return true;
  }
  if (!script_.tooDeep && !script_.unreadable) script_.tooDeep = spanFrom(position_);
  position_ = text_.size();
  return false;
}

void ShellReader::leave() {
  --depth_;
  mark(Command::Kind::leaveSubshell);
}

void ShellReader::readDollar(Word& word, bool quoted) {
  const qsizetype start = position_;
  const QChar next = peek(1);
  if (next == u'\'' && !quoted) {
    const qsizetype end = dollarQuoteEnd(text_, start + 2);
    if (end < 0) return fail(start);
    appendText(word, decodeDollarQuotes(text_.sliced(start + 2, end - start - 2)), UnitKind::quoted);
    word.usesQuotes = true;
    position_ = end + 1;
  } else if (lookingAt(u"$((") && looksArithmetic(start + 3)) {
    position_ += 3;
    word.append(placeholder, UnitKind::parameter);
    if (!enter()) return;
    readArithmetic(u'(', u')', 2);
    leave();
  } else if (next == u'(') {
    position_ += 2;
    word.append(placeholder, UnitKind::output);
    if (!enter()) return;
    readCommands(Ending::parenthesis);
    leave();
  } else if (next == u'[') {
    position_ += 2;
    word.append(placeholder, UnitKind::parameter);
    if (!enter()) return;
    readArithmetic(u'[', u']', 1);
    leave();
  } else if (next == u'{') {
    position_ += 2;
    if (!enter()) return;
    readParameterBraces(word);
    leave();
  } else {
    readParameterName(word, quoted);
  }
}

void ShellReader::readParameterName(Word& word, bool quoted) {
  const qsizetype start = position_++;
  // Flags that zsh allows before the name.
  while (QStringView(u"=~^+#").contains(peek()) && !peek().isNull() && isNameUnit(peek(1))) ++position_;
  const qsizetype nameStart = position_;
  if (isNameUnit(peek())) {
    const bool isPosition = peek().isDigit();
    while (isNameUnit(peek()) && (!isPosition || peek().isDigit())) ++position_;
  } else if (!peek().isNull() && QStringView(u"@*#?-$!").contains(peek())) {
    ++position_;
  } else {
    word.append(u'$', quoted ? UnitKind::quoted : UnitKind::plain);
    return;
  }
  const QStringView name = text_.sliced(nameStart, position_ - nameStart);
  const bool bare = nameStart == start + 1;
  if (bare && name == u"HOME") return appendText(word, context_.home, UnitKind::known);
  if (bare && name == u"PWD") return appendText(word, context_.workingDirectory, UnitKind::known);
  if (name == u"IFS") script_.hiddenBlanks.push_back(spanFrom(start));
  word.append(placeholder, UnitKind::parameter);
}

void ShellReader::readParameterBraces(Word& word) {
  const qsizetype start = position_ - 2;
  bool evaluates = false;
  if (take(u"(")) {
    const qsizetype end = text_.indexOf(u')', position_);
    if (end < 0) return fail(start);
    evaluates = text_.sliced(position_, end - position_).contains(u'e');
    position_ = end + 1;
  }
  while (!peek().isNull() && QStringView(u"=~^+#!").contains(peek())) ++position_;
  const qsizetype nameStart = position_;
  while (isNameUnit(peek())) ++position_;
  const QStringView name = text_.sliced(nameStart, position_ - nameStart);
  const bool whole = nameStart == start + 2 && peek() == u'}';
  // Whatever changes the value may hold substitutions of its own.
  Word ignored;
  int braces = 1;
  while (!atEnd()) {
    const QChar c = peek();
    if (c == u'\\') {
      position_ = std::min(position_ + 2, text_.size());
    } else if (c == u'\'') {
      // Inside double quotes an apostrophe is a plain one; a lone one then ends nothing.
      const qsizetype end =
          text_.sliced(0, std::min(text_.size(), position_ + 256)).indexOf(u'\'', position_ + 1);
      position_ = end < 0 ? position_ + 1 : end + 1;
    } else if (c == u'"') {
      readDoubleQuotes(ignored);
    } else if (c == u'`') {
      readBackticks(ignored);
    } else if (c == u'$') {
      readDollar(ignored, true);
    } else {
      if (c == u'{') ++braces;
      if (c == u'}') --braces;
      ++position_;
      if (braces == 0) break;
    }
  }
  if (braces > 0) return fail(start);
  if (name == u"IFS") script_.hiddenBlanks.push_back(spanFrom(start));
  if (evaluates) script_.evaluated.push_back(spanFrom(start));
  if (whole && name == u"HOME") return appendText(word, context_.home, UnitKind::known);
  if (whole && name == u"PWD") return appendText(word, context_.workingDirectory, UnitKind::known);
  word.append(placeholder, ignored.has(UnitKind::output) ? UnitKind::output : UnitKind::parameter);
}

void ShellReader::readBackticks(Word& word) {
  const qsizetype start = position_++;
  const qsizetype content = position_;
  bool escaped = false;
  while (!atEnd() && peek() != u'`') {
    if (peek() == u'\\') {
      escaped = true;
      ++position_;
    }
    ++position_;
  }
  if (atEnd()) return fail(start);
  const qsizetype end = position_++;
  word.append(placeholder, UnitKind::output);
  const qsizetype after = position_;
  if (!enter()) return;
  const QStringView inner = text_.sliced(content, end - content);
  ReadingContext context = context_;
  context.depth = depth_;
  if (!escaped) {
    // Read in place, so that positions stay exact.
    ShellReader reader(text_.first(end), context, script_);
    reader.position_ = content;
    reader.readCommands(Ending::endOfText);
  } else {
    QString unescaped;
    for (qsizetype i = 0; i < inner.size(); ++i) {
      if (inner[i] == u'\\' && i + 1 < inner.size() && QStringView(u"$`\\").contains(inner[i + 1])) ++i;
      unescaped += inner[i];
    }
    context.standsAt = spanFrom(start);
    ShellReader(unescaped, context, script_).read();
  }
  leave();
  position_ = after;
}

void ShellReader::readArithmetic(QChar open, QChar close, int depth) {
  const qsizetype start = position_;
  Word ignored;
  while (!atEnd() && depth > 0) {
    const QChar c = peek();
    if (c == u'$') {
      readDollar(ignored, true);
    } else if (c == u'`') {
      readBackticks(ignored);
    } else {
      if (c == open) ++depth;
      if (c == close) --depth;
      ++position_;
    }
  }
  if (depth > 0) fail(start);
}

bool ShellReader::looksArithmetic(qsizetype start) const {
  int depth = 2;
  const qsizetype end = std::min(text_.size(), start + arithmeticReach);
  for (qsizetype i = start; i < end; ++i) {
    if (text_[i] == u'(' && ++depth > deepestArithmetic) return false;
    if (text_[i] == u')' && --depth == 1) return i + 1 < text_.size() && text_[i + 1] == u')';
  }
  return false;
}

}  // namespace lumeno::shell
