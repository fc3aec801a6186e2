#pragma once

#include <QDate>
#include <cstddef>
#include <optional>

namespace lumeno::detect {

/// A time of day as written. Token indices count from the start of the text.
struct ClockTime {
  int hour = 0;  ///< 0 to 23; with `open`, 1 to 12
  int minute = 0;
  int second = 0;
  int millisecond = 0;
  bool withSeconds = false;
  bool open = false;               ///< which half of the day is left to the reader
  bool marked = false;             ///< plainly a time, by its form or a word
  bool weak = false;               ///< marked by a word that also counts hours ("3 heures")
  bool midnight = false;           ///< the word, which means the end of the day it is said on
  std::optional<int> zoneOffset;   ///< seconds east of Greenwich, where written
  const char* zoneName = nullptr;  ///< or the zone meant, where its offset varies
  std::size_t end = 0;             ///< one past its last token

  [[nodiscard]] int milliseconds() const { return ((hour * 60 + minute) * 60 + second) * 1000 + millisecond; }
};

struct ClockSpan {
  ClockTime start;
  std::optional<ClockTime> finish;
  std::size_t end = 0;
};

/// A day as written, already counted from today.
struct NamedDay {
  QDate date;
  std::optional<QDate> last;            ///< of a range of days
  std::optional<int> partHour;          ///< the hour a part of the day stands for
  std::optional<qint64> offsetSeconds;  ///< an amount of hours, minutes or seconds from now instead of a date
  bool keepsTimeOfDay = false;          ///< "in two weeks": at this time of day
  bool weekdayAlone = false;            ///< on the same day it means today only with a later time
  bool withoutYear = false;             ///< absolute, its year not written
  bool needsCompany = false;            ///< an abbreviation that is no date without another part beside it
  bool needsFirmCompany = false;        ///< and a mere "10:30" will not do
  bool today = false;                   ///< said in so many words ("today", "tonight")
  std::size_t end = 0;
};

/// A whole expression: at least one of day and clock.
struct DateExpression {
  std::optional<NamedDay> day;
  std::optional<ClockSpan> clock;
  std::optional<NamedDay> finishDay;  ///< of a range with a date and a time at either end
  std::optional<ClockTime> finishClock;
  std::optional<qint64> spanSeconds;  ///< "for two hours"
  std::size_t begin = 0;
  std::size_t end = 0;
};

}  // namespace lumeno::detect
