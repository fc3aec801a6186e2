#include "suggest/detect/address_text.h"

#include <unicode/uchar.h>

#include <algorithm>

#include "suggest/detect/step_counter.h"
#include "suggest/detect/token_scan.h"

namespace lumeno::detect {

using namespace scan;

namespace {
constexpr qsizetype longestWord = 48;
constexpr qsizetype mostBlanks = 12;
}  // namespace

bool AddressWord::isCapitalised() const {
  const auto first = static_cast<UChar32>(codePointAt(text, 0));
  return u_isupper(first) || u_istitle(first);
}

bool AddressWord::isNumber() const {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return isAsciiDigit(c.unicode()); });
}

bool AddressWord::isOrdinal() const {
  if (text.size() < 3 || !isAsciiDigit(text[0].unicode()) || !isAsciiDigit(text[text.size() - 3].unicode())) {
    return false;
  }
  const qsizetype i = text.size() - 2;
  using namespace Qt::StringLiterals;
  return hasAt(text, i, "st"_L1) || hasAt(text, i, "nd"_L1) || hasAt(text, i, "rd"_L1) ||
         hasAt(text, i, "th"_L1);
}

AddressWord readAddressWord(QStringView text, qsizetype i) {
  qsizetype end = i;
  while (end < text.size() && end - i < longestWord) {
    const char32_t c = codePointAt(text, end);
    if (isWordCharacter(c) || c == 0x00BA || c == 0x00AA) {
      end += unitCount(c);
      continue;
    }
    if (end == i) break;
    const char32_t next = codePointAt(text, end + 1);
    const bool joins = c == u'-' || c == u'\'' || c == 0x2019;
    // D.C., p.za: a full stop that another letter follows at once
    const bool inner = c == u'.' && isLetter(next) && end - i <= 3;
    if (!(joins && isWordCharacter(next)) && !inner) break;
    ++end;
  }
  AddressWord word{text.sliced(i, end - i), i, end, false};
  countSteps(static_cast<std::uint64_t>(end - i + 1));
  if (end > i && unitAt(text, end) == u'.') {
    word.dotted = true;
    ++word.end;
  }
  return word;
}

AddressGap readAddressGap(QStringView text, qsizetype i) {
  qsizetype at = i;
  Separator kind = Separator::none;
  int commas = 0;
  int breaks = 0;
  while (at < text.size() && at - i <= mostBlanks) {
    const char16_t c = text[at].unicode();
    if (isBlank(c)) {
      if (kind == Separator::none) kind = Separator::blank;
    } else if (c == u',' && commas == 0) {
      ++commas;
      if (kind != Separator::line) kind = Separator::comma;
    } else if (isLineBreak(c)) {
      if (!(c == u'\n' && unitAt(text, at - 1) == u'\r') && ++breaks > 2) break;
      kind = Separator::line;
    } else if ((c == u'-' || c == 0x2013 || c == u'|' || c == 0x00B7 || c == 0x2022 || c == u'/') &&
               commas == 0 && isBlank(unitAt(text, at - 1)) && isBlank(unitAt(text, at + 1))) {
      ++commas;
      kind = Separator::comma;
    } else {
      break;
    }
    ++at;
  }
  countSteps(static_cast<std::uint64_t>(at - i + 1));
  if (at - i > mostBlanks) return {Separator::none, i};
  return {kind, at};
}

qsizetype digitCount(QStringView text, qsizetype i) {
  qsizetype n = 0;
  while (n < 9 && isAsciiDigit(unitAt(text, i + n))) ++n;
  return n;
}

qsizetype houseNumberEnd(QStringView text, qsizetype i) {
  const auto withLetter = [&](qsizetype at) {
    const char32_t next = codePointAt(text, at + 1);
    return isAsciiLetter(unitAt(text, at)) && !isWordCharacter(next) ? at + 1 : at;
  };
  const qsizetype digits = digitCount(text, i);
  if (digits == 0 || digits > 5) return 0;
  qsizetype end = withLetter(i + digits);
  using namespace Qt::StringLiterals;
  for (const QLatin1StringView word : {"bis"_L1, "ter"_L1, "quater"_L1}) {
    if (end == i + digits && hasAt(text, end, word) &&
        !isWordCharacter(codePointAt(text, end + word.size()))) {
      return end + word.size();
    }
  }
  for (int parts = 0; parts < 3; ++parts) {
    const char16_t c = unitAt(text, end);
    if (c != u'-' && c != 0x2013 && c != u'/' && c != u'+') break;
    const qsizetype more = digitCount(text, end + 1);
    if (more == 0 || more > 5) {
      const qsizetype letter = withLetter(end + 1);
      if (letter > end + 1) end = letter;
      break;
    }
    end = withLetter(end + 1 + more);
  }
  if (unitAt(text, end) == 0x00BD) ++end;
  if (hasAt(text, end, " 1/2"_L1)) end += 4;
  const char32_t next = codePointAt(text, end);
  return isWordCharacter(next) || next == 0x00BA || next == u'%' ? 0 : end;
}

}  // namespace lumeno::detect
