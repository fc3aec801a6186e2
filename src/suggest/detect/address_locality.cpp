#include "suggest/detect/address_locality.h"

#include <algorithm>
#include <array>

#include "suggest/detect/address_tables.h"
#include "suggest/detect/token_scan.h"

namespace lumeno::detect {

namespace {

using namespace Qt::StringLiterals;
using namespace scan;
namespace tables = address_tables;

constexpr int mostPlaceWords = 5;
constexpr int mostEnglishWords = 12;

bool isUpper(QStringView s) {
  return std::all_of(s.begin(), s.end(), [](QChar c) { return isAsciiUpper(c.unicode()) || c == u'.'; });
}

/// Whether something other than a word goes on at `i`.
bool isWordEnd(QStringView text, qsizetype i) {
  return !isWordCharacter(codePointAt(text, i));
}

/// The end of the longest entry of `set` (up to four words apart by single blanks) at `i`, or 0.
qsizetype phraseEnd(QStringView text, qsizetype i, const WordSet& set) {
  qsizetype best = 0;
  qsizetype at = i;
  for (int words = 0; words < 4; ++words) {
    const AddressWord word = readAddressWord(text, at);
    if (word.isEmpty()) break;
    const qsizetype end = word.start + word.text.size();
    if (set.contains(text.sliced(i, end - i))) best = end;
    if (unitAt(text, end) != u' ') break;
    at = end + 1;
  }
  return best;
}

/// `end`, or the end of the country name that follows there.
qsizetype withCountry(QStringView text, qsizetype end) {
  const AddressGap gap = readAddressGap(text, end);
  if (gap.kind == Separator::none) return end;
  const AddressWord first = readAddressWord(text, gap.end);
  if (!first.isCapitalised()) return end;
  const qsizetype country = phraseEnd(text, gap.end, tables::countries());
  if (country == 0) return end;
  // "US" and "UK" only as written in capitals.
  if (country - gap.end <= 3 && !isUpper(text.sliced(gap.end, country - gap.end))) return end;
  // The final full stop of "U.S.A." belongs to it.
  const bool initials = first.text.contains(u'.') && unitAt(text, country) == u'.';
  return initials ? country + 1 : country;
}

/// The end of the name of a place at `i` (Frankfurt am Main, København K, Paris Cedex 08), or 0.
qsizetype placeEnd(QStringView text, qsizetype i) {
  if (hasAt(text, i, "'s-"_L1)) i += 3;
  qsizetype end = 0;
  qsizetype at = i;
  for (int words = 0; words < mostPlaceWords; ++words) {
    const AddressWord word = readAddressWord(text, at);
    if (word.isEmpty()) break;
    const bool particle = tables::particles().contains(word.text);
    if (tables::afterAddress().contains(word.text)) break;
    if (words > 0 && word.isCapitalised() && phraseEnd(text, word.start, tables::countries()) > 0) break;
    const bool cedexNumber = word.isNumber() && words > 0 && word.text.size() <= 2;
    if (word.isCapitalised() || cedexNumber) {
      end = word.start + word.text.size();
      // "Frankfurt a. M.", "St. Gallen": only short words carry a full stop inside a name.
      if (word.dotted && word.text.size() > 3) break;
    } else if (!particle) {
      break;
    }
    at = word.end;
    if (unitAt(text, at) == u'/' && isLetter(codePointAt(text, at + 1))) {
      ++at;
      continue;
    }
    if (unitAt(text, at) != u' ') break;
    ++at;
    // Roma (RM), Freiburg (Breisgau)
    if (unitAt(text, at) == u'(' && end > 0) {
      const AddressWord inner = readAddressWord(text, at + 1);
      const qsizetype close = inner.start + inner.text.size();
      if (inner.isCapitalised() && unitAt(text, close) == u')') end = close + 1;
      break;
    }
  }
  return end;
}

/// The end of the digits of a continental postcode at `i`, or 0, and how telling its form is.
struct Postcode {
  qsizetype end = 0;
  bool telling = false;  ///< hardly anything else is written like this
};

Postcode postcodeAt(QStringView text, qsizetype i) {
  const qsizetype digits = digitCount(text, i);
  const qsizetype end = i + digits;
  const char16_t next = unitAt(text, end);
  if (digits == 5) return {isWordEnd(text, end) ? end : 0, false};
  if (digits == 4) {
    // 1000-001 Lisboa
    if (next == u'-' && digitCount(text, end + 1) == 3 && isWordEnd(text, end + 4)) return {end + 4, true};
    // 1017 AB Amsterdam
    const qsizetype letters = next == u' ' ? end + 1 : end;
    if (isAsciiUpper(unitAt(text, letters)) && isAsciiUpper(unitAt(text, letters + 1)) &&
        isWordEnd(text, letters + 2) && text[i] != u'0') {
      return {letters + 2, true};
    }
    return {isWordEnd(text, end) ? end : 0, false};
  }
  if (digits == 3 && next == u' ' && digitCount(text, end + 1) == 2 && isWordEnd(text, end + 3))
    return {end + 3, true};
  if (digits == 2 && next == u'-' && digitCount(text, end + 1) == 3 && isWordEnd(text, end + 4))
    return {end + 4, true};
  return {};
}

/// Behind "D-", "CH-", "SE-" before a postcode, or `i`.
qsizetype afterCountryCode(QStringView text, qsizetype i) {
  static const WordSet codes{
      u"d de a at ch f fr e es i it b be l lu lux nl dk s se n no fi fin pl p pt fl"_s};
  qsizetype end = i;
  while (end - i < 3 && isAsciiUpper(unitAt(text, end))) ++end;
  if (end == i || !codes.contains(text.sliced(i, end - i))) return i;
  qsizetype at = end;
  while (at - end < 3 && (unitAt(text, at) == u'-' || unitAt(text, at) == 0x2013 || unitAt(text, at) == u' '))
    ++at;
  return at > end && isAsciiDigit(unitAt(text, at)) ? at : i;
}

/// The end of a state or province at `i` with the code behind it, or 0. Without a code only in the form
/// "City, ST".
qsizetype stateEnd(QStringView text, qsizetype i, Separator before, bool hasPlace) {
  const AddressWord word = readAddressWord(text, i);
  const bool bracketed = unitAt(text, i - 1) == u'(';
  const auto afterName = [&](qsizetype end) {
    if (bracketed) return unitAt(text, end) == u')' ? end + 1 : 0;
    return end;
  };
  const auto codeStart = [&](qsizetype end) {
    if (unitAt(text, end) == u'.') ++end;
    const AddressGap gap = readAddressGap(text, end);
    return gap.kind == Separator::none ? end : gap.end;
  };
  const bool upper = word.text.size() <= 3 && isUpper(word.text);
  const auto match = [&](const WordSet& abbreviations, const WordSet& names) -> qsizetype {
    if (upper && abbreviations.contains(word.text)) return afterName(word.start + word.text.size());
    const qsizetype end = word.isCapitalised() ? phraseEnd(text, i, names) : 0;
    return end > 0 ? afterName(end) : 0;
  };
  const bool clear = hasPlace && (before == Separator::comma || bracketed);
  if (const qsizetype end = match(tables::usStates(), tables::usStateNames())) {
    const qsizetype zip = codeStart(end);
    if (zip > end && digitCount(text, zip) == 5) {
      const bool four = unitAt(text, zip + 5) == u'-' && digitCount(text, zip + 6) == 4;
      const qsizetype zipEnd = four ? zip + 10 : zip + 5;
      if (isWordEnd(text, zipEnd)) return zipEnd;
    }
    if (clear && isWordEnd(text, end)) {
      // Washington, D.C.: the full stop belongs to it
      return word.text.contains(u'.') && unitAt(text, end) == u'.' ? end + 1 : end;
    }
  }
  if (const qsizetype end = match(tables::canadianProvinces(), tables::canadianProvinceNames())) {
    if (const qsizetype code = canadianPostcodeEnd(text, codeStart(end))) return code;
    if (clear) return end;
  }
  if (const qsizetype end = match(tables::australianStates(), tables::australianStateNames())) {
    const qsizetype code = codeStart(end);
    if (code > end && digitCount(text, code) == 4 && isWordEnd(text, code + 4)) return code + 4;
    if (clear) return end;
  }
  return 0;
}

}  // namespace

qsizetype britishPostcodeEnd(QStringView text, qsizetype i) {
  if (!isAsciiUpper(unitAt(text, i))) return 0;
  qsizetype at = i + 1;
  if (isAsciiUpper(unitAt(text, at))) ++at;
  if (!isAsciiDigit(unitAt(text, at))) return 0;
  ++at;
  if (isAsciiDigit(unitAt(text, at)) || isAsciiUpper(unitAt(text, at))) ++at;
  const auto inward = [&](qsizetype k) {
    return isAsciiDigit(unitAt(text, k)) && isAsciiUpper(unitAt(text, k + 1)) &&
           isAsciiUpper(unitAt(text, k + 2)) && isWordEnd(text, k + 3);
  };
  if (isBlank(unitAt(text, at)) && inward(at + 1)) return at + 4;
  if (inward(at)) return at + 3;
  // "SW1A1AA", "N12AB": the digit read as part of the first half belongs to the second
  return inward(at - 1) ? at + 2 : 0;
}

qsizetype canadianPostcodeEnd(QStringView text, qsizetype i) {
  const auto letter = [&](qsizetype k) { return isAsciiUpper(unitAt(text, k)); };
  const auto digit = [&](qsizetype k) { return isAsciiDigit(unitAt(text, k)); };
  if (!letter(i) || !digit(i + 1) || !letter(i + 2)) return 0;
  const qsizetype second = isBlank(unitAt(text, i + 3)) || unitAt(text, i + 3) == u'-' ? i + 4 : i + 3;
  return digit(second) && letter(second + 1) && digit(second + 2) && isWordEnd(text, second + 3) ? second + 3
                                                                                                 : 0;
}

qsizetype knownCityEnd(QStringView text, qsizetype i) {
  if (!readAddressWord(text, i).isCapitalised()) return 0;
  const qsizetype end = phraseEnd(text, i, tables::cities());
  return end == 0 ? 0 : withCountry(text, end);
}

qsizetype postcodeAndPlaceEnd(QStringView text, qsizetype i, StreetEvidence evidence) {
  const qsizetype digits = afterCountryCode(text, i);
  const Postcode postcode = postcodeAt(text, digits);
  if (postcode.end == 0) return 0;
  const bool short4 = digitCount(text, digits) == 4 && !postcode.telling;
  // Four digits are a year as often as a postcode.
  if (short4 && evidence != StreetEvidence::typed && digits == i) return 0;
  qsizetype place = postcode.end;
  if (unitAt(text, place) == u',') ++place;
  const AddressGap gap = readAddressGap(text, place);
  if (gap.kind == Separator::none) return 0;
  if (gap.kind == Separator::line && !postcode.telling) return 0;
  const qsizetype end = placeEnd(text, gap.end);
  if (end == 0) return 0;
  if (evidence == StreetEvidence::named) {
    // Running text goes on behind a number and a noun; an address does not.
    const AddressGap after = readAddressGap(text, end);
    if (after.kind == Separator::blank && isLetter(codePointAt(text, after.end)) &&
        !readAddressWord(text, after.end).isCapitalised()) {
      return 0;
    }
  }
  return withCountry(text, end);
}

qsizetype englishLocalityEnd(QStringView text, qsizetype i) {
  qsizetype best = 0;
  qsizetype at = i;
  Separator before = Separator::comma;
  bool hasPlace = false;
  int gaps = 0;
  for (int words = 0; words < mostEnglishWords && gaps < 6; ++words) {
    if (const qsizetype end = britishPostcodeEnd(text, at)) return withCountry(text, end);
    if (const qsizetype end = canadianPostcodeEnd(text, at)) return withCountry(text, end);
    const bool bracket = unitAt(text, at) == u'(';
    if (const qsizetype end = stateEnd(text, bracket ? at + 1 : at, before, hasPlace)) {
      const AddressGap gap = readAddressGap(text, end);
      // A province in brackets, its postcode behind a comma
      if (const qsizetype code = canadianPostcodeEnd(text, gap.end)) return withCountry(text, code);
      return withCountry(text, end);
    }
    const qsizetype digits = digitCount(text, at);
    if (digits > 0) {
      // New York 10001, Sydney 2000
      const bool code = (digits == 5 || digits == 4) && best > 0 && isWordEnd(text, at + digits);
      return code ? withCountry(text, at + digits) : best;
    }
    const AddressWord word = readAddressWord(text, at);
    if (word.isEmpty() || tables::afterAddress().contains(word.text)) return best;
    if (hasPlace && before != Separator::blank) {
      const qsizetype country = phraseEnd(text, at, tables::countries());
      if (country > 0 && word.isCapitalised() && (country - at > 3 || isUpper(word.text))) return country;
    }
    if (!word.isCapitalised() && !(hasPlace && tables::particles().contains(word.text))) return best;
    if (const qsizetype city = phraseEnd(text, at, tables::cities());
        city > 0 && before != Separator::blank) {
      best = city;
    }
    hasPlace = true;
    if (word.endsSentence()) return best;
    const AddressGap gap = readAddressGap(text, word.end);
    if (gap.kind == Separator::none) return best;
    if (gap.kind != Separator::blank) ++gaps;
    before = gap.kind;
    at = gap.end;
  }
  return best;
}

}  // namespace lumeno::detect
