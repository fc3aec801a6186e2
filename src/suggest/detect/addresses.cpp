// Every address has a number: of the house, the post box, or at least the postcode. One pass finds the
// numbers, and around each the street and the locality are looked for in the orders that countries use:
// number first (12 High Street; 3 rue …), number last (Hauptstraße 5), or no number at all. Both parts must
// be there and adjoin. Each look reads a bounded number of characters and the number of looks is capped, so
// the cost is linear in the text.

#include <algorithm>
#include <array>

#include "suggest/detect/address_locality.h"
#include "suggest/detect/address_street.h"
#include "suggest/detect/address_tables.h"
#include "suggest/detect/address_text.h"
#include "suggest/detect/detect.h"
#include "suggest/detect/step_counter.h"
#include "suggest/detect/token_scan.h"

namespace lumeno::detect {

namespace {

using namespace Qt::StringLiterals;
using namespace scan;
namespace tables = address_tables;

/// Numbers that could belong to an address; a text with more of them is a table, not a letter.
constexpr int mostLooks = 5000;

struct Span {
  qsizetype start = 0;
  qsizetype end = 0;  // 0: nothing found
};

class AddressScanner {
 public:
  AddressScanner(QStringView text, size_t mostMatches) : text_(text), mostMatches_(mostMatches) {}

  std::vector<AddressMatch> run() {
    qsizetype i = 0;
    while (i < text_.size() && matches_.size() < mostMatches_ && looks_ < mostLooks) {
      const char16_t c = text_[i].unicode();
      const bool digit = isAsciiDigit(c);
      if (!digit && !isAsciiUpper(c)) {
        ++i;
        continue;
      }
      const qsizetype next = digit ? atNumber(i) : atCapital(i);
      countSteps(static_cast<std::uint64_t>(next - i));
      i = next;
    }
    countSteps(static_cast<std::uint64_t>(i));
    return std::move(matches_);
  }

 private:
  qsizetype atNumber(qsizetype i) {
    qsizetype end = i;
    while (end < text_.size() && isAsciiDigit(text_[end].unicode())) ++end;
    if (end - i > 5 || !mayStartNumber(i)) return end;
    ++looks_;
    Span found = numberFirst(i, houseNumberEnd(text_, i));
    if (found.end == 0) found = numberLast(i);
    if (found.end == 0) found = withoutNumber(i);
    return take(found, end);
  }

  /// One Infinite Loop; a British postcode behind a street without number
  qsizetype atCapital(qsizetype i) {
    if (isWordCharacter(codePointBefore(text_, i))) return i + 1;
    if (const qsizetype postcode = britishPostcodeEnd(text_, i)) {
      ++looks_;
      return take(namedHouse(i, postcode), postcode);
    }
    if (!u"OTFSEN"_s.contains(text_[i])) return i + 1;
    const AddressWord word = readAddressWord(text_, i);
    if (!tables::numberWords().contains(word.text)) return i + 1;
    ++looks_;
    return take(numberFirst(i, word.start + word.text.size()), i + word.text.size());
  }

  [[nodiscard]] bool mayStartNumber(qsizetype i) const {
    const char32_t before = codePointBefore(text_, i);
    if (before == u'.' || before == u',') return !isAsciiDigit(unitAt(text_, i - 2));
    constexpr QStringView parts = u"-/+:$%=_@#&\\\u20AC\u00A3";
    return before == 0 ||
           !(isWordCharacter(before) || (before < 0x10000 && parts.contains(QChar(char16_t(before)))));
  }

  /// 12 High Street, London; 3 bis rue de la Paix, 75002 Paris
  Span numberFirst(qsizetype start, qsizetype numberEnd) {
    if (numberEnd == 0) return {};
    qsizetype name = numberEnd;
    if (unitAt(text_, name) == u',') ++name;
    if (!isBlank(unitAt(text_, name))) return {};
    while (name - numberEnd < 4 && isBlank(unitAt(text_, name))) ++name;
    // "700 Avenue of the Americas" begins like a French street; the reading that goes further is right.
    const qsizetype frenchEnd = frenchAddressEnd(name);
    const qsizetype englishEnd = englishAddressEnd(name);
    const qsizetype end = std::max(frenchEnd, englishEnd);
    if (end == 0) return {};
    return {englishEnd == end ? withLeadingUnits(start) : start, end};
  }

