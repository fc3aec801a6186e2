// Locales know three ways to put a date and a time together. The one for a sentence ("… at 3:00 PM") comes
// with long dates only, so it is taken from there and given the medium date.

#include "calendar/date_texts.h"

#include <unicode/simpletz.h>
#include <unicode/smpdtfmt.h>

#include <memory>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

using Style = icu::DateFormat::EStyle;
using Format = std::unique_ptr<icu::DateFormat>;

QString toQString(const icu::UnicodeString& text) {
  QString result(reinterpret_cast<const QChar*>(text.getBuffer()), text.length());
  // The narrow blanks between numbers and their units are an ornament that breaks searching and comparing.
  return result.replace(u'\u202F', u' ');
}

/// The moment on the wall clock of the zone. The offset comes from the system, as everywhere else in the
/// program, so that two collections of time zone rules cannot disagree.
QString formatted(icu::DateFormat* format, const QDateTime& moment, const QTimeZone& zone) {
  if (!format || !moment.isValid()) return {};
  const int32_t offset = zone.offsetFromUtc(moment) * 1000;
  format->adoptTimeZone(new icu::SimpleTimeZone(offset, icu::UnicodeString(u"local")));
  icu::UnicodeString text;
  format->format(static_cast<UDate>(moment.toMSecsSinceEpoch()), text);
  return toQString(text);
}

Format dateFormat(Style style, const icu::Locale& locale) {
  return Format(icu::DateFormat::createDateInstance(style, locale));
}
Format timeFormat(const icu::Locale& locale) {
  return Format(icu::DateFormat::createTimeInstance(icu::DateFormat::kShort, locale));
}

icu::UnicodeString patternOf(const icu::DateFormat* format) {
  icu::UnicodeString pattern;
  if (const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format)) simple->toPattern(pattern);
  return pattern;
}

/// The medium date and the short time, joined as the locale joins a long date and a time.
Format momentFormat(const icu::Locale& locale) {
  const auto joined = [&](Style style) {
    return Format(icu::DateFormat::createDateTimeInstance(style, icu::DateFormat::kShort, locale));
  };
  const auto longFormat = joined(icu::DateFormat::kLong);
  icu::UnicodeString pattern = patternOf(longFormat.get());
  const auto longDate = patternOf(dateFormat(icu::DateFormat::kLong, locale).get());
  const auto mediumDate = patternOf(dateFormat(icu::DateFormat::kMedium, locale).get());
  const int32_t at = longDate.isEmpty() ? -1 : pattern.indexOf(longDate);
  if (at < 0 || mediumDate.isEmpty()) return joined(icu::DateFormat::kMedium);
  pattern.replace(at, longDate.length(), mediumDate);
  auto format = joined(icu::DateFormat::kMedium);
  if (auto* simple = dynamic_cast<icu::SimpleDateFormat*>(format.get())) simple->applyPattern(pattern);
  return format;
}

/// The locale of a name such as "sr_RS.UTF-8@latin". The toolkit takes no notice of what follows the "@".
QLocale localeNamed(const QString& name) {
  const QLocale locale(name);
  const QString modifier = name.section(u'@', 1);
  const QLocale::Script script = modifier == "latin"_L1      ? QLocale::LatinScript
                                 : modifier == "cyrillic"_L1 ? QLocale::CyrillicScript
                                                             : locale.script();
  return QLocale(locale.language(), script, locale.territory());
}

/// What the user's environment says of dates; the toolkit's system locale goes by the language of numbers.
QLocale localeForDates() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    const QString name = qEnvironmentVariable(variable);
    if (!name.isEmpty()) return localeNamed(name);
  }
  return QLocale::system();
}

icu::Locale icuLocale(const QByteArray& languageTag) {
  UErrorCode status = U_ZERO_ERROR;
  return icu::Locale::forLanguageTag(languageTag.constData(), status);
}

}  // namespace

DateTexts::DateTexts(const QLocale& locale, const QTimeZone& zone)
    : languageTag_(locale.bcp47Name().toLatin1()), zone_(zone) {}

DateTexts DateTexts::current() {
  return {localeForDates(), QTimeZone::systemTimeZone()};
}

QString DateTexts::range(const QDateTime& start, const QDateTime& end) const {
  const icu::Locale locale = icuLocale(languageTag_);
  const auto day = dateFormat(icu::DateFormat::kFull, locale);
  const auto time = timeFormat(locale);
  return formatted(day.get(), start, zone_) + u" · "_s + formatted(time.get(), start, zone_) + u" – "_s +
         formatted(time.get(), end, zone_);
}

QString DateTexts::moment(const QDateTime& moment) const {
  return formatted(momentFormat(icuLocale(languageTag_)).get(), moment, zone_);
}

}  // namespace lumeno
