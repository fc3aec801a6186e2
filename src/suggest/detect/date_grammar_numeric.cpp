#include <utility>

#include "suggest/detect/date_grammar.h"

namespace lumeno::detect {

using Kind = DateToken::Kind;
using Gap = DateToken::Gap;
using enum DateRole;

namespace {

constexpr int centuryTurn = 70;  // two digits from here on mean 19xx

int fullYear(int twoDigits) {
  return twoDigits + (twoDigits < centuryTurn ? 2000 : 1900);
}

}  // namespace

// A day in digits only: "2026-11-16", "3/4/2026", "16.11.26", "16.11.", "3/4".
std::optional<NamedDay> DateGrammar::numericDay(std::size_t index) {
  if (isNumber(index, 8, 8)) {
    // ISO's basic form counts only with its time.
    const int digits = at(index).value;
    const bool timeFollows = at(index + 1).gap == Gap::none && isSpelled(index + 1, u"T") &&
                             (gluedNumber(index + 2, 4, 4) || gluedNumber(index + 2, 6, 6));
    if (!timeFollows) return std::nullopt;
    return dated(digits / 10000, digits / 100 % 100, digits % 100, index + 1);
  }
  const char16_t separator = at(index + 1).mark;
  if (separator != u'-' && separator != u'/' && separator != u'.') return std::nullopt;
  if (!gluedMark(index + 1, separator) || !gluedNumber(index + 2, 1, 2)) return std::nullopt;
  const bool third = gluedMark(index + 3, separator) && gluedNumber(index + 4, 1, 4);
  if (isNumber(index, 4, 4)) {
    if (!third || !isNumber(index + 4, 1, 2)) return std::nullopt;
    return dated(at(index).value, at(index + 2).value, at(index + 4).value, index + 5);
  }
  if (!isNumber(index, 1, 2)) return std::nullopt;
  int day = at(index).value;
  int month = at(index + 2).value;
  if (separator != u'.' && habits_.order == DateHabits::Order::monthDay) std::swap(day, month);
  if (month > 12 && separator != u'.') std::swap(day, month);
  if (third) {
    if (isNumber(index + 4, 4, 4)) return dated(at(index + 4).value, month, day, index + 5);
    if (!isNumber(index + 4, 2, 2) || separator == u'-') return std::nullopt;
    // Three short numbers with full stops are a version where people do not write dates that way.
    if (separator == u'.' && !habits_.dots) return std::nullopt;
    return dated(fullYear(at(index + 4).value), month, day, index + 5);
  }
  if (separator == u'-' ||
      (gluedMark(index + 3, separator) && at(index + 4).gap == Gap::none && separator == u'/')) {
    return std::nullopt;
  }
  NamedDay short_;
  if (separator == u'.') {
    if (!gluedMark(index + 3, u'.') || gluedNumber(index + 4, 1, 100)) return std::nullopt;
    short_.end = index + 4;
  } else {
    const bool always = at(index).value == 24 && at(index + 2).value == 7;
    if (always) return std::nullopt;
    short_.end = index + 3;
  }
  if (month < 1 || month > 12) return std::nullopt;
  short_.date = calendar_.nextDayOfYear(month, day);
  if (!short_.date.isValid()) return std::nullopt;
  short_.withoutYear = true;
  short_.needsCompany =
      !before(index, on) && !before(index, from) && !before(index, to) && !before(index, weekday);
  return short_;
}

// Reads a year and moves past it; `wrong` when there is a number in its place that cannot be one.
DateGrammar::Year DateGrammar::year(std::size_t& index, int& year) {
  std::size_t i = index;
  if (nearHas(i, of)) ++i;
  const bool comma = gluedMark(i, u',');
  if (comma) ++i;
  if (at(i).mark == u'\'' || at(i).mark == u'\u2019') {
    if (at(i).gap != Gap::blank || !gluedNumber(i + 1, 2, 2)) return Year::none;
    year = fullYear(at(i + 1).value);
    index = i + 2;
    return Year::read;
  }
  if (at(i).kind != Kind::number || at(i).gap > Gap::blank || (at(i).gap == Gap::none && !comma))
    return Year::none;
  if (at(i).length() > 4) return Year::wrong;
  if (at(i).length() < 4 || gluedMark(i + 1, u':')) return Year::none;
  const bool marked = comma || i > index;
  if (at(i).value < 1000 || (!marked && (at(i).value < 1800 || at(i).value > 2199))) return Year::none;
  year = at(i).value;
  index = i + 1;
  return Year::read;
}

// An impossible date is kept as an invalid one, so that no part of it is taken for another.
NamedDay DateGrammar::dated(int year, int month, int day, std::size_t end) {
  NamedDay named;
  named.date = QDate(year, month, day);
  named.end = end;
  return named;
}

}  // namespace lumeno::detect
