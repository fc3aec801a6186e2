#include "files/caution/findings.h"

#include <algorithm>

#include "base/text.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

struct Wording {
  QString naming;
  QString more;  ///< when enough have been named
};

Wording wordingOf(Findings::About about) {
  using About = Findings::About;
  switch (about) {
    case About::pathOutside:
      return {u"Reaches outside the folder: %1"_s, u"Reaches outside the folder in more places."_s};
    case About::replacedFile:
      return {u"Replaces “%1”, which is there already."_s, u"Replaces more files that are there already."_s};
    case About::disguisedCommand:
      return {u"Writes a command in an unusual way: %1"_s,
              u"Writes a command in an unusual way in more places."_s};
    case About::unusualCommand:
      break;
  }
  return {u"Names a command with unusual letters: %1"_s,
          u"Names a command with unusual letters in more places."_s};
}

/// `name` fit for a line: cut in the middle when it is long, with no characters that cannot be seen.
QString shown(const QString& name) {
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
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char32_t c = text::characterAt(text, i);
    if (text[i] == shell::placeholder) {
      visible += u'…';  // what only the running shell knows
    } else if (c < 0x20) {
      visible += QChar(char16_t(0x2400 + c));
    } else if (text::isUnseen(c)) {
      visible += u"<U+%1>"_s.arg(uint(c), 4, 16, QChar(u'0')).toUpper();
    } else {
      visible += QStringView(text).sliced(i, QChar::requiresSurrogates(c) ? 2 : 1);
    }
    if (QChar::requiresSurrogates(c)) ++i;
  }
  return visible;
}

}  // namespace

void Findings::add(const QString& text, shell::Span span) {
  if (texts_.contains(text)) return;
  texts_.insert(text);
  cautions_.push_back({text, span.start, span.length});
}

void Findings::add(About about, const QString& name, shell::Span span) {
  const Wording wording = wordingOf(about);
  int& named = named_[std::size_t(about)];
  if (named >= namedAtMost) return add(wording.more, span);
  const qsizetype before = texts_.size();
  add(wording.naming.arg(shown(name)), span);
  named += int(texts_.size() - before);
}

std::vector<Caution> Findings::take() {
  std::ranges::stable_sort(cautions_, {}, &Caution::start);
  return std::move(cautions_);
}

}  // namespace lumeno
