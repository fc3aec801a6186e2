#include <string_view>

#include "suggest/detect/date_grammar.h"

namespace lumeno::detect {

using Kind = DateToken::Kind;
using Gap = DateToken::Gap;
using enum DateRole;

namespace {

constexpr int latestOpenAfternoonHour = 7;  // a bare 1 to 7 is the afternoon

int minutesOfDay(const ClockTime& clock) {
  return clock.hour * 60 + clock.minute;
}

// Puts an open hour into a part of the day.
void intoPart(ClockTime& clock, int partHour) {
  if (!clock.open) return;
  const int hour = clock.hour % 12;
  bool afternoon = partHour >= afternoonHour;
  if (partHour == noonHour) afternoon = hour <= 3;
  if (partHour == nightHour) afternoon = hour >= 5;
  clock.hour = hour + (afternoon ? 12 : 0);
  clock.open = false;
}

}  // namespace

std::optional<ClockTime> DateGrammar::clock(std::size_t index) {
  if (at(index).kind == Kind::number) {
    // "10 minutes to five", "at 10 past 3"
    const bool spelled = nearHas(index + 1, minutesWord);
    const std::size_t i = index + (spelled ? 2 : 1);
    const bool turned = nearHas(i, past) || nearHas(i, DateRole::before);
    if (turned && (spelled || before(index, DateRole::at)) && isNumber(index, 1, 2) && at(index).value < 30) {
      if (auto clock = pastOrBefore(at(index).value, i)) return clock;
    }
    return digitClock(index);
  }
  if (at(index).kind == Kind::word) return wordClock(index);
  return std::nullopt;
}

std::optional<ClockTime> DateGrammar::digitClock(std::size_t index) {
  if (!isNumber(index, 1, 2)) return std::nullopt;
  ClockTime clock;
  clock.hour = at(index).value;
  const bool leadingZero = at(index).length() == 2 && clock.hour < 10;
  std::size_t i = index + 1;
  bool minutes = false;
  if (gluedMark(i, u':')) {
    if (!gluedNumber(i + 1, 2, 2)) return std::nullopt;
    clock.minute = at(i + 1).value;
    i += 2;
    minutes = clock.marked = true;
    if (gluedMark(i, u':') && gluedNumber(i + 1, 2, 2)) {
      clock.second = at(i + 1).value;
      clock.withSeconds = true;
      i += 2;
      if ((gluedMark(i, u'.') || gluedMark(i, u',')) && gluedNumber(i + 1, 3, 9)) {
        clock.millisecond = tokens_.text(at(i + 1)).first(3).toInt();
        i += 2;
      }
    }
    if (gluedMark(i, u':') && at(i + 1).gap == Gap::none && at(i + 1).kind != Kind::end) return std::nullopt;
  } else if (gluedMark(i, u'.') && gluedNumber(i + 1, 2, 2) &&
             (nearHas(i + 2, meridiem) || nearHas(i + 2, clockWord))) {
    clock.minute = at(i + 1).value;
    minutes = true;
    i += 2;
  } else if (inDecimal(index)) {
    return std::nullopt;
  }
  if (clock.hour > 23 || clock.minute > 59 || clock.second > 59) return std::nullopt;
  // "3:45 minutes" is a duration.
  if (minutes && nearHas(i, unit) && !has(i, clockWord)) return std::nullopt;
  clock.open = clock.hour >= 1 && clock.hour <= 12 && !leadingZero && (!minutes || words_->twelveHourClock);
  clock.end = i;
  if (nearHas(i, meridiem)) {
    const bool afternoon = value(i, meridiem) != 0;
    if (clock.hour > 12 && !afternoon) return std::nullopt;
    if (clock.hour <= 12) clock.hour = clock.hour % 12 + value(i, meridiem);
    clock.open = false;
    clock.marked = true;
    clock.end = i + 1;
  } else if (nearHas(i, clockWord)) {
    const bool weakWord = trust(i, clockWord) == DateWordTrust::weak;
    clock.weak = weakWord && !clock.marked;
    clock.marked = true;
    ++i;
    if (!minutes && isNumber(i, 2, 2) && at(i).value <= 59 && !inDecimal(i) &&
        (at(i).gap == Gap::none || (at(i).gap == Gap::blank && mayFollowHour(i + 1)))) {
      clock.minute = at(i).value;
      clock.open = false;
      clock.weak = false;
      minutes = true;
      ++i;
    }
    clock.end = i;
    if (!minutes) afterHour(clock);
  } else if (clock.hour == 12 && !minutes && (nearHas(i, noon) || nearHas(i, midnight))) {
    clock.midnight = has(i, midnight);
    if (clock.midnight) clock.hour = 0;
    clock.open = false;
    clock.marked = true;
    clock.end = i + 1;
  }
  withPart(clock);
  withZone(clock);
  return clock;
}

// What follows the "T" of ISO 8601: "15:00", "15:00:00.000Z", "150000+0100".
std::optional<ClockTime> DateGrammar::isoClock(std::size_t index) {
  ClockTime clock;
  if (gluedNumber(index, 4, 4) || gluedNumber(index, 6, 6)) {
    const int digits = at(index).value;
    const int hoursAndMinutes = at(index).length() == 6 ? digits / 100 : digits;
    clock.second = at(index).length() == 6 ? digits % 100 : 0;
    clock.hour = hoursAndMinutes / 100;
    clock.minute = hoursAndMinutes % 100;
    if (clock.hour > 23 || clock.minute > 59 || clock.second > 59) return std::nullopt;
    clock.end = index + 1;
    withZone(clock);
  } else {
    const auto read = digitClock(index);
    if (!read || !read->marked || at(index).length() != 2) return std::nullopt;
    clock = *read;
  }
  clock.open = false;
  clock.marked = true;
  // Here a minus cannot be the sign of a range.
  const std::size_t i = clock.end;
  if (!clock.zoneOffset && gluedMark(i, u'-') && gluedNumber(i + 1, 2, 4)) {
    int offset = at(i + 1).value;
    clock.end = i + 2;
    if (at(i + 1).length() == 2) {
      offset *= 100;
      if (gluedMark(i + 2, u':') && gluedNumber(i + 3, 2, 2)) {
        offset += at(i + 3).value;
        clock.end = i + 4;
      }
    }
    clock.zoneOffset = -(offset / 100 * 60 + offset % 100) * 60;
  }
  return clock;
}

std::optional<ClockTime> DateGrammar::wordClock(std::size_t index) {
  if (has(index, clockArticle) && near(index + 1)) {
    auto clock = at(index + 1).kind == Kind::number ? digitClock(index + 1) : spelledHour(index + 1);
    if (!clock || clock->marked) return clock;
    afterHour(*clock);
    withPart(*clock);
    return clock;
  }
  if (has(index, half) && nearHas(index + 1, past)) return pastOrBefore(30, index + 1);
  if (has(index, quarter) && (nearHas(index + 1, past) || nearHas(index + 1, DateRole::before))) {
    return pastOrBefore(15, index + 1);
  }
  int hour = 0;
  if (has(index, halfBefore) && near(index + 1) && hourNumber(index + 1, hour)) {
    ClockTime clock;
    clock.hour = hour == 1 ? 12 : hour - 1;
    clock.minute = 30;
    clock.open = clock.marked = true;
    clock.end = index + 2;
    withPart(clock);
    return clock;
  }
  if (has(index, noon) || has(index, midnight)) {
    ClockTime clock;
    clock.midnight = has(index, midnight);
    clock.hour = clock.midnight ? 0 : 12;
    clock.marked = true;
    clock.weak = !clock.midnight && trust(index, noon) == DateWordTrust::weak;
    clock.end = index + 1;
    afterHour(clock);
    return clock;
  }
  return has(index, number) ? spelledHour(index) : std::nullopt;
}

// "three o'clock", "ten past three", "three", with what may follow.
std::optional<ClockTime> DateGrammar::spelledHour(std::size_t index) {
  if (!has(index, number)) return std::nullopt;
  const int amount = value(index, number);
  std::size_t i = index + 1;
  if (nearHas(i, minutesWord)) ++i;
  if (amount < 30 && (nearHas(i, past) || nearHas(i, DateRole::before))) {
    auto clock = pastOrBefore(amount, i);
    // "Five to seven days" counts days.
    if (clock) clock->weak = has(i, DateRole::before);
    if (clock) return clock;
  }
  i = index + 1;
  ClockTime clock;
  int hour = 0;
  if (!hourNumber(index, hour)) {
    const bool counted = nearHas(i, clockWord) || before(index, clockArticle);
    if (amount > 23 || !counted) return std::nullopt;
    hour = amount;
  }
  clock.hour = hour;
  clock.open = hour <= 12;
  clock.end = i;
  if (nearHas(i, clockWord)) {
    clock.marked = true;
    clock.weak = trust(i, clockWord) == DateWordTrust::weak;
    clock.end = i + 1;
    afterHour(clock);
    if (clock.end == i + 1 && nearHas(i + 1, number) && value(i + 1, number) % 5 == 0 &&
        mayFollowHour(i + 2)) {
      clock.minute = value(i + 1, number);
      clock.weak = false;
      clock.end = i + 2;
    }
  } else if (nearHas(i, meridiem)) {
    clock.hour = hour % 12 + value(i, meridiem);
    clock.open = false;
    clock.marked = true;
    clock.end = i + 1;
  }
  withPart(clock);
  withZone(clock);
  return clock;
}

// `index` is at "past" or "to".
std::optional<ClockTime> DateGrammar::pastOrBefore(int minutes, std::size_t index) {
  int hour = 0;
  if (!near(index + 1) || !hourNumber(index + 1, hour)) return std::nullopt;
  ClockTime clock;
  const bool forward = has(index, past);
  clock.hour = forward ? hour : hour == 1 ? 12 : hour - 1;
  clock.minute = forward ? minutes : 60 - minutes;
  clock.open = clock.marked = true;
  clock.end = index + 2;
  if (nearHas(clock.end, clockWord)) ++clock.end;
  if (nearHas(clock.end, meridiem)) {
    clock.hour = clock.hour % 12 + value(clock.end, meridiem);
    clock.open = false;
    ++clock.end;
  }
  withPart(clock);
  return clock;
}

bool DateGrammar::hourNumber(std::size_t index, int& hour) {
  if (isNumber(index, 1, 2)) {
    const char16_t mark = at(index + 1).gap == Gap::none ? at(index + 1).mark : u'\0';
    if (inDecimal(index) || mark == u':' || mark == u'/' || mark == u'%') return false;
    hour = at(index).value;
  } else if (has(index, number) && (trust(index, number) != DateWordTrust::weak ||
                                    before(index, clockArticle) || nearHas(index + 1, clockWord))) {
    hour = value(index, number);
  } else {
    return false;
  }
  return hour >= 1 && hour <= 12;
}

// "et demie", "moins le quart", "y media".
void DateGrammar::afterHour(ClockTime& clock) {
  std::size_t i = clock.end;
  if (nearHas(i, clockWord) && !clock.marked) {
    clock.marked = true;
    clock.end = ++i;
  }
  const bool forward = nearHas(i, plus);
  if (!forward && !nearHas(i, minus)) return;
  ++i;
  if (!forward && nearHas(i, article)) ++i;
  if (!near(i)) return;
  int minutes = 0;
  if (has(i, half) && forward) {
    minutes = 30;
  } else if (has(i, quarter)) {
    minutes = 15;
  } else if (has(i, number) && value(i, number) % 5 == 0 && value(i, number) < 30) {
    minutes = value(i, number);
  } else {
    return;
  }
  clock.minute = forward ? minutes : 60 - minutes;
  if (!forward) clock.hour = clock.hour == 1 && clock.open ? 12 : (clock.hour + 23) % 24;
  clock.marked = true;
  clock.weak = false;
  clock.midnight = clock.midnight && clock.hour == 0;
  clock.end = i + 1;
}

void DateGrammar::withPart(ClockTime& clock) {
  if (!nearHas(clock.end, clockPart)) return;
  intoPart(clock, value(clock.end, clockPart));
  ++clock.end;
  clock.marked = true;
  clock.weak = false;
}

// After a bare hour: the end of a clause or a word that does not make it a quantity.
bool DateGrammar::mayFollowHour(std::size_t index) {
  const DateToken& token = at(index);
  if (token.kind == Kind::end || token.gap >= Gap::line) return true;
  switch (token.kind) {
    case Kind::mark: {
      const DateToken& following = at(index + 1);
      if (token.gap == Gap::none && following.gap == Gap::none &&
          (following.kind == Kind::number || following.kind == Kind::other)) {
        return false;
      }
      return std::u16string_view(u".,;!?)]\"\u201D\u2019'\u2026-\u2013\u2014").find(token.mark) !=
             std::u16string_view::npos;
    }
    case Kind::word:
      if (token.gap == Gap::none) return false;
      for (const DateRole role : {follows, DateRole::at, on, from, to, in, forSpan, andWord, article,
                                  relativeDay, todayPart, weekday, thisOne, next, coming, month}) {
        if (has(index, role)) return true;
      }
      return false;
    case Kind::foreign:
      return token.gap == Gap::blank;
    default:
      return false;
  }
}

std::optional<ClockSpan> DateGrammar::clockSpan(std::size_t index, Beside beside) {
  auto first = clock(index);
  if (!first) return std::nullopt;
  const bool besideDay = beside == Beside::day || beside == Beside::dayThenAt;
  const bool afterAt = beside == Beside::at || beside == Beside::dayThenAt;
  const auto plain = [](const ClockTime& clock) { return clock.marked && !clock.weak; };
  ClockSpan span;
  if (const auto sign = rangeSign(first->end, index)) {
    auto finish = near(*sign) ? clock(*sign) : std::nullopt;
    const bool bareRange = besideDay && finish && first->hour != finish->hour;
    const bool isRange = finish && (finish->marked || mayFollowHour(finish->end)) &&
                         (plain(*first) || plain(*finish) || (first->marked && finish->marked) || bareRange);
    // Bare scores ("Friday 3-1") run backwards; working hours ("9-5") are the exception.
    const bool backwards = isRange && !first->marked && !finish->marked && finish->hour < first->hour &&
                           !(first->hour >= 8 && finish->hour <= latestOpenAfternoonHour);
    if (isRange && !backwards) {
      if (finish->zoneOffset && !first->zoneOffset && !first->zoneName)
        first->zoneOffset = finish->zoneOffset;
      if (finish->zoneName && !first->zoneOffset && !first->zoneName) first->zoneName = finish->zoneName;
      span.start = *first;
      span.end = finish->end;
      span.finish = std::move(*finish);
      return span;
    }
  }
  const bool bare = !first->marked;
  if (bare && words_->hoursTakeArticle && !has(index, clockArticle)) return std::nullopt;
  if (bare && !(afterAt && (first->open || first->hour > 12) && mayFollowHour(first->end)))
    return std::nullopt;
  if (first->weak && !afterAt && !besideDay) {
    // "15h" in the user's own language is a time; "3 heures" may still be a duration.
    const bool own =
        habits_.language == language_ && habits_.knownLanguage && at(first->end - 1).length() == 1;
    if (!own || nearHas(first->end, of)) return std::nullopt;
  }
  span.end = first->end;
  span.start = std::move(*first);
  return span;
}

// Decides the half of the day where the text leaves it open.
void DateGrammar::settle(ClockSpan& span, std::optional<int> partHour) {
  const auto choose = [](ClockTime& clock) {
    if (clock.open && clock.hour <= latestOpenAfternoonHour) clock.hour += 12;
    clock.open = false;
  };
  if (partHour) intoPart(span.start, *partHour);
  if (!span.finish) {
    choose(span.start);
    return;
  }
  ClockTime& finish = *span.finish;
  if (span.start.open && !finish.open) {
    // The later half of the day that still begins before the end.
    span.start.hour %= 12;
    const int end = minutesOfDay(finish) == 0 ? 24 * 60 : minutesOfDay(finish);
    if (minutesOfDay(span.start) + 12 * 60 < end || minutesOfDay(span.start) >= end) span.start.hour += 12;
    span.start.open = false;
  }
  choose(span.start);
  if (finish.open) {
    finish.hour %= 12;
    if (minutesOfDay(finish) <= minutesOfDay(span.start)) finish.hour += 12;
    if (minutesOfDay(finish) <= minutesOfDay(span.start)) finish.hour %= 12;
    finish.open = false;
  }
}

}  // namespace lumeno::detect
