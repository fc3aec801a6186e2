#include "suggest/detect/date_grammar.h"

namespace lumeno::detect {

using Kind = DateToken::Kind;
using Gap = DateToken::Gap;
using enum DateRole;

std::optional<NamedDay> DateGrammar::daySpan(std::size_t index) {
  auto first = day(index);
  if (!first || first->offsetSeconds || first->partHour || first->last) return first;
  const auto sign = rangeSign(first->end, index);
  if (!sign) return first;
  std::size_t i = *sign;
  if (nearHas(i, on)) ++i;
  if (!near(i)) return first;
  const auto second = plainDay(i);
  if (!second || second->offsetSeconds || second->keepsTimeOfDay || second->last) return first;
  NamedDay span = *first;
  return joinRange(span, *second) ? span : first;
}

// Makes `first` a range up to `second`; false when the second comes before it.
bool DateGrammar::joinRange(NamedDay& first, const NamedDay& second) {
  QDate begin = first.date;
  QDate last = second.date;
  if (!begin.isValid() || !last.isValid()) return false;
  if (first.withoutYear && !second.withoutYear && !second.weekdayAlone) {
    begin = QDate(last.year(), begin.month(), begin.day());
    if (begin.isValid() && begin > last) begin = QDate(last.year() - 1, begin.month(), begin.day());
    if (!begin.isValid()) return false;
  } else if (second.withoutYear) {
    last = QDate(begin.year(), last.month(), last.day());
    if (last.isValid() && last < begin) last = QDate(begin.year() + 1, last.month(), last.day());
  } else if (second.weekdayAlone) {
    last = begin.addDays((last.dayOfWeek() - begin.dayOfWeek() + 6) % 7 + 1);
  }
  if (!last.isValid() || last < begin) return false;
  first.date = begin;
  first.last = last;
  first.end = second.end;
  first.withoutYear = first.withoutYear && second.withoutYear;
  // "Mon–Fri" is plain enough; "1/2 - 3/4" and "Do-So" are not.
  first.needsCompany =
      first.needsCompany && second.needsCompany && (first.needsFirmCompany || !first.weekdayAlone);
  return true;
}

std::optional<NamedDay> DateGrammar::day(std::size_t index) {
  auto named = plainDay(index);
  if (!named || named->offsetSeconds) return named;
  withDayPart(*named);
  // "today in a week"
  if ((named->weekdayAlone || named->today) && nearHas(named->end, in) && near(named->end + 1)) {
    const auto later = amount(named->end + 1);
    if (later && (later->unit == DateUnit::day || later->unit == DateUnit::week)) {
      named->date = named->date.addDays(later->count * (later->unit == DateUnit::week ? 7 : 1));
      named->weekdayAlone = named->today = false;
      named->end = later->end;
    }
  }
  return named;
}

void DateGrammar::withDayPart(NamedDay& day) {
  if (day.partHour || !near(day.end)) return;
  if (has(day.end, dayPart)) {
    day.partHour = value(day.end, dayPart);
  } else if (has(day.end, clockPart)) {
    day.partHour = value(day.end, clockPart);
  } else {
    return;
  }
  day.needsCompany = day.needsFirmCompany = false;
  ++day.end;
}

std::optional<NamedDay> DateGrammar::plainDay(std::size_t index) {
  if (at(index).kind == Kind::number) {
    // What follows rules out most numbers at once.
    constexpr std::uint64_t following = roleMask(month, of, ordinalSuffix, unit, to, andWord);
    const DateToken& token = at(index + 1);
    const bool ordinalOrRange = token.kind == Kind::mark || hasAny(index + 1, following);
    const bool basicIso = token.gap == Gap::none && token.kind == Kind::other;
    if (!ordinalOrRange && !basicIso) return std::nullopt;
  } else if (!at(index).entry) {
    return std::nullopt;
  }
  if (auto absolute = absoluteDay(index)) return absolute;
  if (auto counted = amountFirst(index)) return counted;
  if (at(index).kind == Kind::number) return dayOfMonth(index, 0);
  if (auto named = weekdayFirst(index)) return named;
  if (auto modified = modifiedFirst(index)) return modified;
  if (auto unit = unitFirst(index)) return unit;
  if (auto edge = edgeFirst(index)) return edge;
  NamedDay named;
  named.end = index + 1;
  if (has(index, relativeDay)) {
    named.date = calendar_.today().addDays(value(index, relativeDay));
    named.today = value(index, relativeDay) == 0;
    return named;
  }
  if (has(index, todayPart)) {
    named.date = calendar_.today();
    named.partHour = value(index, todayPart);
    named.today = true;
    return named;
  }
  return std::nullopt;
}

std::optional<NamedDay> DateGrammar::absoluteDay(std::size_t index) {
  if (at(index).kind == Kind::number) {
    if (auto numeric = numericDay(index)) return numeric;
  }
  if (has(index, month)) return monthFirst(index);
  return dayFirst(index);
}

// Whether a month's name is meant as one: "may" in lower case needs something that confirms it.
bool DateGrammar::trustedMonth(std::size_t index, bool confirmed) {
  return trust(index, month) == DateWordTrust::full || at(index).capital || confirmed;
}

// "June 3", "Nov. 16th, 2026", "June 3–5", "November 2026"
std::optional<NamedDay> DateGrammar::monthFirst(std::size_t index) {
  const int monthNumber = value(index, month);
  std::size_t i = index + 1;
  if (gluedMark(i, u'.') && at(index).length() <= 5) ++i;
  if (nearHas(i, of) && isNumber(i + 1, 4, 4)) ++i;
  const DateToken& token = at(i);
  if (token.kind != Kind::number || token.gap != Gap::blank) return std::nullopt;
  if (token.length() == 4) {
    int yearNumber = 0;
    if (year(i, yearNumber) != Year::read || !trustedMonth(index, false)) return std::nullopt;
    if (at(i).gap == Gap::none && (at(i).kind == Kind::number || at(i).kind == Kind::other))
      return std::nullopt;
    return dated(yearNumber, monthNumber, 1, i);
  }
  const auto isDay = [this](std::size_t at_, const std::optional<DayNumber>& number) {
    // Not "Nov 3pm", "Nov 12:30", "March 5.5".
    return number && !inDecimal(at_) && !gluedMark(number->end, u':') && !nearHas(number->end, meridiem) &&
           !gluedMark(number->end, u'%') && !(gluedMark(number->end, u'/')) &&
           (at(number->end).gap != Gap::none || at(number->end).kind > Kind::other ||
            at(number->end).kind == Kind::end);
  };
  const bool commaYear = gluedMark(i + 1, u',') && gluedNumber(i + 2, 4, 4);
  const auto number = dayNumber(i);
  if (!number || (!isDay(i, number) && !(commaYear && number->end == i + 1))) return std::nullopt;
  i = number->end;
  int lastDay = 0;
  if (const auto sign = rangeSign(i, index); sign && isNumber(*sign, 1, 2) && near(*sign)) {
    const auto second = dayNumber(*sign);
    if (isDay(*sign, second) && second->day > number->day && !nearHas(second->end, month) &&
        !nearHas(second->end, of)) {
      lastDay = second->day;
      i = second->end;
    }
  }
  int yearNumber = 0;
  const Year read = year(i, yearNumber);
  if (read == Year::wrong) return std::nullopt;
  const bool confirmed = read == Year::read || number->ordinal || before(index, on) || before(index, from) ||
                         before(index, to) || before(index, weekday);
  if (!trustedMonth(index, confirmed)) return std::nullopt;
  NamedDay named;
  named.end = i;
  named.withoutYear = read != Year::read;
  named.date = named.withoutYear ? calendar_.nextDayOfYear(monthNumber, number->day)
                                 : QDate(yearNumber, monthNumber, number->day);
  withLastDay(named, lastDay);
  return named;
}

// Up to a later day of the same month, if there is one.
void DateGrammar::withLastDay(NamedDay& day, int lastDay) {
  if (lastDay == 0 || !day.date.isValid()) return;
  const QDate last(day.date.year(), day.date.month(), lastDay);
  if (last.isValid()) {
    day.last = last;
  } else {
    day.date = {};
  }
}

std::optional<DateGrammar::DayNumber> DateGrammar::dayNumber(std::size_t index) {
  DayNumber number;
  number.end = index + 1;
  if (isNumber(index, 1, 2)) {
    number.day = at(index).value;
    if (at(index + 1).gap == Gap::none && has(index + 1, ordinalSuffix)) {
      number.ordinal = true;
      ++number.end;
    }
  } else if (has(index, ordinal)) {
    number.day = value(index, ordinal);
    number.ordinal = true;
  }
  if (number.day < 1 || number.day > 31) return std::nullopt;
  return number;
}

// "16 November 2026", "16. November", "5th of June", "12.–14. März", "16-Nov-2026"
std::optional<NamedDay> DateGrammar::dayFirst(std::size_t index) {
  const auto first = dayNumber(index);
  if (!first) return std::nullopt;
  bool confirmed = first->ordinal;
  std::size_t i = first->end;
  const auto skipStop = [&] {
    if (at(i - 1).kind == Kind::number && gluedMark(i, u'.') && at(i + 1).kind != Kind::number) ++i;
  };
  skipStop();
  int lastDay = 0;
  if (const auto sign = rangeSign(i, index); sign && at(*sign).kind == Kind::number && near(*sign)) {
    const auto second = dayNumber(*sign);
    if (!second || second->day <= first->day) return std::nullopt;
    lastDay = second->day;
    i = second->end;
    skipStop();
  }
  const bool dashed = lastDay == 0 && gluedMark(i, u'-') && at(i + 1).gap == Gap::none;
  if (dashed) {
    ++i;
  } else if (nearHas(i, of)) {
    ++i;
    confirmed = true;
    if (nearHas(i, article)) ++i;
  }
  if (!near(i) || !has(i, month)) return std::nullopt;
  if (at(i).gap == Gap::none && !dashed && at(i - 1).mark == 0 && !has(i - 1, of)) return std::nullopt;
  const std::size_t monthIndex = i;
  const int monthNumber = value(i, month);
  ++i;
  int yearNumber = 0;
  Year read = Year::none;
  if (dashed && gluedMark(i, u'-') && gluedNumber(i + 1, 4, 4)) {
    yearNumber = at(i + 1).value;
    read = Year::read;
    i += 2;
  } else {
    std::size_t afterStop = i;
    if (gluedMark(i, u'.') && at(monthIndex).length() <= 5) ++afterStop;
    read = year(afterStop, yearNumber);
    if (read == Year::read) i = afterStop;
  }
  if (read == Year::wrong || !trustedMonth(monthIndex, confirmed || read == Year::read)) return std::nullopt;
  NamedDay named;
  named.end = i;
  named.withoutYear = read != Year::read;
  named.date = named.withoutYear ? calendar_.nextDayOfYear(monthNumber, first->day)
                                 : QDate(yearNumber, monthNumber, first->day);
  withLastDay(named, lastDay);
  return named;
}

// A day without its month: "on the 16th", and beside a weekday that agrees with it "Friday the 13th", "lundi
// 16".
std::optional<NamedDay> DateGrammar::dayOfMonth(std::size_t index, int weekday) {
  if (!isNumber(index, 1, 2)) return std::nullopt;
  const auto number = dayNumber(index);
  if (!number || inDecimal(index) || !mayFollowHour(number->end)) return std::nullopt;
  NamedDay named;
  named.end = number->end;
  if (weekday == 0) {
    const bool introduced = before(index, article) && index > 1 && near(index - 1) && has(index - 2, on);
    if (!number->ordinal || !introduced) return std::nullopt;
    named.date = calendar_.nextDayOfMonth(number->day);
    return named;
  }
  const QDate thisMonth(calendar_.today().year(), calendar_.today().month(), 1);
  const int months = number->ordinal ? 28 * 12 : 2;
  for (int i = 0; i < months; ++i) {
    const QDate month = thisMonth.addMonths(i);
    const QDate date(month.year(), month.month(), number->day);
    if (!date.isValid() || date < calendar_.today() || date.dayOfWeek() != weekday) continue;
    named.date = date;
    return named;
  }
  return std::nullopt;
}

}  // namespace lumeno::detect
