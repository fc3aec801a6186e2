#pragma once

#include <QString>
#include <array>
#include <vector>

#include "suggest/cue_patterns.h"
#include "suggest/text_units.h"

/// One pass that finds the words and phrases of all word-list expressions at once: at each start of a word
/// only the phrases with that first letter are compared. The phrases are derived from the expressions, which
/// stay their only statement.
namespace lumeno::scan {

/// A phrase spelled out from an expression such as "\b(am|a\.m\.|means?)\b" or "(?m)^\s*(let|var)\b".
struct ListedPhrase {
  enum class Start { wordStart, lineStart };
  enum class End { wordBoundary, anywhere };

  QString text;  ///< lowercase ASCII, two characters or more; the first is a letter
  Start start = Start::wordStart;
  End end = End::wordBoundary;
  CueSet patterns = 0;  ///< the expressions that list it
};

/// The phrases of one word-list expression.
[[nodiscard]] std::vector<ListedPhrase> spellOut(QStringView source, CueSet pattern);

/// All phrases, by first letter.
class ListedWords {
 public:
  /// Those of every pattern whose form is `listedWords`.
  static const ListedWords& shared();

  [[nodiscard]] const std::vector<ListedPhrase>& startingWith(char16_t letter) const {
    return byFirstLetter_[letter - u'a'];
  }

 private:
  ListedWords();
  std::array<std::vector<ListedPhrase>, 26> byFirstLetter_;
};

/// The full case folding of a character: the sharp s becomes two letters.
struct Folding {
  std::array<char16_t, 8> units;
  int size = 0;
};
[[nodiscard]] Folding foldNonAscii(char32_t c);

/// Whether the case folding of a character above ASCII begins with an ASCII letter; hardly any does.
inline constexpr bool foldsToAscii(char32_t c) {
  return c == 0xDF || c == 0x130 || c == 0x17F || c == 0x1F0 || (c >= 0x1E96 && c <= 0x1E9A) || c == 0x1E9E ||
         c == 0x212A || (c >= 0xFB00 && c <= 0xFB06);
}

/// Where `phrase` ends when it stands at `i`, compared without regard to case; -1 when it does not. A
/// character that folds to several (the sharp s, ligatures) counts only as a whole.
template <class Text>
qsizetype endOfPhrase(const Text& text, qsizetype i, QStringView phrase) {
  qsizetype matched = 0;
  while (matched < phrase.size()) {
    if (i >= text.size()) return -1;
    const char16_t unit = text[i];
    if (unit < 128) {
      if (foldAscii(unit) != phrase[matched].unicode()) return -1;
      ++matched;
      ++i;
      continue;
    }
    const char32_t c = codePointAt(text, i);
    if (!foldsToAscii(c)) return -1;
    const Folding folding = foldNonAscii(c);
    for (int k = 0; k < folding.size; ++k, ++matched) {
      if (matched >= phrase.size() || folding.units[k] != phrase[matched].unicode()) return -1;
    }
    i += U16_LENGTH(c);
  }
  return i;
}

/// The expressions with a phrase that stands at the word start `i`.
template <class Text>
CueSet phrasesAt(const Text& text, qsizetype i, char32_t c, bool atLineStart, CueSet known,
                 const ListedWords& words) {
  constexpr char16_t anyLetter = 128;
  if (c >= 128 && !foldsToAscii(c)) return 0;
  const char16_t letter = c < 128 ? foldAscii(static_cast<char16_t>(c)) : foldNonAscii(c).units[0];
  if (!isAsciiLower(letter)) return 0;
  // Most words are none of ours, which nearly always shows in the second letter.
  const char16_t next = c < 128 && i + 1 < text.size() ? foldAscii(text[i + 1]) : anyLetter;
  CueSet found = 0;
  for (const ListedPhrase& phrase : words.startingWith(letter)) {
    if (next < anyLetter && phrase.text[1].unicode() != next) continue;
    if ((phrase.patterns & ~known) == 0) continue;
    if (phrase.start == ListedPhrase::Start::lineStart && !atLineStart) continue;
    const qsizetype end = endOfPhrase(text, i, phrase.text);
    if (end < 0) continue;
    const bool endsInWord = isAsciiAlphanumeric(phrase.text.back().unicode());
    if (phrase.end == ListedPhrase::End::wordBoundary && !isWordBoundary(text, end, endsInWord)) continue;
    found |= phrase.patterns;
  }
  return found;
}

/// Which word-list expressions match.
template <class Text>
CueSet findListedWords(const Text& text) {
  const qsizetype size = text.size();
  const ListedWords& words = ListedWords::shared();
  CueSet found = 0;
  bool afterWord = false;
  // Whether there is only white space since the start of a line.
  bool atLineStart = true;
  for (qsizetype i = 0; i < size;) {
    const char32_t c = codePointAt(text, i);
    const CharClass charClass = classOf(c);
    if (charClass == CharClass::word && !afterWord) found |= phrasesAt(text, i, c, atLineStart, found, words);
    if (charClass != CharClass::attached) afterWord = charClass == CharClass::word;
    atLineStart = isSpace(c) && (atLineStart || isLineTerminator(c));
    i += U16_LENGTH(c);
    // The rest of a word holds nothing of interest.
    if (charClass == CharClass::word) {
      while (i < size && text[i] < 128 && isWordCharacter(text[i])) ++i;
    }
  }
  return found;
}

}  // namespace lumeno::scan
