#include "suggest/detect/phone_groups.h"

#include <algorithm>
#include <array>

#include "suggest/detect/step_counter.h"
#include "suggest/detect/token_scan.h"

namespace lumeno::detect {

namespace {

using namespace scan;

bool isDash(char16_t c) {
  return c == u'-' || (c >= 0x2010 && c <= 0x2015) || c == 0x2212 || c == 0xFF0D || c == 0x30FC;
}
bool isOpenBracket(char16_t c) {
  return c == u'(' || c == 0xFF08;
}
bool isCloseBracket(char16_t c) {
  return c == u')' || c == 0xFF09;
}

/// At most this much punctuation stands between two groups of one number (") - ").
constexpr qsizetype longestGap = 4;
constexpr size_t mostGroupsOfStretch = 1024;

/// Reads the punctuation at `i`; returns where it ends and says what kind it is. A gap that is too long or no
/// phone punctuation ends the stretch (the returned end is `i`).
struct Gap {
  qsizetype end = 0;
  char16_t separator = 0;
  bool blank = false;
  bool opens = false;
  bool plus = false;
};

Gap readGap(QStringView text, qsizetype i) {
  Gap gap;
  qsizetype at = i;
  int blanks = 0;
  for (; at < text.size() && at - i <= longestGap; ++at) {
    const char16_t c = text[at].unicode();
    if (isPhoneDigit(c)) break;
    if (isBlank(c) && c != u'\t') {
      gap.blank = true;
      if (++blanks > 2) return {i, 0, false, false, false};
      if (gap.separator == 0) gap.separator = u' ';
    } else if (isDash(c)) {
      // "12:00 -0800" is an offset of a time zone, no gap within a number.
      if (at > i && isBlank(unitAt(text, at - 1)) && isPhoneDigit(unitAt(text, at + 1))) {
        return {i, 0, false, false, false};
      }
      gap.separator = u'-';
    } else if (c == u'.' || c == u'/' || c == 0xFF0E || c == 0xFF0F) {
      gap.separator = c == u'/' || c == 0xFF0F ? u'/' : u'.';
    } else if (isOpenBracket(c)) {
      gap.opens = true;
    } else if (isPhonePlus(c)) {
      gap.plus = true;
    } else if (!isCloseBracket(c)) {
      return {i, 0, false, false, false};
    }
  }
  if (at >= text.size() || !isPhoneDigit(text[at].unicode())) return {i, 0, false, false, false};
  gap.end = at;
  return gap;
}

int valueOf(QStringView text, const DigitGroup& group) {
  int value = 0;
  for (qsizetype i = group.start; i < std::min(group.end, group.start + 6); ++i) {
    value = value * 10 + phoneDigitValue(text[i].unicode());
  }
  return value;
}

bool isYear(int value) {
  return value >= 1800 && value <= 2199;
}

bool isDate(QStringView text, GroupSpan span) {
  if (span.count() < 3) return false;
  const DigitGroup& a = span.first[0];
  const DigitGroup& b = span.first[1];
  const DigitGroup& c = span.first[2];
  if (b.separator == u' ' || b.separator == 0 || b.separator != c.separator) return false;
  if (a.bracketed || b.bracketed || a.afterPlus) return false;
  const int x = valueOf(text, a);
  const int y = valueOf(text, b);
  const int z = valueOf(text, c);
  if (a.size() == 4 && b.size() <= 2 && c.size() <= 2)
    return isYear(x) && y >= 1 && y <= 12 && z >= 1 && z <= 31;
  const bool dayAndMonth =
      a.size() <= 2 && b.size() <= 2 && x >= 1 && y >= 1 && ((x <= 31 && y <= 12) || (x <= 12 && y <= 31));
  if (!dayAndMonth) return false;
  const bool fourthInWord = span.count() > 3 && !span.first[3].opensWord;
  return (c.size() == 4 && isYear(z)) || (c.size() == 2 && !fourthInWord);
}

bool isAddressOfHost(QStringView text, GroupSpan span) {
  if (span.count() < 4) return false;
  bool allPairs = true;
  for (qsizetype i = 0; i < 4; ++i) {
    const DigitGroup& group = span.first[i];
    if (i > 0 && group.separator != u'.') return false;
    if (group.size() > 3 || valueOf(text, group) > 255) return false;
    allPairs = allPairs && group.size() == 2;
  }
  return !allPairs && (span.count() == 4 || span.first[4].opensWord || span.first[4].separator != u'.');
}

/// 3.14159, 1.234.567, 12 345 678, 1-2-3
bool isDecimalOrGrouped(QStringView text, GroupSpan span) {
  const DigitGroup& first = span.first[0];
  if (first.afterPlus || first.bracketed || span.count() < 2) return false;
  const char16_t separator = span.first[1].separator;
  const bool same = std::all_of(span.first + 1, span.last + 1, [&](const DigitGroup& g) {
    return g.separator == separator && !g.bracketed;
  });
  if (!same) return false;
  const bool leadingZero = text[first.start] == u'0' && first.size() >= 3;
  if (span.count() == 2 && separator == u'.' && !leadingZero) return true;
  if (separator != u'.' && separator != u' ') return false;
  const bool threes =
      std::all_of(span.first + 1, span.last + 1, [](const DigitGroup& g) { return g.size() == 3; });
  const qsizetype longestHead = separator == u'.' ? 3 : 2;
  return threes && first.size() <= longestHead &&
         !(leadingZero || (first.size() > 1 && text[first.start] == u'0'));
}

bool isCard(GroupSpan span) {
  if (span.first->afterPlus) return false;
  qsizetype fours = 0;
  for (const DigitGroup* group = span.first; group <= span.last && group->size() == 4; ++group) ++fours;
  if (fours >= 4) return true;
  // American Express: 4-6-5
  return span.count() == 3 && span.first[0].size() == 4 && span.first[1].size() == 6 &&
         span.first[2].size() == 5;
}

bool isBookNumber(QStringView text, GroupSpan span) {
  if (span.first->afterPlus) return false;
  qsizetype digits = 0;
  for (const DigitGroup* group = span.first; group <= span.last; ++group) digits += group->size();
  if (digits == 13 && span.first->size() >= 3) {
    const int head = valueOf(text, {span.first->start, span.first->start + 3, 0, false, false, false});
    if (head == 978 || head == 979) return true;
  }
  return span.count() == 4 && span.first->size() == 1 && span.last->size() == 1 && digits == 10;
}

/// 2016-2021, 2016 2017
bool isYears(QStringView text, GroupSpan span) {
  if (span.count() < 2 || span.first->afterPlus) return false;
  return std::all_of(span.first, span.first + 2,
                     [&](const DigitGroup& g) { return g.size() == 4 && isYear(valueOf(text, g)); });
}

/// MA 02110-1301
bool isZipCode(QStringView text, GroupSpan span) {
  if (span.count() < 2 || span.first[0].size() != 5 || span.first[1].size() != 4 ||
      span.first[1].separator != u'-') {
    return false;
  }
  qsizetype i = span.first->start;
  while (i > 0 && span.first->start - i < 8 && isSpace(text[i - 1].unicode())) --i;
  return isAsciiUpper(unitAt(text, i - 1)) && isAsciiUpper(unitAt(text, i - 2)) &&
         !isWordCharacter(codePointBefore(text, i - 2));
}

/// 1 2 3 4 5
bool isCount(GroupSpan span) {
  const auto single = [](const DigitGroup& group) { return group.size() == 1; };
  return !span.first->afterPlus && std::count_if(span.first, span.last + 1, single) > 3;
}

}  // namespace

bool isPhoneDigit(char16_t c) {
  return isAsciiDigit(c) || (c >= 0xFF10 && c <= 0xFF19);
}

bool isPhonePlus(char16_t c) {
  return c == u'+' || c == 0xFF0B;
}

int phoneDigitValue(char16_t c) {
  return isAsciiDigit(c) ? c - u'0' : c - 0xFF10;
}

void readDigitStretch(QStringView text, qsizetype start, DigitStretch& stretch) {
  stretch.groups.clear();
  qsizetype i = start;
  Gap gap = readGap(text, start);
  if (isPhoneDigit(unitAt(text, start))) gap = Gap{start, 0, false, false, false};
  while (gap.end > i || (i == start && isPhoneDigit(unitAt(text, i)))) {
    DigitGroup group;
    group.start = gap.end;
    group.end = gap.end;
    while (group.end < text.size() && isPhoneDigit(text[group.end].unicode())) ++group.end;
    group.separator = gap.separator;
    group.afterPlus = gap.plus && isPhonePlus(unitAt(text, group.start - 1));
    const char16_t closer = unitAt(text, group.end);
    const bool opened = isOpenBracket(unitAt(text, group.start - 1)) ||
                        (group.afterPlus && isOpenBracket(unitAt(text, group.start - 2)));
    group.bracketed = opened && isCloseBracket(closer);
    group.opensWord = stretch.groups.empty() || gap.blank || gap.plus || opened;
    stretch.groups.push_back(group);
    i = group.end;
    // A long table is read piece by piece, so that the caller may stop early.
    if (stretch.groups.size() >= mostGroupsOfStretch) break;
    gap = readGap(text, i);
  }
  stretch.end = std::max(i, start + 1);
  countSteps(static_cast<std::uint64_t>(stretch.end - start));
}

bool isGroupedAsInNorthAmerica(QStringView text, GroupSpan span) {
  const bool trunk =
      span.count() > 1 && span.first->size() == 1 && phoneDigitValue(text[span.first->start].unicode()) == 1;
  qsizetype digits = 0;
  for (const DigitGroup* group = span.first + (trunk ? 1 : 0); group <= span.last; ++group) {
    digits += group->size();
    if (digits != 3 && digits != 6 && digits != 10 && !(span.count() == 1 && digits == 11)) return false;
  }
  return digits >= 10;
}

bool isDateInDigits(QStringView text, const DigitGroup& group) {
  if (group.size() != 8) return false;
  const auto part = [&](qsizetype from, qsizetype size) {
    return valueOf(text, {group.start + from, group.start + from + size, 0, false, false, false});
  };
  const int month = part(4, 2);
  const int day = part(6, 2);
  return isYear(part(0, 4)) && month >= 1 && month <= 12 && day >= 1 && day <= 31;
}

bool isStockNumber(QStringView digits) {
  static constexpr std::array<QStringView, 6> numbers{u"2147483647", u"2147483648", u"4294967295",
                                                      u"4294967296", u"0123456789", u"1234567890"};
  return std::find(numbers.begin(), numbers.end(), digits) != numbers.end();
}

bool isOtherNumberShape(QStringView text, GroupSpan span) {
  return isDate(text, span) || isAddressOfHost(text, span) || isDecimalOrGrouped(text, span) ||
         isCard(span) || isBookNumber(text, span) || isCount(span) || isYears(text, span) ||
         isZipCode(text, span);
}

}  // namespace lumeno::detect
