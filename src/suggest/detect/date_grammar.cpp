#include "suggest/detect/date_grammar.h"

namespace lumeno::detect {

using Kind = DateToken::Kind;
using Gap = DateToken::Gap;

namespace {

using enum DateRole;

/// Words that may begin a day or a time. Numbers among them count only in company.
constexpr std::uint64_t dayRoles =
    roleMask(month, weekday, weekdayPart, relativeDay, todayPart, weekend, ordinal, halfUnit, thisOne, next,
             coming, last, in, agoBefore, begin, middle, end, unit, number);
constexpr std::uint64_t clockRoles =
    roleMask(noon, midnight, half, halfBefore, quarter, clockArticle, number);
/// Those of them that may stand alone; the others need a word, a number or a mark after them.
constexpr std::uint64_t loneRoles = roleMask(weekday, weekdayPart, relativeDay, todayPart, noon, midnight);
constexpr std::uint64_t leaningRoles = (dayRoles | clockRoles) & ~loneRoles & ~roleMask(number);
/// Words that make a number after them worth a look although nothing after it does.
constexpr std::uint64_t leadingRoles = roleMask(at, on, from, to, between);
/// Words that make a number before them worth a look.
constexpr std::uint64_t countedRoles = roleMask(unit, clockWord, minutesWord, past, DateRole::before,
                                                meridiem, clockPart, to, andWord, month, of, plus, minus);

bool isNumericSeparator(char16_t mark) {
  return mark == u':' || mark == u'.' || mark == u'/' || mark == u'-' || mark == u'\u2013';
}

}  // namespace

DateHabits DateHabits::of(const QLocale& locale) {
  DateHabits habits;
  const QString format = locale.dateFormat(QLocale::ShortFormat);
  if (format.indexOf(u'M') < format.indexOf(u'd') && !format.startsWith(u'y')) habits.order = Order::monthDay;
  habits.dots = format.contains(u'.');
  const auto languages = dateLanguages();
  for (std::size_t i = 0; i < languages.size(); ++i) {
    if (languages[i]->locale != locale.language()) continue;
    habits.language = static_cast<int>(i);
    habits.knownLanguage = true;
  }
  return habits;
}

DateGrammar::DateGrammar(DateTokens& tokens, const DateCalendar& calendar, const DateHabits& habits)
    : tokens_(tokens), calendar_(calendar), habits_(habits) {}

// Whether the number goes on as "5.25" or "5,000" do.
bool DateGrammar::inDecimal(std::size_t index) {
  return (gluedMark(index + 1, u'.') || gluedMark(index + 1, u',')) && gluedNumber(index + 2, 1, 1000);
}

bool DateGrammar::isSpelled(std::size_t index, QStringView text) {
  const DateToken& token = at(index);
  return (token.kind == Kind::word || token.kind == Kind::other) && tokens_.text(token) == text;
}

// The index after a sign that joins the ends of a range beginning at `rangeBegin`.
std::optional<std::size_t> DateGrammar::rangeSign(std::size_t index, std::size_t rangeBegin) {
  if (isDash(index) && at(index).gap <= Gap::blank && at(index + 1).gap <= Gap::blank) return index + 1;
  if (nearHas(index, to) || (nearHas(index, andWord) && before(rangeBegin, between))) {
    if (nearHas(index + 1, article) && !has(index + 1, clockArticle)) return index + 2;
    return index + 1;
  }
  return std::nullopt;
}

// The languages worth trying for an expression that begins with digits.
unsigned DateGrammar::languagesAround(std::size_t index) {
  unsigned languages = 0;
  if (index > 0 && near(index) && at(index - 1).entry) languages |= at(index - 1).entry->languages;
  for (std::size_t i = index + 1; i < index + 8; ++i) {
    const DateToken& token = at(i);
    if (token.entry && token.gap <= Gap::line) return languages | token.entry->languages;
    if (token.kind != Kind::number && token.kind != Kind::mark) break;
  }
  return languages != 0 ? languages : 1U << static_cast<unsigned>(habits_.language);
}

unsigned DateGrammar::mayBegin(std::size_t index) {
  const DateToken& token = at(index);
  if (token.kind == Kind::word) {
    const std::uint64_t roles = token.entry->allRoles;
    if (!(roles & (dayRoles | clockRoles))) return 0;
    const DateToken& following = at(index + 1);
    unsigned languages = roles & loneRoles ? token.entry->languagesWith(loneRoles) : 0;
    if (roles & leaningRoles) {
      if (following.entry) {
        languages |= token.entry->languagesWith(leaningRoles) & following.entry->languages;
      } else if (following.kind == Kind::number || following.kind == Kind::mark) {
        languages |= token.entry->languagesWith(leaningRoles);
      }
    }
    // "a", "six": only what stands beside can tell.
    if (roles & roleMask(number)) {
      const unsigned counting = token.entry->languagesWith(roleMask(number));
      if (following.entry) languages |= counting & following.entry->languagesWith(countedRoles);
      if (index > 0 && at(index - 1).entry)
        languages |= counting & at(index - 1).entry->languagesWith(leadingRoles);
    }
    return languages;
  }
  if (token.kind != Kind::number) return 0;
  const DateToken& following = at(index + 1);
  const bool worthIt =
      following.entry ||
      (following.kind == Kind::mark && (isNumericSeparator(following.mark) || isDash(index + 1))) ||
      (following.kind == Kind::other && following.gap == Gap::none && token.length() == 8) ||
      (index > 0 && at(index - 1).entry && at(index - 1).entry->languagesWith(leadingRoles));
  return worthIt ? languagesAround(index) : 0;
}

std::optional<DateExpression> DateGrammar::parse(std::size_t index, unsigned languages) {
  std::optional<DateExpression> best;
  const auto attempt = [&](int language) {
    // A further language has a chance only if it knows more of what follows.
    if (best && best->end > index) {
      const unsigned bit = 1U << static_cast<unsigned>(language);
      const auto knows = [&](std::size_t i) { return at(i).entry && (at(i).entry->languages & bit); };
      if (!knows(best->end) && !knows(best->end + 1)) return;
    }
    language_ = language;
    words_ = dateLanguages()[static_cast<std::size_t>(language)];
    auto found = expression(index);
    if (found && (!best || found->end > best->end)) best = std::move(found);
  };
  // What the user's language makes of it wins over an equally long reading in another.
  if (languages & (1U << static_cast<unsigned>(habits_.language))) attempt(habits_.language);
  for (int language = 0; language < dateLanguageCount; ++language) {
    if (language != habits_.language && (languages & (1U << static_cast<unsigned>(language))))
      attempt(language);
  }
  return best;
}

std::optional<DateExpression> DateGrammar::expression(std::size_t index) {
  bool mayBeDay = true;
  bool mayBeClock = true;
  if (at(index).kind == Kind::number) {
    mayBeDay = !gluedMark(index + 1, u':') && !nearHas(index + 1, meridiem);
    mayBeClock = at(index).length() <= 2 && !nearHas(index + 1, month);
  } else {
    mayBeDay = hasAny(index, dayRoles);
    mayBeClock = hasAny(index, clockRoles);
  }
  auto byDay = mayBeDay ? dayThenClock(index) : std::nullopt;
  auto byClock = mayBeClock ? clockThenDay(index) : std::nullopt;
  if (byDay && (!byClock || byDay->end >= byClock->end)) return byDay;
  return byClock;
}

std::optional<DateExpression> DateGrammar::dayThenClock(std::size_t index) {
  DateExpression expression;
  expression.begin = index;
  expression.day = daySpan(index);
  if (!expression.day) return std::nullopt;
  expression.end = expression.day->end;
  if (!expression.day->offsetSeconds) {
    readClockAfterDay(expression);
    readFinish(expression);
    readSpan(expression);
  }
  if (!inGoodCompany(expression)) return std::nullopt;
  return expression;
}

void DateGrammar::readClockAfterDay(DateExpression& expression) {
  NamedDay& day = *expression.day;
  std::size_t i = day.end;
  if ((isSpelled(i, u"T") || isSpelled(i, u"t")) && at(i).gap == Gap::none) {
    if (const auto time = isoClock(i + 1)) {
      expression.clock = ClockSpan{*time, std::nullopt, time->end};
      expression.end = time->end;
    }
    return;
  }
  bool divided = false;  // by a mark, so that only a plain time belongs to the day
  if (nearMark(i, u',')) {
    divided = true;
    ++i;
  } else if ((isDash(i) || at(i).mark == u'\u00B7' || at(i).mark == u'|') && at(i).gap == Gap::blank &&
             at(i + 1).gap == Gap::blank) {
    divided = true;
    ++i;
  }
  Beside beside = divided ? Beside::nothing : Beside::day;
  if (nearHas(i, DateRole::at) || nearMark(i, u'@') || nearHas(i, from) || nearHas(i, between)) {
    beside = Beside::dayThenAt;
    ++i;
  }
  if (!near(i)) return;
  auto span = clockSpan(i, beside);
  if (!span) return;
  settle(*span, day.partHour);
  expression.end = span->end;
  // "Mon Nov 16 15:00:00 CET 2026"
  if (day.withoutYear && span->start.withSeconds && isNumber(span->end, 4, 4) &&
      at(span->end).gap == Gap::blank &&
      QDate(at(span->end).value, day.date.month(), day.date.day()).isValid()) {
    day.date = QDate(at(span->end).value, day.date.month(), day.date.day());
    day.withoutYear = false;
    ++expression.end;
  }
  expression.clock = std::move(*span);
}

// "June 3 9am – June 5 5pm"
void DateGrammar::readFinish(DateExpression& expression) {
  if (!expression.clock || expression.clock->finish || expression.day->last) return;
  std::size_t i = expression.end;
  // ISO intervals are divided by a solidus.
  if (gluedMark(i, u'/') && gluedNumber(i + 1, 4, 4)) {
    ++i;
  } else if (const auto sign = rangeSign(i, expression.begin)) {
    i = *sign;
    if (nearHas(i, on)) ++i;
  } else {
    return;
  }
  if (!near(i)) return;
  const auto finish = day(i);
  if (!finish || finish->offsetSeconds || finish->needsCompany) return;
  NamedDay range = *expression.day;
  if (!joinRange(range, *finish)) return;
  DateExpression second;
  second.day = *finish;
  second.begin = i;
  second.end = finish->end;
  readClockAfterDay(second);
  if (second.clock && second.clock->finish) return;
  // "Friday 10:00 - Friday 12:00" is one day.
  if (second.clock && finish->weekdayAlone && finish->date.dayOfWeek() == range.date.dayOfWeek() &&
      second.clock->start.milliseconds() > expression.clock->start.milliseconds()) {
    range.last = range.date;
  }
  expression.day->date = range.date;
  expression.finishDay = finish;
  expression.finishDay->date = *range.last;
  if (second.clock) expression.finishClock = second.clock->start;
  expression.end = second.end;
}

void DateGrammar::readSpan(DateExpression& expression) {
  if (!expression.clock || expression.clock->finish || expression.finishDay) return;
  if (!nearHas(expression.end, forSpan) || !near(expression.end + 1)) return;
  const auto span = amount(expression.end + 1);
  if (!span || span->unit > DateUnit::hour) return;
  const int seconds = span->unit == DateUnit::hour ? 3600 : span->unit == DateUnit::minute ? 60 : 1;
  expression.spanSeconds = qint64{span->count} * seconds;
  expression.end = span->end;
}

std::optional<DateExpression> DateGrammar::clockThenDay(std::size_t index) {
  const bool afterAt = before(index, DateRole::at) && !(index > 1 && at(index - 2).kind == Kind::number);
  auto span = clockSpan(index, afterAt ? Beside::at : Beside::nothing);
  const bool needsDay = !span;
  if (needsDay) {
    span = clockSpan(index, Beside::day);
    const bool introduced = before(index, from) || before(index, between);
    if (!span || (!span->start.marked && !(introduced && span->finish))) return std::nullopt;
  }
  DateExpression expression;
  expression.begin = index;
  expression.end = span->end;
  std::size_t i = span->end;
  const bool comma = nearMark(i, u',');
  if (comma) ++i;
  for (int words = 0; words < 2 && (nearHas(i, on) || nearHas(i, of) || nearHas(i, article)); ++words) ++i;
  auto joined = near(i) ? day(i) : std::nullopt;
  if (joined && !joined->offsetSeconds && !joined->needsFirmCompany) {
    // In "lunch at 12:30, Monday at 9 dentist" each day has its own time.
    DateExpression own;
    own.day = joined;
    own.begin = i;
    own.end = joined->end;
    if (comma) readClockAfterDay(own);
    if (!own.clock) {
      expression.day = std::move(joined);
      expression.end = expression.day->end;
    }
  }
  if (needsDay && !expression.day) return std::nullopt;
  settle(*span, expression.day ? expression.day->partHour : std::nullopt);
  expression.clock = std::move(*span);
  readSpan(expression);
  return expression;
}

// Abbreviations are no dates by themselves, and those of another language than the user's need a further word
// of that language: "So 10:30 suits me" is not German.
bool DateGrammar::inGoodCompany(const DateExpression& expression) {
  const NamedDay& day = *expression.day;
  if (!day.needsCompany) return true;
  if (!expression.clock) return false;
  const DateToken& first = at(expression.begin);
  if (first.kind != Kind::word) return true;
  bool meridiemBeside = false;
  bool otherWord = false;
  for (std::size_t i = expression.begin + 1; i < expression.end; ++i) {
    if (!at(i).entry) continue;
    if (has(i, meridiem)) meridiemBeside = true;
    if (has(i, DateRole::at))
      return first.capital && (!day.needsFirmCompany || habits_.language == language_);
    if (has(i, clockWord) || has(i, month)) otherWord = true;
  }
  if (!first.capital) return meridiemBeside && first.length() >= 3;
  return !day.needsFirmCompany || habits_.language == language_ || otherWord;
}

}  // namespace lumeno::detect
