#include "suggest/detect/address_street.h"

#include <algorithm>
#include <array>

#include "suggest/detect/address_tables.h"
#include "suggest/detect/step_counter.h"
#include "suggest/detect/token_scan.h"

namespace lumeno::detect {

namespace {

using namespace Qt::StringLiterals;
using namespace scan;
namespace tables = address_tables;

constexpr int mostStreetWords = 8;
constexpr qsizetype longestSegment = 64;

struct Words {
  std::array<AddressWord, 16> items;
  size_t count = 0;
};

/// The words of [start, end); none when something other than words and blanks is there.
Words wordsOf(QStringView text, qsizetype start, qsizetype end) {
  Words words;
  qsizetype at = start;
  while (at < end && words.count < words.items.size()) {
    const char16_t c = text[at].unicode();
    if (isBlank(c) || c == u'/' || c == u'*') {
      ++at;
      continue;
    }
    const AddressWord word = readAddressWord(text, at);
    if (word.isEmpty()) {
      words.count = 0;
      ++at;
      continue;
    }
    words.items[words.count++] = word;
    at = word.end;
    // A full stop behind a long word ends a sentence, unless it abbreviates a street ("Bahnhofstr.").
    if (word.endsSentence() && !tables::endsLikeStreet(word.text) && !word.isNumber()) words.count = 0;
  }
  if (at < end) words.count = 0;
  return words;
}

bool isName(const AddressWord& word) {
  return word.isCapitalised() || word.isNumber() || tables::particles().contains(word.text);
}

/// Via Roma, Calle de Alcalá, ul. Marszałkowska, Straße des 17. Juni
qsizetype leadingTypeStart(const Words& words) {
  for (size_t i = 0; i < words.count; ++i) {
    const AddressWord& word = words.items[i];
    if (!tables::leadingStreetTypes().contains(word.text)) continue;
    const bool box = word.text.compare("postfach"_L1, Qt::CaseInsensitive) == 0 ||
                     word.text.endsWith("box"_L1, Qt::CaseInsensitive);
    // One letter or two only as an abbreviation (C/, r., al.) or in capitals (BP).
    const bool shortWord = word.text.size() <= 2;
    if (shortWord && !word.dotted && !word.isCapitalised()) continue;
    const size_t rest = words.count - i - 1;
    if (rest > 7 ||
        (rest == 0 && !box && word.text.size() > 2 && !word.text.startsWith("post"_L1, Qt::CaseInsensitive) &&
         !word.text.startsWith("apart"_L1, Qt::CaseInsensitive))) {
      continue;
    }
    if (rest == 0 && !word.isCapitalised()) continue;
    const bool names = std::all_of(words.items.begin() + i + 1, words.items.begin() + words.count, isName);
    if (!names) continue;
    // P.O. Box, GPO Box
    static const WordSet boxPrefixes{u"po p.o gpo"_s};
    const bool prefixed = box && i > 0 && boxPrefixes.contains(words.items[i - 1].text);
    const size_t first = prefixed ? i - 1 : i;
    return words.items[first].start;
  }
  return -1;
}

/// Hauptstraße, Mariahilfer Straße, Karl Johans gate, Alte Schönhauser Straße
qsizetype trailingTypeStart(const Words& words) {
  if (words.count == 0) return -1;
  size_t last = words.count - 1;
  if (last > 0 && tables::directions().contains(words.items[last].text)) --last;
  const AddressWord& word = words.items[last];
  if (tables::trailingStreetTypes().contains(word.text) && last > 0) {
    size_t first = last;
    while (first > 0 && last - first < 4 &&
           (words.items[first - 1].isCapitalised() || words.items[first - 1].isNumber() ||
            (first > 1 && tables::particles().contains(words.items[first - 1].text) &&
             words.items[first - 2].isCapitalised()))) {
      --first;
    }
    if (first == last || !words.items[first].isCapitalised()) return -1;
    return words.items[first].start;
  }
  if (!tables::endsLikeStreet(word.text) || !word.isCapitalised()) return -1;
  const auto belongs = [](const AddressWord& before) {
    // "In der Hauptstraße" begins a sentence as often as a name; "Im Mediapark" is a name.
    static const WordSet contractions{u"im am zum zur beim"_s};
    return before.isCapitalised() && (tables::streetAdjectives().contains(before.text) ||
                                      before.text.endsWith("er"_L1) || contractions.contains(before.text));
  };
  size_t first = last;
  while (first > 0 && last - first < 2 && belongs(words.items[first - 1])) --first;
  return words.items[first].start;
}

/// Am Markt, An der Alster, Unter den Linden
qsizetype prepositionStart(const Words& words) {
  const size_t from = words.count > 4 ? words.count - 4 : 0;
  for (size_t i = from; i + 1 < words.count; ++i) {
    if (!words.items[i].isCapitalised() || !tables::streetPrepositions().contains(words.items[i].text))
      continue;
    const AddressWord& last = words.items[words.count - 1];
    if (!last.isCapitalised() || tables::countedNouns().contains(last.text)) continue;
    const bool names = std::all_of(words.items.begin() + i + 1, words.items.begin() + words.count, isName);
    if (names) return words.items[i].start;
  }
  return -1;
}

bool isPlainName(const Words& words) {
  if (words.count == 0 || words.count > 4 || !words.items[0].isCapitalised()) return false;
  return std::all_of(words.items.begin(), words.items.begin() + words.count, [](const AddressWord& word) {
    return isName(word) && !word.isNumber() && !tables::countedNouns().contains(word.text) &&
           word.text.size() > 1;
  });
}

/// `end` before the "nº" or "No." that ends there, and before the blanks before it.
qsizetype withoutNumberSign(QStringView text, qsizetype end) {
  static const WordSet signs{u"nº n n.º n.o nr no num núm n° numero número"_s};
  qsizetype start = end;
  while (start > 0 && end - start < 8 && !isSpace(text[start - 1].unicode()) && text[start - 1] != u',')
    --start;
  const QStringView word = text.sliced(start, end - start);
  const bool dotted = word.endsWith(u'.');
  if (!signs.contains(dotted ? word.chopped(1) : word)) return end;
  while (start > 0 && end - start < 12 && isBlank(text[start - 1].unicode())) --start;
  return start;
}

}  // namespace

qsizetype unitEnd(QStringView text, qsizetype i) {
  if (unitAt(text, i) == u'#') {
    qsizetype at = i + 1;
    if (isBlank(unitAt(text, at))) ++at;
    const AddressWord word = readAddressWord(text, at);
    return !word.isEmpty() && word.text.size() <= 6 ? word.start + word.text.size() : 0;
  }
  const AddressWord word = readAddressWord(text, i);
  if (word.isEmpty()) return 0;
  const auto following = [&](qsizetype end) {
    return isBlank(unitAt(text, end)) ? readAddressWord(text, end + 1) : AddressWord{};
  };
  if (word.isOrdinal() || word.text.compare("ground"_L1, Qt::CaseInsensitive) == 0 ||
      word.text.compare("first"_L1, Qt::CaseInsensitive) == 0 ||
      word.text.compare("second"_L1, Qt::CaseInsensitive) == 0 ||
      word.text.compare("third"_L1, Qt::CaseInsensitive) == 0 ||
      word.text.compare("top"_L1, Qt::CaseInsensitive) == 0) {
    const AddressWord floor = following(word.end);
    const bool isFloor = floor.text.compare("floor"_L1, Qt::CaseInsensitive) == 0 ||
                         floor.text.compare("fl"_L1, Qt::CaseInsensitive) == 0;
    return isFloor ? floor.start + floor.text.size() : 0;
  }
  if (!tables::unitWords().contains(word.text)) return 0;
  qsizetype at = word.end;
  if (isBlank(unitAt(text, at))) ++at;
  if (unitAt(text, at) == u'#') ++at;
  const AddressWord number = readAddressWord(text, at);
  const bool identifier =
      !number.isEmpty() && number.text.size() <= 6 &&
      (isAsciiDigit(number.text[0].unicode()) || number.text.size() == 1 ||
       (number.text.size() <= 4 && std::any_of(number.text.begin(), number.text.end(),
                                               [](QChar c) { return isAsciiDigit(c.unicode()); })) ||
       tables::numberWords().contains(number.text));
  return identifier ? number.start + number.text.size() : 0;
}

qsizetype englishStreetEnd(QStringView text, qsizetype i) {
  qsizetype best = 0;
  qsizetype at = i;
  bool leading = false;
  bool atBest = false;
  for (int words = 0; words < mostStreetWords; ++words) {
    const AddressWord word = readAddressWord(text, at);
    if (word.isEmpty()) break;
    const bool direction = tables::directions().contains(word.text);
    const bool number = leading && word.isNumber();
    const bool name = word.isCapitalised() || word.isOrdinal() || number ||
                      (words > 0 && tables::particles().contains(word.text)) ||
                      (words == 0 && tables::englishLeadingTypes().contains(word.text));
    if (!name) break;
    if (words == 0 && tables::englishLeadingTypes().contains(word.text)) leading = true;
    const bool type = words > 0 && tables::englishStreetTypes().contains(word.text);
    const bool alone = words <= 1 && tables::englishStreetsWithoutType().contains(word.text);
    if (type || alone || (direction && atBest) ||
        (leading && words > 0 && words < 4 && !tables::particles().contains(word.text))) {
      // A full stop right before the end of the line may end the sentence, but then no locality follows
      // either.
      best = word.end;
      atBest = true;
    } else {
      atBest = false;
    }
    at = word.end;
    if (word.endsSentence() && !type) break;
    if (!isBlank(unitAt(text, at))) break;
    ++at;
    if (isBlank(unitAt(text, at))) ++at;
  }
  if (best == 0) return 0;
  for (int units = 0; units < 3; ++units) {
    const AddressGap gap = readAddressGap(text, best);
    if (gap.kind == Separator::none) break;
    const qsizetype unit = unitEnd(text, gap.end);
    if (unit == 0) break;
    best = unit;
  }
  return best;
}

bool startsFrenchStreet(QStringView text, qsizetype i) {
  const AddressWord word = readAddressWord(text, i);
  if (!tables::frenchStreetTypes().contains(word.text)) return false;
  if (!isBlank(unitAt(text, word.end))) return false;
  // "12 rue et 3 avenues" counts streets.
  static const WordSet conjunctions{u"et ou and or und y e"_s};
  return !conjunctions.contains(readAddressWord(text, word.end + 1).text);
}

qsizetype segmentStart(QStringView text, qsizetype end) {
  const auto isBound = [&](qsizetype i) {
    const char16_t c = text[i].unicode();
    if (isAsciiLetter(c) || c == u' ') return false;
    constexpr QStringView bounds = u",;:()[]{}<>\"|\t!?•·„“”»«";
    if (isLineBreak(c) || bounds.contains(QChar(c))) return true;
    return (c == u'-' || c == 0x2013 || c == 0x2014) && isBlank(unitAt(text, i - 1)) &&
           isBlank(unitAt(text, i + 1));
  };
  qsizetype start = end;
  while (start > 0 && end - start < longestSegment && !isBound(start - 1)) --start;
  countSteps(static_cast<std::uint64_t>(end - start));
  // A segment that is too long is read from its next word on.
  if (start > 0 && end - start >= longestSegment) {
    while (start < end && !isBlank(text[start].unicode())) ++start;
  }
  while (start < end && isBlank(text[start].unicode())) ++start;
  return start;
}

StreetName streetNameBefore(QStringView text, qsizetype numberStart) {
  qsizetype end = numberStart;
  while (end > 0 && numberStart - end < 3 && isBlank(text[end - 1].unicode())) --end;
  // "Calle Mayor nº 5", "Via Roma, n. 5"
  end = withoutNumberSign(text, end);
  // "Calle Mayor, 12"
  const bool comma = unitAt(text, end - 1) == u',' && end < numberStart;
  if (comma) --end;
  const qsizetype start = segmentStart(text, end);
  const Words words = wordsOf(text, start, end);
  if (words.count == 0) return {};
  if (const qsizetype at = leadingTypeStart(words); at >= 0) return {at, StreetEvidence::typed};
  if (comma) return {};
  if (const qsizetype at = trailingTypeStart(words); at >= 0) return {at, StreetEvidence::typed};
  if (const qsizetype at = prepositionStart(words); at >= 0) return {at, StreetEvidence::typed};
  if (isPlainName(words)) return {words.items[0].start, StreetEvidence::named};
  return {};
}

}  // namespace lumeno::detect
