#pragma once

#include "suggest/text_units.h"

/// Hand-written forms of regular expressions that backtrack badly or cost too much. Each reads every unit a
/// bounded number of times and answers exactly whether its expression has a match anywhere in the text.
namespace lumeno::scan {

/// Whether only a final line terminator, or nothing, stands at `i`: where "$" matches.
template <class Text>
bool isBeforeEnd(const Text& text, qsizetype i) {
  const qsizetype rest = text.size() - i;
  if (rest == 0) return true;
  if (rest == 1) return isLineTerminator(text[i]) && !(text[i] == u'\n' && i > 0 && text[i - 1] == u'\r');
  return rest == 2 && text[i] == u'\r' && text[i + 1] == u'\n';
}

/// "[{}]\s*$"
template <class Text>
bool endsWithBrace(const Text& text) {
  qsizetype end = text.size();
  while (end > 0 && isSpace(text[end - 1])) --end;
  return end > 0 && (text[end - 1] == u'{' || text[end - 1] == u'}');
}

/// "=>|->|=="
template <class Text>
bool hasArrow(const Text& text) {
  char16_t previous = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c == u'>' && (previous == u'=' || previous == u'-')) return true;
    if (c == u'=' && previous == u'=') return true;
    previous = c;
  }
  return false;
}

/// "</?[A-Za-z][^>]*>" without regard to case, which lets the long s and the Kelvin sign count as letters.
/// The first opening is enough: whatever closes a later one closes it too.
template <class Text>
bool hasTag(const Text& text) {
  const auto isTagLetter = [](char16_t c) {
    return isAsciiLower(c) || isAsciiUpper(c) || c == u'\u017F' || c == u'\u212A';
  };
  const qsizetype size = text.size();
  for (qsizetype i = 0; i < size; ++i) {
    if (text[i] != u'<') continue;
    const qsizetype name = i + 1 < size && text[i + 1] == u'/' ? i + 2 : i + 1;
    if (name >= size || !isTagLetter(text[name])) continue;
    for (qsizetype j = name + 1; j < size; ++j) {
      if (text[j] == u'>') return true;
    }
    return false;
  }
  return false;
}

/// "(?m)^\s{4,}\S": blank lines count as part of the indentation, so what matters is how far the earliest
/// line start in a run of white space lies before the run's end.
template <class Text>
bool hasIndentedLine(const Text& text) {
  constexpr qsizetype noLineStart = -1;
  qsizetype lineStart = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (!isSpace(c)) {
      if (lineStart != noLineStart && i - lineStart >= 4) return true;
      lineStart = noLineStart;
    } else if (lineStart == noLineStart && isLineTerminator(c)) {
      if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
      lineStart = i + 1;
    }
  }
  return false;
}

/// Whether "at\s+\S+\(" matches at `i`, without regard to case.
template <class Text>
bool isStackFrame(const Text& text, qsizetype i) {
  const qsizetype size = text.size();
  if (i + 2 >= size || (text[i] | 0x20) != u'a' || (text[i + 1] | 0x20) != u't') return false;
  const qsizetype blanks = i + 2;
  qsizetype name = blanks;
  while (name < size && isSpace(text[name])) ++name;
  if (name == blanks) return false;
  for (qsizetype j = name; j < size && !isSpace(text[j]); ++j) {
    if (text[j] == u'(' && j > name) return true;
  }
  return false;
}

/// "(?m)^\s*at\s+\S+\("
template <class Text>
bool hasStackFrame(const Text& text) {
  bool atLineStart = true;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (isSpace(c)) {
      atLineStart = atLineStart || isLineTerminator(c);
    } else {
      if (atLineStart && isStackFrame(text, i)) return true;
      atLineStart = false;
    }
  }
  return false;
}

/// The end of the run of characters from `i` on that `belongs`.
template <class Text, class Belongs>
qsizetype endOfRun(const Text& text, qsizetype i, Belongs belongs) {
  while (i < text.size()) {
    const char32_t c = codePointAt(text, i);
    if (!belongs(c)) break;
    i += U16_LENGTH(c);
  }
  return i;
}

