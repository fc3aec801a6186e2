#include "calendar/date_texts.h"

#include <gtest/gtest.h>

#include <map>

#include "support/print_text.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

const QTimeZone berlin("Europe/Berlin");
const QTimeZone newYork("America/New_York");

QDateTime utc(int year, int month, int day, int hour = 0, int minute = 0) {
  return QDateTime(QDate(year, month, day), QTime(hour, minute), Qt::UTC);
}

TEST(DateTexts, AreWrittenAsTheLocaleDoes) {
  const struct {
    const char* locale;
    QString range;
    QString moment;
  } cases[] = {
      {"en_US", u"Monday, November 16, 2026 · 3:00 PM – 4:00 PM"_s, u"Nov 16, 2026 at 3:00 PM"_s},
      {"C", u"Monday, November 16, 2026 · 3:00 PM – 4:00 PM"_s, u"Nov 16, 2026 at 3:00 PM"_s},
      {"en_GB", u"Monday, 16 November 2026 · 15:00 – 16:00"_s, u"16 Nov 2026 at 15:00"_s},
      {"de_DE", u"Montag, 16. November 2026 · 15:00 – 16:00"_s, u"16.11.2026 um 15:00"_s},
      {"fr_FR", u"lundi 16 novembre 2026 · 15:00 – 16:00"_s, u"16 nov. 2026 à 15:00"_s},
      {"ja_JP", u"2026年11月16日月曜日 · 15:00 – 16:00"_s, u"2026/11/16 15:00"_s},
      {"zh_TW", u"2026年11月16日 星期一 · 下午3:00 – 下午4:00"_s, u"2026年11月16日 下午3:00"_s},
      {"ar_EG", u"الاثنين، ١٦ نوفمبر ٢٠٢٦ · ٣:٠٠ م – ٤:٠٠ م"_s,
       u"١٦‏/١١‏/٢٠٢٦ في ٣:٠٠ م"_s},
      {"sr_Latn_RS", u"ponedeljak, 16. novembar 2026. · 15:00 – 16:00"_s, u"16. 11. 2026. 15:00"_s},
      {"th_TH", u"วันจันทร์ที่ 16 พฤศจิกายน พ.ศ. 2569 · 15:00 – 16:00"_s, u"16 พ.ย. 2569 เวลา 15:00"_s},
  };
  for (const auto& test : cases) {
    const DateTexts texts(QLocale(QString::fromLatin1(test.locale)), QTimeZone::utc());
    EXPECT_EQ(texts.range(utc(2026, 11, 16, 15), utc(2026, 11, 16, 16)), test.range) << test.locale;
    EXPECT_EQ(texts.moment(utc(2026, 11, 16, 15)), test.moment) << test.locale;
  }
}

TEST(DateTexts, GoByTheClockOfTheZone) {
  const struct {
    const char* what;
    QTimeZone zone;
    QDateTime start;
    QDateTime end;
    QString range;
  } cases[] = {
      {"midnight", QTimeZone::utc(), utc(2026, 5, 1), utc(2026, 5, 1, 12),
       u"Friday, May 1, 2026 · 12:00 AM – 12:00 PM"_s},
      {"across days", QTimeZone::utc(), utc(2026, 5, 1, 23, 30), utc(2026, 5, 2, 0, 30),
       u"Friday, May 1, 2026 · 11:30 PM – 12:30 AM"_s},
      {"another day there", newYork, utc(2027, 1, 1, 3), utc(2027, 1, 1, 6),
       u"Thursday, December 31, 2026 · 10:00 PM – 1:00 AM"_s},
      {"over the gap", berlin, utc(2026, 3, 29, 0, 30), utc(2026, 3, 29, 1, 30),
       u"Sunday, March 29, 2026 · 1:30 AM – 3:30 AM"_s},
      {"within the fold", berlin, utc(2026, 10, 25, 0, 30), utc(2026, 10, 25, 1, 30),
       u"Sunday, October 25, 2026 · 2:30 AM – 2:30 AM"_s},
      {"before 1970", berlin, utc(1965, 7, 1, 8, 5), utc(1965, 7, 1, 9, 5),
       u"Thursday, July 1, 1965 · 9:05 AM – 10:05 AM"_s},
      {"far ahead", QTimeZone::utc(), utc(2999, 12, 31, 23), utc(3000, 1, 1),
       u"Tuesday, December 31, 2999 · 11:00 PM – 12:00 AM"_s},
      {"a bare offset", QTimeZone(20700), utc(2026, 5, 1), utc(2026, 5, 1, 1),
       u"Friday, May 1, 2026 · 5:45 AM – 6:45 AM"_s},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(DateTexts(QLocale(u"en_US"_s), test.zone).range(test.start, test.end), test.range) << test.what;
  }
}

TEST(DateTexts, LocaleForDatesIsThatOfTheEnvironment) {
  std::map<const char*, QByteArray> before;
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG", "TZ"}) {
    before[variable] = qgetenv(variable);
    qunsetenv(variable);
  }
  qputenv("TZ", "UTC");
  const auto now = [] { return DateTexts::current().moment(utc(2026, 11, 16, 12)); };
  // Each is stronger than those before it.
  const struct {
    const char* variable;
    const char* locale;
    QString moment;
  } cases[] = {{"LANG", "fr_FR.UTF-8", u"16 nov. 2026 à 12:00"_s},
               {"LC_TIME", "sr_RS@latin", u"16. 11. 2026. 12:00"_s},
               {"LC_TIME", "uz_UZ.UTF-8@cyrillic", u"16 ноя, 2026 12:00"_s},
               {"LC_ALL", "de_DE.UTF-8", u"16.11.2026 um 12:00"_s}};
  for (const auto& test : cases) {
    qputenv(test.variable, test.locale);
    EXPECT_EQ(now(), test.moment) << test.locale;
  }
  for (const auto& [variable, value] : before) {
    value.isNull() ? qunsetenv(variable) : qputenv(variable, value);
  }
}

}  // namespace
}  // namespace lumeno
