#include "suggest/detect/date_grammar.h"

namespace lumeno::detect {

using Kind = DateToken::Kind;
using Gap = DateToken::Gap;
using enum DateRole;

std::optional<NamedDay> DateGrammar::weekdayFirst(std::size_t index) {
  NamedDay named;
  named.end = index + 1;
  if (has(index, weekdayPart)) {
    named.date = calendar_.comingWeekday(value(index, weekdayPart) / 100);
    named.partHour = value(index, weekdayPart) % 100;
    named.weekdayAlone = true;
  } else if (!has(index, weekday)) {
    return std::nullopt;
  }
  const int number = named.partHour ? value(index, weekdayPart) / 100 : value(index, weekday);
  const bool short_ = !named.partHour && trust(index, weekday) == DateWordTrust::abbreviation;
  if (short_ && !at(index).capital && at(index).length() < 3) return std::nullopt;
  std::size_t i = named.end;
  if (short_ && gluedMark(i, u'.')) ++i;
  // With the date itself, which decides.
  std::size_t k = i;
  if (nearMark(k, u',')) ++k;
  for (int words = 0; words < 2 && (nearHas(k, on) || nearHas(k, article)); ++words) ++k;
  if (near(k) && at(k).start > at(index).end) {
    if (auto absolute = absoluteDay(k)) {
      absolute->needsCompany = absolute->needsFirmCompany = false;
      // A weekday that fits the last such day and not the next tells which is meant.
      const QDate before = absolute->date.addYears(-1);
      if (absolute->withoutYear && !absolute->last && absolute->date.dayOfWeek() != number &&
          before.dayOfWeek() == number) {
        absolute->date = before;
      }
      return absolute;
    }
    if (auto ofMonth = dayOfMonth(k, number)) return ofMonth;
  }
  const QDate monday = calendar_.monday();
  if (nearHas(i, nextAfter)) {
    named.date = monday.addDays(7 + number - 1);
    named.end = i + 1;
    return named;
  }
  if (nearHas(i, lastAfter)) {
    named.date = calendar_.lastWeekday(number);
    named.end = i + 1;
    return named;
  }
  int weeks = 0;
  if (const auto end = nextWeek(i, weeks)) {
    named.date = monday.addDays(7 * weeks + number - 1);
    named.end = *end;
    return named;
  }
  named.date = calendar_.comingWeekday(number);
  named.weekdayAlone = true;
  if (short_) {
    const bool introduced = at(index).capital && at(index).length() >= 3 && before(index, on);
    named.needsCompany = !introduced;
    named.needsFirmCompany = words_->locale != QLocale::English;
    if (gluedMark(named.end, u'.') && at(i).gap == Gap::blank && at(i).kind == Kind::number) named.end = i;
  }
  return named;
}

// "next week", "of this week", "de la semaine prochaine", after a weekday.
std::optional<std::size_t> DateGrammar::nextWeek(std::size_t index, int& weeks) {
  std::size_t i = index;
  for (int words = 0; words < 2 && (nearHas(i, of) || nearHas(i, article)); ++words) ++i;
  const auto isWeek = [this](std::size_t at_) {
    return nearHas(at_, unit) && value(at_, unit) == static_cast<int>(DateUnit::week);
  };
  if ((nearHas(i, next) || nearHas(i, thisOne) || nearHas(i, coming)) && isWeek(i + 1)) {
    weeks = has(i, thisOne) ? 0 : 1;
    return i + 2;
  }
  if (isWeek(i) && nearHas(i + 1, nextAfter)) {
    weeks = 1;
    return i + 2;
  }
  return std::nullopt;
}

// "next Thursday", "last week", "this evening", "next June"
std::optional<NamedDay> DateGrammar::modifiedFirst(std::size_t index) {
  const bool isThis = has(index, thisOne);
  const bool isNext = has(index, next);
  const bool isComing = has(index, coming);
  const bool isLast = has(index, last);
  if ((!isThis && !isNext && !isComing && !isLast) || !near(index + 1)) return std::nullopt;
  const std::size_t noun = index + 1;
  const QDate today = calendar_.today();
  const QDate monday = calendar_.monday();
  NamedDay named;
  named.end = noun + 1;
  if (has(noun, weekday) || has(noun, weekdayPart)) {
    if (has(noun, weekday) && trust(noun, weekday) == DateWordTrust::abbreviation && at(noun).length() < 3) {
      return std::nullopt;
    }
    // A common word in the place of an abbreviation: "last sat down", "this sun".
    if (has(noun, weekday) && trust(noun, weekday) == DateWordTrust::abbreviation && !at(noun).capital) {
      return std::nullopt;
    }
    // "next Friday, 13 November": the date decides.
    if (auto dated = weekdayFirst(noun); dated && !dated->weekdayAlone && dated->end > noun + 2) {
      if (dated->withoutYear && !isLast && dated->date < today) dated->date = dated->date.addYears(1);
      return dated;
    }
    const int number = has(noun, weekday) ? value(noun, weekday) : value(noun, weekdayPart) / 100;
    if (has(noun, weekdayPart)) named.partHour = value(noun, weekdayPart) % 100;
    if (isNext) {
      named.date = monday.addDays(7 + number - 1);
    } else if (isLast) {
      named.date = calendar_.lastWeekday(number);
    } else {
      named.date = calendar_.comingWeekday(number);
      named.weekdayAlone = true;
    }
    return named;
  }
  if (has(noun, month) && trustedMonth(noun, false) && at(noun + 1).kind != Kind::number) {
    QDate first(today.year(), value(noun, month), 1);
    if (isLast) {
      if (first >= QDate(today.year(), today.month(), 1)) first = first.addYears(-1);
    } else if (first <= today) {
      first = first.addYears(1);
    }
    named.date = first;
    return named;
  }
  if (has(noun, dayPart) && (isThis || isLast)) {
    named.date = today.addDays(isLast ? -1 : 0);
    named.partHour = value(noun, dayPart);
    named.today = isThis;
    return named;
  }
  if (has(noun, weekend)) {
    named.date = monday.addDays(5 + (isNext ? 7 : isLast ? -7 : 0));
    return named;
  }
  if (!has(noun, unit) || isThis) return std::nullopt;
  const auto span = static_cast<DateUnit>(value(noun, unit));
  named.date = calendar_.beginOf(span, isLast ? -1 : 1);
  if (!named.date.isValid()) return std::nullopt;
  if (span == DateUnit::week) {
    // "next week on Thursday"
    std::size_t i = named.end;
    if (nearMark(i, u',')) ++i;
    while (i < named.end + 2 && nearHas(i, on)) ++i;
    if (near(i) && has(i, weekday) && trust(i, weekday) != DateWordTrust::abbreviation) {
      named.date = named.date.addDays(value(i, weekday) - 1);
      named.end = i + 1;
    }
  }
  return named;
}

// "semaine prochaine", "semana que viene", "mois dernier", "week-end prochain"
std::optional<NamedDay> DateGrammar::unitFirst(std::size_t index) {
  const bool isWeekend = has(index, weekend);
  if (!isWeekend && !has(index, unit)) return std::nullopt;
  const bool isNext = nearHas(index + 1, nextAfter);
  if (!isNext && !nearHas(index + 1, lastAfter)) return std::nullopt;
  const QDate monday = calendar_.monday();
  const int direction = isNext ? 1 : -1;
  NamedDay named;
  named.end = index + 2;
  if (isWeekend) {
    named.date = monday.addDays(5 + 7 * direction);
    return named;
  }
  named.date = calendar_.beginOf(static_cast<DateUnit>(value(index, unit)), direction);
  if (!named.date.isValid()) return std::nullopt;
  return named;
}

// "in two weeks", "2 hours ago", "vor drei Tagen", "a week from Friday"
std::optional<NamedDay> DateGrammar::amountFirst(std::size_t index) {
  if (has(index, in) || has(index, agoBefore)) {
    if (!near(index + 1)) return std::nullopt;
    const auto span = amount(index + 1);
    if (!span) return std::nullopt;
    const bool idiom = at(index + 1).kind == Kind::word && span->count == 1 && span->unit <= DateUnit::minute;
    if (idiom || nearHas(span->end, of)) return std::nullopt;
    return fromNow(*span, has(index, in) ? 1 : -1);
  }
  const auto span = amount(index);
  if (!span) return std::nullopt;
  if (nearHas(span->end, agoAfter) || nearHas(span->end, DateRole::fromNow)) {
    NamedDay named = fromNow(*span, has(span->end, agoAfter) ? -1 : 1);
    ++named.end;
    return named;
  }
  if (span->unit < DateUnit::day || span->unit > DateUnit::week || !nearHas(span->end, from))
    return std::nullopt;
  const std::size_t base = span->end + 1;
  NamedDay named;
  if (nearHas(base, relativeDay)) {
    named.date = calendar_.today().addDays(value(base, relativeDay));
  } else if (nearHas(base, weekday) && trust(base, weekday) != DateWordTrust::abbreviation) {
    named.date = calendar_.comingWeekday(value(base, weekday));
  } else {
    return std::nullopt;
  }
  named.date = named.date.addDays(span->count * (span->unit == DateUnit::week ? 7 : 1));
  named.end = base + 1;
  return named;
}

std::optional<DateGrammar::Amount> DateGrammar::amount(std::size_t index) {
  Amount read;
  std::size_t i = index + 1;
  bool andHalf = false;
  if (isNumber(index, 1, 3) && gluedMark(i, u'.') && gluedNumber(i + 1, 1, 1) && at(i + 1).value == 5) {
    read.count = at(index).value;
    andHalf = true;
    i += 2;
  } else if (isNumber(index, 1, 3) && !inDecimal(index)) {
    read.count = at(index).value;
  } else if (has(index, halfUnit)) {
    andHalf = true;
  } else if (has(index, number)) {
    read.count = value(index, number);
  } else {
    return std::nullopt;
  }
  if (!near(i) || !has(i, unit)) return std::nullopt;
  read.unit = static_cast<DateUnit>(value(i, unit));
  read.end = i + 1;
  // "an hour and a half"
  if ((nearHas(i + 1, andWord) || nearHas(i + 1, plus)) && !andHalf) {
    std::size_t k = i + 2;
    if (nearHas(k, number) && value(k, number) == 1) ++k;
    if (nearHas(k, half)) {
      andHalf = true;
      read.end = k + 1;
    }
  }
  if (andHalf) {
    if (read.unit != DateUnit::hour) return std::nullopt;
    read.unit = DateUnit::minute;
    read.count = read.count * 60 + 30;
  }
  return read;
}

NamedDay DateGrammar::fromNow(const Amount& amount, int direction) {
  NamedDay named;
  named.end = amount.end;
  const int count = amount.count * direction;
  const QDate today = calendar_.today();
  named.keepsTimeOfDay = true;
  switch (amount.unit) {
    case DateUnit::second:
      named.offsetSeconds = count;
      break;
    case DateUnit::minute:
      named.offsetSeconds = qint64{count} * 60;
      break;
    case DateUnit::hour:
      named.offsetSeconds = qint64{count} * 3600;
      break;
    case DateUnit::day:
      named.date = today.addDays(count);
      break;
    case DateUnit::week:
      named.date = today.addDays(qint64{count} * 7);
      break;
    case DateUnit::month:
      named.date = today.addMonths(count);
      break;
    case DateUnit::year:
      named.date = today.addYears(count);
      break;
  }
  return named;
}

// "end of the month", "Ende nächsten Monats", "début mai", "mid-June"
std::optional<NamedDay> DateGrammar::edgeFirst(std::size_t index) {
  const bool isBegin = has(index, DateRole::begin);
  const bool isMiddle = has(index, middle);
  if (!isBegin && !isMiddle && !has(index, DateRole::end)) return std::nullopt;
  std::size_t i = index + 1;
  if (isMiddle && gluedMark(i, u'-')) ++i;
  while (i < index + 3 && (nearHas(i, of) || nearHas(i, article))) ++i;
  if (!near(i)) return std::nullopt;
  const QDate today = calendar_.today();
  NamedDay named;
  const auto inMonth = [&](QDate first) {
    named.date = isBegin ? first : first.addDays(isMiddle ? 14 : first.daysInMonth() - 1);
  };
  if (has(i, month)) {
    if (!trustedMonth(i, false)) return std::nullopt;
    const QDate thisMonth(today.year(), today.month(), 1);
    QDate first(today.year(), value(i, month), 1);
    named.end = i + 1;
    int yearNumber = 0;
    if (year(named.end, yearNumber) == Year::read) {
      first = QDate(yearNumber, first.month(), 1);
    } else if (first < thisMonth) {
      first = first.addYears(1);
    }
    inMonth(first);
    return named;
  }
  int steps = 0;
  bool modified = true;
  if (has(i, next) || has(i, coming)) {
    steps = 1;
  } else if (has(i, last)) {
    steps = -1;
  } else {
    modified = has(i, thisOne);
  }
  if (modified) ++i;
  if (!near(i) || !has(i, unit)) return std::nullopt;
  const auto span = static_cast<DateUnit>(value(i, unit));
  named.end = i + 1;
  if (nearHas(i + 1, nextAfter) || nearHas(i + 1, lastAfter)) {
    steps = has(i + 1, nextAfter) ? 1 : -1;
    ++named.end;
  }
  switch (span) {
    case DateUnit::week:
      named.date = calendar_.monday().addDays(7 * steps + (isBegin ? 0 : isMiddle ? 2 : 6));
      return named;
    case DateUnit::month:
      inMonth(QDate(today.year(), today.month(), 1).addMonths(steps));
      return named;
    case DateUnit::year: {
      const int yearNumber = today.year() + steps;
      named.date = isBegin    ? QDate(yearNumber, 1, 1)
                   : isMiddle ? QDate(yearNumber, 7, 1)
                              : QDate(yearNumber, 12, 31);
      return named;
    }
    default:
      return std::nullopt;
  }
}

}  // namespace lumeno::detect
