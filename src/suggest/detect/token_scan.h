#pragma once

#include <QString>
#include <QStringView>

/// Character classes and small steps that the scanners of links, phone numbers and addresses share. Positions
/// are UTF-16 units. Everything here is constant time.
namespace lumeno::detect::scan {

[[nodiscard]] inline bool isAsciiDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}
[[nodiscard]] inline bool isAsciiLetter(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
[[nodiscard]] inline bool isAsciiUpper(char16_t c) {
  return c >= u'A' && c <= u'Z';
}
[[nodiscard]] inline char16_t asciiLower(char16_t c) {
  return isAsciiUpper(c) ? char16_t(c + 32) : c;
}

/// The unit at `i`, or 0 outside the text.
[[nodiscard]] inline char16_t unitAt(QStringView text, qsizetype i) {
  return i >= 0 && i < text.size() ? text[i].unicode() : u'\0';
}

/// The code point that starts at `i` or ends before `i`; a lone surrogate stands for itself, 0 outside the
/// text.
[[nodiscard]] char32_t codePointAt(QStringView text, qsizetype i);
[[nodiscard]] char32_t codePointBefore(QStringView text, qsizetype i);
[[nodiscard]] inline qsizetype unitCount(char32_t c) {
  return c > 0xFFFF ? 2 : 1;
}

/// A letter, combining mark or decimal digit of any script.
[[nodiscard]] bool isWordCharacter(char32_t c);
[[nodiscard]] bool isLetter(char32_t c);
/// White space that does not end a line (tab, blank, no-break and other space separators).
[[nodiscard]] bool isBlank(char16_t c);
[[nodiscard]] bool isLineBreak(char16_t c);
[[nodiscard]] inline bool isSpace(char16_t c) {
  return isBlank(c) || isLineBreak(c);
}

/// Han, kana, Hangul and Thai: scripts that are written without blanks, right up against Latin words.
[[nodiscard]] bool isUnspacedScript(char32_t c);

/// Whether `position` lies between two user-perceived characters.
[[nodiscard]] bool isCharacterBoundary(QStringView text, qsizetype position);

/// Whether `text` has `ascii` (lower-case) at `i`, ignoring ASCII case.
[[nodiscard]] bool hasAt(QStringView text, qsizetype i, QLatin1StringView ascii);

}  // namespace lumeno::detect::scan
