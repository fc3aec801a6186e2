#include "suggest/detect/url_extent.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>

#include "suggest/detect/step_counter.h"
#include "suggest/detect/token_scan.h"

namespace lumeno::detect {

namespace {

using namespace Qt::StringLiterals;
using namespace scan;

char16_t openerOf(char16_t closer) {
  switch (closer) {
    case u')':
      return u'(';
    case u']':
      return u'[';
    case u'}':
      return u'{';
    default:
      return u'\0';
  }
}

bool isOpener(char16_t c) {
  return c == u'(' || c == u'[' || c == u'{';
}

/// Non-ASCII text may stand unencoded in paths; punctuation and blanks of the surrounding text end the URL.
bool isNonAsciiUrlCharacter(char32_t c) {
  if (c == 0x00B7 || c == 0x30FB) return true;
  if (c == 0x2014 || c == 0x2015 || c == 0xFFFC) return false;
  constexpr uint32_t allowed = U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK | U_GC_S_MASK | U_GC_PD_MASK;
  return c == 0x200D || (U_GET_GC_MASK(static_cast<UChar32>(c)) & allowed) != 0;
}

bool startsAnotherUrl(QStringView text, qsizetype i) {
  return hasAt(text, i, "http://"_L1) || hasAt(text, i, "https://"_L1) || hasAt(text, i, "www."_L1) ||
         hasAt(text, i, "ftp://"_L1) || hasAt(text, i, "mailto:"_L1);
}

/// Whether the ASCII unit at `i` belongs to the surrounding text.
bool endsUrl(QStringView text, qsizetype i, char16_t opening) {
  switch (const char16_t c = text[i].unicode()) {
    case u'"':
    case u'<':
    case u'>':
    case u'`':
    case u'^':
    case u'\\':
      return true;
    case u'\'':
      return opening == u'\'' ||
             (asciiLower(unitAt(text, i + 1)) == u's' && !isWordCharacter(codePointAt(text, i + 2)));
    case u',':
    case u';':
    case u'|':
      return startsAnotherUrl(text, i + 1);
    case u'&':
      return hasAt(text, i, "&quot;"_L1) || hasAt(text, i, "&lt;"_L1) || hasAt(text, i, "&gt;"_L1) ||
             hasAt(text, i, "&nbsp;"_L1) || hasAt(text, i, "&#39;"_L1);
    default:
      return c <= u' ' || c == 0x7F;
  }
}

/// `end` moved back over punctuation that ends a sentence or an emphasis, but not before `start`.
qsizetype withoutTrailingPunctuation(QStringView text, qsizetype start, qsizetype end, char16_t opening) {
  constexpr QStringView punctuation = u".,;:!?'*|([{\u2013";
  while (end > start) {
    const QChar c = text[end - 1];
    const bool emphasis = (c == u'_' || c == u'~') && c == QChar(opening);
    if (!emphasis && !punctuation.contains(c)) break;
    --end;
  }
  return end;
}

}  // namespace

qsizetype urlTailEnd(QStringView text, qsizetype start, char16_t opening) {
  std::array<qsizetype, 16> open{};
  size_t depth = 0;
  qsizetype i = start;
  while (i < text.size()) {
    const char16_t c = text[i].unicode();
    if (c >= 0x80) {
      const char32_t codePoint = codePointAt(text, i);
      if (!isNonAsciiUrlCharacter(codePoint)) break;
      i += unitCount(codePoint);
      continue;
    }
    if (isOpener(c)) {
      if (depth == open.size()) break;
      open[depth++] = i;
    } else if (const char16_t opener = openerOf(c)) {
      if (depth == 0 || text[open[depth - 1]].unicode() != opener) break;
      --depth;
    } else if (endsUrl(text, i, opening)) {
      break;
    }
    ++i;
  }
  countSteps(static_cast<std::uint64_t>(i - start));
  // A bracket that is never closed opens a remark of the surrounding text.
  if (depth > 0) i = open[0];
  return withoutTrailingPunctuation(text, start, i, opening);
}

qsizetype urlEndAfterHost(QStringView text, qsizetype hostEnd, char16_t opening) {
  qsizetype i = hostEnd;
  if (unitAt(text, i) == u':') {
    qsizetype digits = i + 1;
    while (digits - i <= 5 && isAsciiDigit(unitAt(text, digits))) ++digits;
    if (digits > i + 1 && !isWordCharacter(codePointAt(text, digits))) i = digits;
  }
  const char16_t c = unitAt(text, i);
  if (c != u'/' && c != u'?' && c != u'#') return i;
  return urlTailEnd(text, i, opening);
}

}  // namespace lumeno::detect
