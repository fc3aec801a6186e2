#pragma once

#include "suggest/detect/date_calendar.h"
#include "suggest/detect/date_tokens.h"
#include "suggest/detect/date_values.h"

namespace lumeno::detect {

/// What the locale decides about dates written in digits.
struct DateHabits {
  enum class Order { dayMonth, monthDay };
  Order order = Order::dayMonth;
  bool dots = false;           ///< dates are written with full stops
  int language = 0;            ///< the language of the locale, or English
  bool knownLanguage = false;  ///< whether it is one of ours

  [[nodiscard]] static DateHabits of(const QLocale& locale);
};

/// The grammar of dates and times over the tokens of a text. Every rule looks at a bounded number of tokens,
/// so that trying all of them at every token stays linear. A rule returns what it read with the index one
/// past its last token; where it fails it returns nothing and has no effect.
class DateGrammar {
 public:
  DateGrammar(DateTokens& tokens, const DateCalendar& calendar, const DateHabits& habits);

  /// The longest expression that begins at this token in one of these languages.
  [[nodiscard]] std::optional<DateExpression> parse(std::size_t index, unsigned languages);
  /// The languages in which an expression may begin there: a quick test that rules out nearly all tokens. Bit
  /// n stands for language n.
  [[nodiscard]] unsigned mayBegin(std::size_t index);

 private:
  enum class Beside { nothing, at, day, dayThenAt };  ///< what stands before a time

  struct Amount {
    int count = 0;
    DateUnit unit = DateUnit::day;
    std::size_t end = 0;
  };
  struct DayNumber {
    int day = 0;
    bool ordinal = false;  ///< "5th", "5.", "fifth"
    std::size_t end = 0;
  };

  // Tokens (date_grammar.cpp).
  [[nodiscard]] const DateToken& at(std::size_t index) { return tokens_.at(index); }
  [[nodiscard]] bool has(std::size_t index, DateRole role) {
    const DateToken& token = at(index);
    return token.entry && token.entry->has(language_, role);
  }
  [[nodiscard]] bool hasAny(std::size_t index, std::uint64_t roles) {
    const DateToken& token = at(index);
    return token.entry && (token.entry->roles[static_cast<std::size_t>(language_)] & roles) != 0;
  }
  [[nodiscard]] int value(std::size_t index, DateRole role) {
    return at(index).entry->meaning(language_, role).value;
  }
  [[nodiscard]] DateWordTrust trust(std::size_t index, DateRole role) {
    return at(index).entry->meaning(language_, role).trust;
  }
  // On the same line, or after a line that ends in a word of the grammar and so is a wrapped one.
  [[nodiscard]] bool near(std::size_t index) {
    using enum DateToken::Gap;
    const DateToken::Gap gap = at(index).gap;
    return gap <= blank || (gap == line && index > 0 && at(index - 1).kind == DateToken::Kind::word);
  }
  [[nodiscard]] bool nearHas(std::size_t index, DateRole role) { return has(index, role) && near(index); }
  [[nodiscard]] bool before(std::size_t index, DateRole role) {
    return index > 0 && has(index - 1, role) && near(index);
  }
  [[nodiscard]] bool gluedMark(std::size_t index, char16_t mark) {
    return at(index).mark == mark && at(index).gap == DateToken::Gap::none;
  }
  [[nodiscard]] bool nearMark(std::size_t index, char16_t mark) {
    return at(index).mark == mark && at(index).gap <= DateToken::Gap::blank;
  }
  [[nodiscard]] bool isNumber(std::size_t index, qsizetype minDigits, qsizetype maxDigits) {
    const DateToken& token = at(index);
    return token.kind == DateToken::Kind::number && token.length() >= minDigits &&
           token.length() <= maxDigits;
  }
  [[nodiscard]] bool gluedNumber(std::size_t index, qsizetype minDigits, qsizetype maxDigits) {
    return at(index).gap == DateToken::Gap::none && isNumber(index, minDigits, maxDigits);
  }
  [[nodiscard]] bool isDash(std::size_t index) {
    const char16_t mark = at(index).mark;
    return mark == u'-' || (mark >= 0x2010 && mark <= 0x2015) || mark == u'\u2192';
  }
  [[nodiscard]] bool inDecimal(std::size_t index);
  [[nodiscard]] bool isSpelled(std::size_t index, QStringView text);
  [[nodiscard]] std::optional<std::size_t> rangeSign(std::size_t index, std::size_t rangeBegin);
  [[nodiscard]] unsigned languagesAround(std::size_t index);

  // Times of day (date_grammar_clock.cpp, date_grammar_zone.cpp).
  std::optional<ClockTime> clock(std::size_t index);
  std::optional<ClockTime> digitClock(std::size_t index);
  std::optional<ClockTime> isoClock(std::size_t index);
  std::optional<ClockTime> wordClock(std::size_t index);
  std::optional<ClockTime> spelledHour(std::size_t index);
  std::optional<ClockTime> pastOrBefore(int minutes, std::size_t index);
  bool hourNumber(std::size_t index, int& hour);
  void afterHour(ClockTime& clock);
  void withPart(ClockTime& clock);
  void withZone(ClockTime& clock);
  bool mayFollowHour(std::size_t index);
  std::optional<ClockSpan> clockSpan(std::size_t index, Beside beside);
  static void settle(ClockSpan& span, std::optional<int> partHour);

  // Days (date_grammar_day.cpp, date_grammar_numeric.cpp, date_grammar_relative.cpp).
  std::optional<NamedDay> daySpan(std::size_t index);
  std::optional<NamedDay> day(std::size_t index);
  std::optional<NamedDay> plainDay(std::size_t index);
  std::optional<NamedDay> absoluteDay(std::size_t index);
  std::optional<NamedDay> numericDay(std::size_t index);
  std::optional<NamedDay> monthFirst(std::size_t index);
  std::optional<NamedDay> dayFirst(std::size_t index);
  std::optional<NamedDay> dayOfMonth(std::size_t index, int weekday);
  std::optional<NamedDay> weekdayFirst(std::size_t index);
  std::optional<NamedDay> modifiedFirst(std::size_t index);
  std::optional<NamedDay> unitFirst(std::size_t index);
  std::optional<NamedDay> amountFirst(std::size_t index);
  std::optional<NamedDay> edgeFirst(std::size_t index);
  std::optional<Amount> amount(std::size_t index);
  NamedDay fromNow(const Amount& amount, int direction);
  std::optional<DayNumber> dayNumber(std::size_t index);
  std::optional<std::size_t> nextWeek(std::size_t index, int& weeks);
  bool trustedMonth(std::size_t index, bool confirmed);
  enum class Year { none, read, wrong };
  Year year(std::size_t& index, int& year);
  NamedDay dated(int year, int month, int day, std::size_t end);
  void withDayPart(NamedDay& day);
  static void withLastDay(NamedDay& day, int lastDay);
  bool joinRange(NamedDay& first, const NamedDay& second);

  // Whole expressions (date_grammar.cpp).
  std::optional<DateExpression> expression(std::size_t index);
  std::optional<DateExpression> dayThenClock(std::size_t index);
  std::optional<DateExpression> clockThenDay(std::size_t index);
  void readClockAfterDay(DateExpression& expression);
  void readFinish(DateExpression& expression);
  void readSpan(DateExpression& expression);
  bool inGoodCompany(const DateExpression& expression);

  DateTokens& tokens_;
  const DateCalendar& calendar_;
  DateHabits habits_;
  int language_ = 0;
  const DateLanguage* words_ = nullptr;
};

}  // namespace lumeno::detect
