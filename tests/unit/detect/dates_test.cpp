#include <gtest/gtest.h>

#include <QTimeZone>

#include "corpus.h"
#include "linear_cost.h"
#include "suggest/detect/detect.h"

namespace lumeno::detect {
namespace {

using namespace Qt::StringLiterals;

/// "@region LOCALE ZONE NOW" of the case files.
Surroundings surroundingsOf(const QString& region) {
  const QStringList parts = region.split(u' ');
  Surroundings surroundings{{}, QTimeZone(parts[1].toLatin1()), QLocale(parts[0])};
  surroundings.now = QDateTime(QDate::fromString(parts[2].left(10), Qt::ISODate),
                               QTime::fromString(parts[2].mid(11), Qt::ISODate), surroundings.timeZone);
  return surroundings;
}

/// The way the case files write a match.
QString written(const DateMatch& match) {
  const QTime time = match.date.time();
  QString text = match.date.toString(u"yyyy-MM-dd HH:mm"_s);
  if (time.second() != 0 || time.msec() != 0) text += time.toString(u":ss"_s);
  if (time.msec() != 0) text += time.toString(u".zzz"_s);
  if (match.durationSeconds == 0) return text;
  return text + u" +%1:%2"_s.arg(match.durationSeconds / 3600)
                    .arg(match.durationSeconds / 60 % 60, 2, 10, QChar(u'0'));
}

void checkCorpus(const QString& file, qsizetype atLeast) {
  const std::vector<corpus::Case> cases = corpus::read(file);
  EXPECT_GE(static_cast<qsizetype>(cases.size()), atLeast);
  corpus::Score score;
  for (const corpus::Case& c : cases) {
    const Surroundings surroundings = surroundingsOf(c.region);
    const std::vector<DateMatch> matches = dates(c.text, surroundings);
    std::vector<std::pair<qsizetype, QString>> found;
    QStringList times;
    for (const DateMatch& match : matches) {
      found.emplace_back(match.start, c.text.mid(match.start, match.length));
      times << written(match);
      EXPECT_EQ(match.date.timeZone(), surroundings.timeZone);
    }
    score.check(c, found);
    EXPECT_EQ(times.join(u"; "_s).toStdString(), c.expectation.toStdString())
        << "line " << c.line << ": " << qPrintable(c.text);
    const auto first = firstDate(c.text, surroundings);
    ASSERT_EQ(first.has_value(), !matches.empty());
    if (first) {
      EXPECT_EQ(first->start, matches.front().start);
    }
  }
}

TEST(Dates, English) {
  checkCorpus(u"dates_en.txt"_s, 150);
}

TEST(Dates, German) {
  checkCorpus(u"dates_de.txt"_s, 60);
}

TEST(Dates, French) {
  checkCorpus(u"dates_fr.txt"_s, 60);
}

TEST(Dates, Spanish) {
  checkCorpus(u"dates_es.txt"_s, 60);
}

// Of the two instants at which a clock put back shows the same time, the first.
TEST(Dates, AreRealInstantsWhenClocksChange) {
  const Surroundings surroundings = surroundingsOf(u"en_US Europe/Berlin 2026-10-24T12:00:00"_s);
  const auto instant = [&](const QString& text) {
    const auto match = firstDate(text, surroundings);
    return match ? match->date.toUTC().toString(u"yyyy-MM-ddTHH:mm"_s) : u"none"_s;
  };
  EXPECT_EQ(instant(u"2026-10-25 02:30"_s), u"2026-10-25T00:30"_s);
  EXPECT_EQ(instant(u"2027-03-28 02:30"_s), u"2027-03-28T01:30"_s);
  EXPECT_EQ(instant(u"tomorrow 3:30 am"_s), u"2026-10-25T02:30"_s);
  EXPECT_EQ(instant(u"in 24 hours"_s), u"2026-10-25T10:00"_s);
  EXPECT_EQ(instant(u"in one day"_s), u"2026-10-25T11:00"_s);
  EXPECT_EQ(instant(u"1900-01-01 12:00"_s), u"1900-01-01T11:00"_s);
}

// No text, however shaped, takes more than a constant of steps for each character.
TEST(Dates, CostIsLinear) {
  const Surroundings surroundings = surroundingsOf(u"en_US Europe/Berlin 2026-11-18T10:30:00"_s);
  std::vector<QString> pieces = cost::hostilePieces();
  for (const char16_t* piece : {u"3pm ",
                                u"16 Nov ",
                                u"next ",
                                u"in 1 ",
                                u"Mon ",
                                u"from 2 to ",
                                u"a.",
                                u"a ",
                                u"of ",
                                u"day after ",
                                u"3-",
                                u"10:30-",
                                u"2026-11-16T15:00:00+01:00 ",
                                u"June 3-",
                                u"1/",
                                u"1:",
                                u"half past ",
                                u"de la ",
                                u"Monday, ",
                                u"de l'",
                                u"12.",
                                u"at 5 "}) {
    pieces.push_back(QString::fromUtf16(piece));
  }
  const auto detect = [&](const QString& text) { (void)dates(text, surroundings); };
  for (const QString& piece : pieces) {
    const double small = cost::stepsPerCharacter(piece, 4'000, detect);
    const double large = cost::stepsPerCharacter(piece, 32'000, detect);
    EXPECT_LE(large, small * 1.1 + 0.1) << qPrintable(piece);
    EXPECT_LE(large, 200) << qPrintable(piece);
  }
}

}  // namespace
}  // namespace lumeno::detect