  qsizetype englishAddressEnd(qsizetype i) const {
    const qsizetype streetEnd = englishStreetEnd(text_, i);
    if (streetEnd == 0) return 0;
    const AddressGap gap = readAddressGap(text_, streetEnd);
    return gap.kind == Separator::none ? 0 : englishLocalityEnd(text_, gap.end);
  }

  qsizetype frenchAddressEnd(qsizetype i) {
    for (const QLatin1StringView word : {"bis "_L1, "ter "_L1, "quater "_L1}) {
      if (hasAt(text_, i, word)) i += word.size();
    }
    if (isAsciiUpper(unitAt(text_, i)) && isBlank(unitAt(text_, i + 1))) i += 2;
    if (!startsFrenchStreet(text_, i)) return 0;
    return localityWithin(readAddressWord(text_, i).end, 16, Words::any);
  }

  enum class Words { any, doors };

  /// Steps over at most `mostWords` words and separators from `i` until a locality follows; its end, or 0.
  qsizetype localityWithin(qsizetype i, int mostWords, Words allowed) {
    int gaps = 0;
    for (int words = 0; words <= mostWords; ++words) {
      const AddressGap gap = readAddressGap(text_, i);
      if (gap.kind == Separator::none) return 0;
      if (const qsizetype end = postcodeAndPlaceEnd(text_, gap.end, StreetEvidence::typed)) return end;
      if (gap.kind != Separator::blank) {
        if (++gaps > 4) return 0;
        if (const qsizetype end = canadianLocality(gap.end)) return end;
        if (const qsizetype end = knownCityEnd(text_, gap.end)) return end;
      }
      const AddressWord word = readAddressWord(text_, gap.end);
      if (word.isEmpty()) return 0;
      if (allowed == Words::doors && !isDoor(word)) return 0;
      if (allowed == Words::any && word.endsSentence()) return 0;
      i = word.end;
    }
    return 0;
  }

  /// Montréal (Québec) H3A 1B1
  qsizetype canadianLocality(qsizetype i) {
    if (!readAddressWord(text_, i).isCapitalised()) return 0;
    const qsizetype end = englishLocalityEnd(text_, i);
    return end >= 3 && isAsciiDigit(text_[end - 1].unicode()) && canadianPostcodeEnd(text_, end - 7) == end
               ? end
               : 0;
  }

  static bool isDoor(const AddressWord& word) {
    const QStringView s = word.text;
    return s.size() <= 4 ? isAsciiDigit(s[0].unicode()) || s.size() == 1 || tables::doorWords().contains(s)
                         : tables::doorWords().contains(s);
  }

  /// Hauptstraße 5, 10115 Berlin
  Span numberLast(qsizetype i) {
    const qsizetype numberEnd = boxOrHouseNumberEnd(i);
    if (numberEnd == 0) return {};
    const AddressGap gap = readAddressGap(text_, numberEnd);
    if (gap.kind == Separator::none) return {};
    const bool englishBox = hasAt(text_, i - 4, "box "_L1);
    const qsizetype englishEnd = englishBox ? englishLocalityEnd(text_, gap.end) : 0;
    const qsizetype end = std::max(englishEnd, localityWithin(numberEnd, 6, Words::doors));
    if (end == 0) return {};
    const StreetName street = streetNameBefore(text_, i);
    if (street.start < 0) return {};
    if (street.evidence == StreetEvidence::typed) return {street.start, end};
    const bool adjoins = gap.kind == Separator::comma || gap.kind == Separator::line;
    return {street.start, adjoins ? postcodeAndPlaceEnd(text_, gap.end, StreetEvidence::named) : 0};
  }

  /// "Postfach 12 34 56" is written in pairs.
  qsizetype boxOrHouseNumberEnd(qsizetype i) const {
    qsizetype end = houseNumberEnd(text_, i);
    if (end == 0 || !hasAt(text_, i - 9, "postfach "_L1)) return end;
    while (unitAt(text_, end) == u' ' && digitCount(text_, end + 1) == 2 && end - i < 9) end += 3;
    return end;
  }

  /// Place de la Concorde, 75008 Paris
  Span withoutNumber(qsizetype i) {
    if (digitCount(text_, i) < 5) return {};
    qsizetype streetEnd = i;
    bool separated = false;
    while (streetEnd > 0 && i - streetEnd < 4 &&
           (isSpace(text_[streetEnd - 1].unicode()) || text_[streetEnd - 1] == u',')) {
      --streetEnd;
      separated = separated || !isBlank(text_[streetEnd].unicode());
    }
    if (!separated) return {};
    const qsizetype end = postcodeAndPlaceEnd(text_, i, StreetEvidence::typed);
    if (end == 0) return {};
    const StreetName street = streetNameBefore(text_, streetEnd);
    if (street.start < 0 || street.evidence != StreetEvidence::typed) return {};
    return {street.start, end};
  }

