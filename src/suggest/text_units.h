#pragma once

#include <unicode/utf16.h>

#include <QStringView>
#include <array>

/// The alphabet of the cue scans: units, code points, and the classes that regular expressions know. Every
/// scan is a template over a `Text` with `size()` and `operator[]` giving UTF-16 units, so that a test can
/// hand in a text that counts how often it is read.
namespace lumeno::scan {

/// The text of a view, readable unit by unit without checks.
class Units {
 public:
  explicit Units(QStringView text) : data_(text.utf16()), size_(text.size()) {}
  [[nodiscard]] qsizetype size() const { return size_; }
  char16_t operator[](qsizetype i) const { return data_[i]; }

 private:
  const char16_t* data_;
  qsizetype size_;
};

/// What a character means to a word boundary: it belongs to words, it does not, or it is attached to the
/// character before it (combining marks and format characters) and takes no part.
enum class CharClass : unsigned char { other, word, attached };

[[nodiscard]] CharClass classOfNonAscii(char32_t c);
[[nodiscard]] bool isNonAsciiWordCharacter(char32_t c);
[[nodiscard]] bool isNonAsciiDigit(char32_t c);

inline constexpr bool isAsciiDigit(char32_t c) {
  return c >= U'0' && c <= U'9';
}
inline constexpr bool isAsciiUpper(char32_t c) {
  return c >= U'A' && c <= U'Z';
}
inline constexpr bool isAsciiLower(char32_t c) {
  return c >= U'a' && c <= U'z';
}
inline constexpr char16_t foldAscii(char16_t c) {
  return isAsciiUpper(c) ? static_cast<char16_t>(c | 0x20) : c;
}
inline constexpr bool isAsciiAlphanumeric(char32_t c) {
  return isAsciiDigit(c) || isAsciiUpper(c) || isAsciiLower(c);
}

namespace internal {
inline constexpr auto asciiClasses = [] {
  std::array<CharClass, 128> classes{};
  for (char32_t c = 0; c < classes.size(); ++c) {
    classes[c] = isAsciiAlphanumeric(c) || c == U'_' ? CharClass::word : CharClass::other;
  }
  return classes;
}();
}  // namespace internal

inline CharClass classOf(char32_t c) {
  return c < 128 ? internal::asciiClasses[c] : classOfNonAscii(c);
}

/// What "\w" matches: unlike for word boundaries, marks and joiners count.
inline bool isWordCharacter(char32_t c) {
  return c < 128 ? internal::asciiClasses[c] == CharClass::word : isNonAsciiWordCharacter(c);
}

/// White_Space. All of it lies in the basic plane, so a unit is enough.
inline constexpr bool isSpace(char32_t c) {
  if (c < 128) return c == U' ' || (c >= U'\t' && c <= U'\r');
  if (c < 0x1680) return c == 0x85 || c == 0xA0;
  return c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F ||
         c == 0x205F || c == 0x3000;
}

/// A decimal digit of any script.
inline bool isDigit(char32_t c) {
  return c < 128 ? isAsciiDigit(c) : isNonAsciiDigit(c);
}

inline bool isLineTerminator(char32_t c) {
  return (c >= U'\n' && c <= U'\r') || c == 0x85 || c == 0x2028 || c == 0x2029;
}

/// The code point that starts at `i`; an unpaired surrogate stands for itself.
template <class Text>
char32_t codePointAt(const Text& text, qsizetype i) {
  const char16_t first = text[i];
  if (!U16_IS_LEAD(first) || i + 1 >= text.size()) return first;
  const char16_t second = text[i + 1];
  return U16_IS_TRAIL(second) ? static_cast<char32_t>(U16_GET_SUPPLEMENTARY(first, second)) : first;
}

/// The code point that ends before `i` (which is above 0).
template <class Text>
char32_t codePointBefore(const Text& text, qsizetype i) {
  const char16_t second = text[i - 1];
  if (!U16_IS_TRAIL(second) || i < 2) return second;
  const char16_t first = text[i - 2];
  return U16_IS_LEAD(first) ? static_cast<char32_t>(U16_GET_SUPPLEMENTARY(first, second)) : second;
}

/// Whether a word begins or ends at `i`; `afterWord` says whether the last character before it that is not
/// attached belongs to a word.
template <class Text>
bool isWordBoundary(const Text& text, qsizetype i, bool afterWord) {
  if (i >= text.size()) return afterWord;
  const CharClass next = classOf(codePointAt(text, i));
  return next != CharClass::attached && (next == CharClass::word) != afterWord;
}

}  // namespace lumeno::scan