/// "(?m)\S+\.\w+:\d+:\d+": a full stop can only be the last one before the word, so the search goes on after
/// it.
template <class Text>
bool hasSourceLocation(const Text& text) {
  const qsizetype size = text.size();
  const auto isColon = [&](qsizetype i) { return i < size && text[i] == u':'; };
  for (qsizetype i = 1; i < size; ++i) {
    if (text[i] != u'.' || isSpace(text[i - 1])) continue;
    const qsizetype word = i + 1;
    const qsizetype line = endOfRun(text, word, isWordCharacter);
    i = line - 1;
    if (line == word || !isColon(line)) continue;
    const qsizetype column = endOfRun(text, line + 1, isDigit);
    if (column == line + 1 || !isColon(column)) continue;
    if (column + 1 < size && isDigit(codePointAt(text, column + 1))) return true;
  }
  return false;
}

/// Whether the last character before `i` that is not attached belongs to a word.
template <class Text>
bool isAfterWord(const Text& text, qsizetype i) {
  while (i > 0) {
    const char32_t c = codePointBefore(text, i);
    const CharClass charClass = classOf(c);
    if (charClass != CharClass::attached) return charClass == CharClass::word;
    i -= U16_LENGTH(c);
  }
  return false;
}

/// "\b\d{1,2}:\d{2}\b"
template <class Text>
bool hasClockTime(const Text& text) {
  const qsizetype size = text.size();
  // Both take one digit; -1 when there is none.
  const auto digitBefore = [&](qsizetype i) -> qsizetype {
    if (i <= 0) return -1;
    const char32_t c = codePointBefore(text, i);
    return isDigit(c) ? i - U16_LENGTH(c) : -1;
  };
  const auto digitAfter = [&](qsizetype i) -> qsizetype {
    if (i < 0 || i >= size) return -1;
    const char32_t c = codePointAt(text, i);
    return isDigit(c) ? i + U16_LENGTH(c) : -1;
  };
  for (qsizetype i = 1; i < size; ++i) {
    if (text[i] != u':') continue;
    const qsizetype end = digitAfter(digitAfter(i + 1));
    if (end < 0 || !isWordBoundary(text, end, true)) continue;
    const qsizetype oneDigit = digitBefore(i);
    if (oneDigit < 0) continue;
    if (!isAfterWord(text, oneDigit)) return true;
    const qsizetype twoDigits = digitBefore(oneDigit);
    if (twoDigits >= 0 && !isAfterWord(text, twoDigits)) return true;
  }
  return false;
}

/// "\?$"
template <class Text>
bool endsWithQuestionMark(const Text& text) {
  for (qsizetype i = text.size() - 1; i >= 0 && i >= text.size() - 3; --i) {
    if (text[i] == u'?' && isBeforeEnd(text, i + 1)) return true;
  }
  return false;
}

/// "[A-Za-z0-9][A-Za-z0-9_\- ./]+?\.[A-Za-z0-9]{2,8}", with regard to case. Only the first possible start in
/// each run of permitted characters matters: it leaves the most room before the full stop.
template <class Text>
bool hasFilename(const Text& text) {
  constexpr qsizetype noStart = -1;
  const qsizetype size = text.size();
  qsizetype start = noStart;
  for (qsizetype i = 0; i < size; ++i) {
    const char16_t c = text[i];
    if (isAsciiAlphanumeric(c)) {
      if (start == noStart) start = i;
    } else if (c == u'.' && start != noStart && i - start >= 2 && i + 2 < size &&
               isAsciiAlphanumeric(text[i + 1]) && isAsciiAlphanumeric(text[i + 2])) {
      return true;
    } else if (c != u'.' && c != u'_' && c != u'-' && c != u' ' && c != u'/') {
      start = noStart;
    }
  }
  return false;
}

/// "^[A-Z0-9]{2,8}$", with regard to case.
template <class Text>
bool isAcronym(const Text& text) {
  qsizetype length = 0;
  while (length < text.size() && length <= 8 && (isAsciiUpper(text[length]) || isAsciiDigit(text[length])))
    ++length;
  return length >= 2 && length <= 8 && isBeforeEnd(text, length);
}

}  // namespace lumeno::scan