  /// The Old Rectory, Church Lane, Little Snoring, Norfolk NR21 0JP: the postcode starts at `i`.
  Span namedHouse(qsizetype i, qsizetype postcodeEnd) {
    qsizetype end = i;
    for (int segments = 0; segments < 5 && end > 0; ++segments) {
      while (end > 0 && i - end < 160 && (isSpace(text_[end - 1].unicode()) || text_[end - 1] == u',')) --end;
      const qsizetype start = segmentStart(text_, end);
      if (start >= end) return {};
      if (isNamedStreet(start, end)) return {withHouseName(start), postcodeEnd};
      if (!isPlaceName(start, end)) return {};
      end = start;
    }
    return {};
  }

  [[nodiscard]] bool isPlaceName(qsizetype start, qsizetype end) const {
    int words = 0;
    qsizetype at = start;
    while (at < end && words < 6) {
      const AddressWord word = readAddressWord(text_, at);
      if (word.isEmpty() || (!word.isCapitalised() && !tables::particles().contains(word.text))) return false;
      ++words;
      at = word.end;
      while (at < end && isBlank(text_[at].unicode())) ++at;
    }
    return words > 0 && at >= end;
  }

  [[nodiscard]] bool isNamedStreet(qsizetype start, qsizetype end) const {
    if (!isPlaceName(start, end)) return false;
    qsizetype last = end;
    while (last > start && !isBlank(text_[last - 1].unicode())) --last;
    return last > start && tables::englishStreetTypes().contains(readAddressWord(text_, last).text);
  }

  qsizetype withHouseName(qsizetype start) const {
    qsizetype end = start;
    while (end > 0 && start - end < 4 && (isSpace(text_[end - 1].unicode()) || text_[end - 1] == u',')) --end;
    const qsizetype house = segmentStart(text_, end);
    if (end == start || house >= end || !isPlaceName(house, end)) return start;
    qsizetype last = end;
    while (last > house && !isBlank(text_[last - 1].unicode())) --last;
    return tables::houseWords().contains(readAddressWord(text_, last).text) ? house : start;
  }

  /// `start`, or the start of the "Suite 5, Level 2," before it.
  qsizetype withLeadingUnits(qsizetype start) const {
    for (int units = 0; units < 3; ++units) {
      const qsizetype unit = withLeadingUnit(start);
      if (unit == start) break;
      start = unit;
    }
    return start;
  }

  qsizetype withLeadingUnit(qsizetype start) const {
    qsizetype end = start;
    while (end > 0 && start - end < 4 && (isSpace(text_[end - 1].unicode()) || text_[end - 1] == u',')) --end;
    if (end == start) return start;
    // The unit is the last one to three words before the number.
    qsizetype at = end;
    for (int words = 0; words < 3 && at > 0; ++words) {
      while (at > 0 && end - at < 24 && isBlank(text_[at - 1].unicode())) --at;
      while (at > 0 && end - at < 24 && !isSpace(text_[at - 1].unicode()) && text_[at - 1] != u',') --at;
      const qsizetype unit = unitEnd(text_, at);
      if (unit == end) return at;
    }
    return start;
  }

  qsizetype take(Span found, qsizetype otherwise) {
    if (found.end == 0) return otherwise;
    if (found.start < floor_) found.start = floor_;
    if (found.end <= found.start || !isCharacterBoundary(text_, found.start) ||
        !isCharacterBoundary(text_, found.end)) {
      return otherwise;
    }
    floor_ = found.end;
    matches_.push_back({found.start, found.end - found.start});
    return std::max(found.end, otherwise);
  }

  QStringView text_;
  size_t mostMatches_;
  std::vector<AddressMatch> matches_;
  qsizetype floor_ = 0;
  int looks_ = 0;
};

}  // namespace

std::vector<AddressMatch> addresses(QStringView text) {
  return AddressScanner(text, 1000).run();
}

bool hasAddress(QStringView text) {
  return !AddressScanner(text, 1).run().empty();
}

}  // namespace lumeno::detect
