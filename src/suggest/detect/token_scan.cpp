#include "suggest/detect/token_scan.h"

#include <unicode/uchar.h>

namespace lumeno::detect::scan {

char32_t codePointAt(QStringView text, qsizetype i) {
  const char16_t first = unitAt(text, i);
  const char16_t second = unitAt(text, i + 1);
  if (QChar::isHighSurrogate(first) && QChar::isLowSurrogate(second)) {
    return QChar::surrogateToUcs4(first, second);
  }
  return first;
}

char32_t codePointBefore(QStringView text, qsizetype i) {
  const char16_t last = unitAt(text, i - 1);
  const char16_t first = unitAt(text, i - 2);
  if (QChar::isLowSurrogate(last) && QChar::isHighSurrogate(first)) {
    return QChar::surrogateToUcs4(first, last);
  }
  return last;
}

bool isWordCharacter(char32_t c) {
  if (c < 0x80) return isAsciiLetter(char16_t(c)) || isAsciiDigit(char16_t(c));
  return (U_GET_GC_MASK(static_cast<UChar32>(c)) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_ND_MASK)) != 0;
}

bool isLetter(char32_t c) {
  if (c < 0x80) return isAsciiLetter(char16_t(c));
  return (U_GET_GC_MASK(static_cast<UChar32>(c)) & (U_GC_L_MASK | U_GC_M_MASK)) != 0;
}

bool isBlank(char16_t c) {
  if (c < 0x80) return c == u' ' || c == u'\t';
  return c == 0x00A0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x202F || c == 0x205F ||
         c == 0x3000;
}

bool isLineBreak(char16_t c) {
  return (c >= u'\n' && c <= u'\r') || c == 0x0085 || c == 0x2028 || c == 0x2029;
}

bool isUnspacedScript(char32_t c) {
  return (c >= 0x3040 && c <= 0x30FF) || (c >= 0x3400 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7AF) ||
         (c >= 0xF900 && c <= 0xFAFF) || (c >= 0x0E00 && c <= 0x0E7F);
}

bool isCharacterBoundary(QStringView text, qsizetype position) {
  if (position <= 0 || position >= text.size()) return true;
  const char16_t before = unitAt(text, position - 1);
  const char16_t after = unitAt(text, position);
  if (QChar::isHighSurrogate(before) && QChar::isLowSurrogate(after)) return false;
  if (before == u'\r' && after == u'\n') return false;
  if (before < 0x300 && after < 0x300) return true;
  const auto property = [](char32_t c) {
    return u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_GRAPHEME_CLUSTER_BREAK);
  };
  switch (property(codePointAt(text, position))) {
    case U_GCB_EXTEND:
    case U_GCB_SPACING_MARK:
    case U_GCB_ZWJ:
      return false;
    default:
      return property(codePointBefore(text, position)) != U_GCB_PREPEND;
  }
}

bool hasAt(QStringView text, qsizetype i, QLatin1StringView ascii) {
  if (i < 0 || i + ascii.size() > text.size()) return false;
  for (qsizetype k = 0; k < ascii.size(); ++k) {
    if (asciiLower(text[i + k].unicode()) != ascii[k].unicode()) return false;
  }
  return true;
}

}  // namespace lumeno::detect::scan
