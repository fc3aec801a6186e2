#include "files/caution/shell_script.h"

namespace lumeno::shell {

void Word::append(QChar unit, UnitKind kind) {
  text += unit;
  kinds += char(kind);
}

bool Word::isPlain(qsizetype position, QChar unit) const {
  return position < text.size() && text[position] == unit && kind(position) == UnitKind::plain;
}

bool Word::isDynamic() const {
  return has(UnitKind::parameter) || has(UnitKind::output) || overflowing;
}

bool Word::hasPattern() const {
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (kind(i) != UnitKind::plain) continue;
    const QChar c = text[i];
    // A lone bracket is the name of the test command.
    if (c == u'*' || c == u'?' || c == u'(' || c == u'<' || (c == u'[' && text.size() > 1)) return true;
  }
  return false;
}

Word Word::sliced(qsizetype position, qsizetype length) const {
  if (length < 0) length = text.size() - position;
  Word part;
  part.span = span;
  part.usesQuotes = usesQuotes;
  part.overflowing = overflowing;
  part.text = text.sliced(position, length);
  part.kinds = kinds.substr(std::size_t(position), std::size_t(length));
  return part;
}

Word literalWord(const QString& text, Span span) {
  Word word;
  word.span = span;
  word.text = text;
  word.kinds.assign(std::size_t(text.size()), char(UnitKind::quoted));
  return word;
}

}  // namespace lumeno::shell
