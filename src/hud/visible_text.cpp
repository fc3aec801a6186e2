#include "hud/visible_text.h"

#include <algorithm>

#include "base/text.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr char16_t escape = 0x1B;
constexpr char16_t bell = 0x07;

bool isBetween(QChar c, char16_t first, char16_t last) {
  return c.unicode() >= first && c.unicode() <= last;
}

/// Whether it can be shown as it is, told without a table.
bool isPlain(char16_t c) {
  return (c >= 0x20 && c < 0x7F) || c == u'\n' || c == u'\t' || (c > 0xAD && c < 0x0600);
}

bool isHidden(char32_t c) {
  return text::isUnseen(c) && c != 0x200C && c != 0x200D;
}

void appendPicture(QString& shown, char32_t c) {
  if (c < 0x20) {
    shown += QChar(static_cast<char16_t>(0x2400 + c));
  } else if (c == 0x7F) {
    shown += QChar(u'␡');
  } else if (QChar::isSurrogate(c)) {
    shown += QChar(QChar::ReplacementCharacter);
  } else {
    shown += u"⟨U+%1⟩"_s.arg(QString::number(static_cast<uint>(c), 16).toUpper(), 4, u'0');
  }
}

}  // namespace

QString visibleText(QStringView text) {
  QString shown;
  shown.reserve(text.size());
  for (qsizetype at = 0; at < text.size(); ++at) {
    const QChar unit = text[at];
    if (isPlain(unit.unicode())) {
      shown += unit;
      continue;
    }
    const char32_t c = text::characterAt(text, at);
    const bool isPair = QChar::requiresSurrogates(c);
    if (isHidden(c)) {
      appendPicture(shown, c);
    } else {
      shown += text.sliced(at, isPair ? 2 : 1);
    }
    if (isPair) ++at;
  }
  return shown;
}

qsizetype escapeSequenceLength(QStringView text) {
  if (text.size() < 2 || text[0] != QChar(escape)) return 0;
  const QChar kind = text[1];
  qsizetype at = 2;
  if (kind == u'[') {
    while (at < text.size() && isBetween(text[at], 0x20, 0x3F)) ++at;
    return at < text.size() && isBetween(text[at], 0x40, 0x7E) ? at + 1 : 0;
  }
  if (QStringView(u"]PX^_").contains(kind)) {
    for (; at < text.size() && text[at] != u'\n'; ++at) {
      if (text[at] == QChar(bell)) return at + 1;
      if (text[at] == QChar(escape)) return at + 1 < text.size() && text[at + 1] == u'\\' ? at + 2 : 0;
    }
    return 0;
  }
  at = 1;
  while (at < text.size() && isBetween(text[at], 0x20, 0x2F)) ++at;
  return at < text.size() && isBetween(text[at], 0x30, 0x7E) ? at + 1 : 0;
}

QString visibleOutput(QStringView text) {
  if (!text.contains(QChar(escape))) return visibleText(text);
  QString rest;
  rest.reserve(text.size());
  for (qsizetype at = 0; at < text.size();) {
    const qsizetype length = text[at] == QChar(escape) ? escapeSequenceLength(text.sliced(at)) : 0;
    if (length == 0) rest += text[at];
    at += std::max<qsizetype>(length, 1);
  }
  return visibleText(rest);
}

}  // namespace lumeno
