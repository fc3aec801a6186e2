#include <algorithm>
#include <utility>

#include "files/caution/shell_reader.h"

namespace lumeno::shell {

namespace {

bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

}  // namespace

bool ShellReader::atRedirection() const {
  const QChar first = peek();
  if (first == u'&') return peek(1) == u'>';
  // zsh takes one digit before the sign, bash several.
  qsizetype digits = 0;
  while (digits < 4 && isDigit(peek(digits))) ++digits;
  const QChar sign = peek(digits);
  if (sign != u'<' && sign != u'>') return false;
  if (peek(digits + 1) == u'(') return digits > 0;  // else a process substitution
  return digits > 0 || numberPatternLength() == 0;
}

void ShellReader::readRedirection(List& list) {
  using Kind = Redirection::Kind;
  const qsizetype start = position_;
  while (isDigit(peek())) ++position_;
  Redirection redirection;
  bool mayDuplicate = false;
  bool hasDocument = false;
  if (take(u"<<<")) {
    redirection.kind = Kind::hereString;
  } else if (take(u"<<-") || take(u"<<")) {
    hasDocument = true;
  } else if (take(u"<>")) {
    redirection.kind = Kind::readWrite;
  } else if (take(u"<&")) {
    mayDuplicate = true;
  } else if (take(u"<")) {
    redirection.kind = Kind::input;
  } else {
    redirection.takesOutput = true;
    const bool both = take(u"&");
    redirection.kind = take(u">>") ? Kind::append : Kind::output;
    if (redirection.kind == Kind::output) (void)take(u">");
    if (take(u"&")) mayDuplicate = !both && redirection.kind == Kind::output;
    if (!take(u"|")) (void)take(u"!");
  }
  skipBlanks();
  const qsizetype wordStart = position_;
  redirection.target = readWord(false);
  if (position_ == wordStart) return fail(start);
  const QString& target = redirection.target.text;
  if (mayDuplicate && (!redirection.takesOutput || target == u"-" || target == u"p" ||
                       (!target.isEmpty() && isDigit(target[0])))) {
    redirection.kind = Kind::duplicate;
  }
  if (hasDocument) redirection.kind = Kind::hereDocument;
  list.command.redirections.push_back(std::move(redirection));
}

void ShellReader::readHereDocuments(List& list) {
  for (const PendingDocument& pending : std::exchange(list.documents, {})) {
    Word& document = script_.commands[pending.command].redirections[pending.redirection].target;
    const Word delimiter = document;
    const qsizetype start = position_;
    qsizetype end = text_.size();
    qsizetype next = end;
    for (qsizetype line = start; line < text_.size();) {
      qsizetype lineEnd = text_.indexOf(u'\n', line);
      if (lineEnd < 0) lineEnd = text_.size();
      QStringView content = text_.sliced(line, lineEnd - line);
      while (content.startsWith(u'\t')) content = content.sliced(1);
      if (content == delimiter.text) {
        end = line;
        next = std::min(lineEnd + 1, text_.size());
        break;
      }
      line = lineEnd + 1;
    }
    Word body;
    if (delimiter.usesQuotes) {
      body = literalWord(text_.sliced(start, end - start).toString(), {});
      position_ = end;
    } else {
      readQuotedText(body, end);
    }
    if (position_ > end) return;  // a substitution that swallowed the rest
    body.span = spanFrom(start);
    script_.commands[pending.command].redirections[pending.redirection].target = std::move(body);
    position_ = next;
  }
}

}  // namespace lumeno::shell
