#include "files/caution/findings.h"

#include <algorithm>

#include "files/caution/unseen_characters.h"

namespace lumeno {

using namespace Qt::StringLiterals;

void Findings::add(const QString& text, shell::Span span) {
  if (texts_.contains(text)) return;
  texts_.insert(text);
  cautions_.push_back({text, span.start, span.length});
}

void Findings::addOutside(const QString& path, shell::Span span) {
  if (outside_ >= namedAtMost) return add(u"Reaches outside the folder in more places."_s, span);
  const qsizetype before = texts_.size();
  add(u"Reaches outside the folder: "_s + shown(path), span);
  outside_ += int(texts_.size() - before);
}

void Findings::addReplaced(const QString& path, shell::Span span) {
  if (!namesReplaced()) return add(u"Replaces more files that are there already."_s, span);
  const qsizetype before = texts_.size();
  add(u"Replaces “%1”, which is there already."_s.arg(shown(path)), span);
  replaced_ += int(texts_.size() - before);
}

std::vector<Caution> Findings::take() {
  std::ranges::stable_sort(cautions_, {}, &Caution::start);
  return std::move(cautions_);
}

QString Findings::shown(const QString& name) {
  constexpr qsizetype longest = 40;
  QString text = name;
  if (text.size() > longest) {
    qsizetype head = longest / 2;
    qsizetype tail = text.size() - (longest - head - 1);
    if (text[head - 1].isHighSurrogate()) --head;
    if (text[tail].isLowSurrogate()) ++tail;
    text = text.first(head) + u'…' + text.sliced(tail);
  }
  QString visible;
  for (const QChar c : text) {
    if (c == shell::placeholder) {
      visible += u'…';  // what only the running shell knows
    } else if (c.unicode() < 0x20) {
      visible += QChar(char16_t(0x2400 + c.unicode()));
    } else if (isUnseen(c)) {
      visible += u"<U+%1>"_s.arg(c.unicode(), 4, 16, QChar(u'0')).toUpper();
    } else {
      visible += c;
    }
  }
  return visible;
}

}  // namespace lumeno
