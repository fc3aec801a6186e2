#pragma once

#include <QLocale>
#include <cstdint>
#include <span>

/// What a language contributes to finding dates: its words, each with the part it plays. The grammar itself
/// (date_grammar.h) is shared; a further language is one table and one line in `dateLanguages`.
namespace lumeno::detect {

enum class DateRole : std::uint8_t {
  month,        ///< 1 to 12
  weekday,      ///< 1 (Monday) to 7
  weekdayPart,  ///< one word for both ("Montagabend"): weekday * 100 + hour
  relativeDay,  ///< days from today
  todayPart,    ///< one word for a part of today ("tonight"); the value is its hour
  dayPart,      ///< stands after a day ("morning"); the value is its hour
  clockPart,    ///< stands after a time or a day ("in the morning"); the value is its hour
  noon,
  midnight,
  meridiem,     ///< 0 for am, 12 for pm
  clockWord,    ///< "o'clock"
  minutesWord,  ///< "minutes" between a number and "past"
  unit,         ///< a DateUnit
  weekend,
  number,         ///< 1 to 59
  ordinal,        ///< 1 to 31, as a word
  ordinalSuffix,  ///< glued to digits ("st")
  half,           ///< after or before "past": "half past six", "trois heures et demie"
  halfBefore,     ///< thirty minutes before the hour that follows ("halb")
  halfUnit,       ///< "half an": half of the unit that follows
  quarter,
  thisOne,
  next,       ///< before the noun: in the calendar week, month or year that follows
  nextAfter,  ///< the same, after the noun ("prochain")
  coming,     ///< before the noun: the first from now on
  last,       ///< before the noun
  lastAfter,  ///< after the noun
  at,         ///< introduces a time
  on,         ///< introduces a day
  of,
  from,
  to,  ///< between the ends of a range
  between,
  andWord,
  in,         ///< before an amount: that long from now
  agoBefore,  ///< before an amount: that long ago
  agoAfter,   ///< after an amount: that long ago
  fromNow,    ///< after an amount: that long from now
  article,
  clockArticle,  ///< the article of an hour ("las tres")
  past,          ///< minutes past the hour
  before,        ///< minutes to the hour
  plus,          ///< after the hour: "et demie"
  minus,         ///< after the hour: "moins le quart"
  forSpan,       ///< before an amount: a duration
  begin,
  middle,
  end,
  follows,  ///< may follow a bare hour without making it a quantity ("at 5 with Mira")
  blocker,  ///< makes the number after it a mere label ("room 12")
};

enum class DateUnit : std::uint8_t { second, minute, hour, day, week, month, year };

/// The value of a word that names a unit.
[[nodiscard]] constexpr std::int16_t dateUnit(DateUnit unit) {
  return static_cast<std::int16_t>(unit);
}

/// How far a word can be trusted by itself.
enum class DateWordTrust : std::uint8_t {
  full,
  abbreviation,     ///< capitalised only, and needs a date or time beside it
  capitalisedOnly,  ///< a common word in lower case ("may"), so then it needs firmer company
  weak,  ///< has a commoner meaning: a clock word also counts hours ("3 heures"), a number is an article
};

struct DateWord {
  const char16_t* text;  ///< lower case; words of a phrase are divided by single blanks
  DateRole role;
  std::int16_t value = 0;
  DateWordTrust trust = DateWordTrust::full;
};

struct DateLanguage {
  QLocale::Language locale;
  bool twelveHourClock;   ///< "3:30" without more may mean the afternoon
  bool hoursTakeArticle;  ///< a bare number is no hour without it ("a las tres")
  std::span<const DateWord> words;
};

inline constexpr int dateLanguageCount = 4;

/// Every language, in the order in which they are preferred when the text and the locale leave it open.
[[nodiscard]] std::span<const DateLanguage* const, dateLanguageCount> dateLanguages();

extern const DateLanguage dateEnglish;
extern const DateLanguage dateGerman;
extern const DateLanguage dateFrench;
extern const DateLanguage dateSpanish;

/// Hours that stand for the parts of the day.
inline constexpr std::int16_t morningHour = 9;
inline constexpr std::int16_t noonHour = 12;
inline constexpr std::int16_t afternoonHour = 15;
inline constexpr std::int16_t eveningHour = 19;
inline constexpr std::int16_t nightHour = 20;

}  // namespace lumeno::detect
