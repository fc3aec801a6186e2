#include <gtest/gtest.h>

#include "suggest/detect/detect.h"
#include "unit/detect/corpus.h"
#include "unit/detect/linear_cost.h"

namespace lumeno::detect {
namespace {

using namespace Qt::StringLiterals;

Surroundings in(const QString& region) {
  const QLocale locale(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::codeToTerritory(region));
  return {QDateTime(QDate(2026, 5, 1), QTime(12, 0), Qt::UTC), QTimeZone::utc(), locale};
}

TEST(Phones, FindsWhatTheCorpusMarks) {
  corpus::Score score;
  for (const corpus::Case& c : corpus::read(u"phones.txt"_s)) {
    std::vector<std::pair<qsizetype, QString>> found;
    QStringList numbers;
    for (const PhoneMatch& match : phones(c.text, in(c.region))) {
      found.emplace_back(match.start, c.text.mid(match.start, match.length));
      numbers.append(match.number);
    }
    score.check(c, found);
    const QStringList expected = c.expectation.isEmpty() ? c.marked : QStringList{c.expectation};
    EXPECT_EQ(numbers, expected) << "line " << c.line << ": " << qPrintable(c.text);
  }
}

TEST(Phones, CostIsLinear) {
  for (const QString& piece : cost::hostilePieces()) {
    const auto detect = [](const QString& text) { (void)phones(text, in(u"US"_s)); };
    const double small = cost::stepsPerCharacter(piece, 4000, detect);
    const double large = cost::stepsPerCharacter(piece, 32000, detect);
    EXPECT_LE(large, small * 1.5 + 1) << qPrintable(piece);
  }
}

TEST(DirectMatches, FirstPhoneIsTheFirstOneOutsideLinks) {
  const QString text = u"https://wa.me/+12127365000 then 212-736-5000, 212-736-5001\n212-736-5002 a@b.co"_s;
  const std::vector<DirectMatch> all = directMatches(text, in(u"US"_s));
  const std::vector<DirectMatch> some = linksAndFirstPhone(text, in(u"US"_s));
  ASSERT_EQ(all.size(), 5U);
  ASSERT_GE(some.size(), 3U);
  EXPECT_EQ(some[0].start, all[0].start);
  EXPECT_EQ(some[1].number, u"212-736-5000"_s);
  EXPECT_EQ(some.back().url, all.back().url);
  EXPECT_LT(some.size(), all.size());
}

TEST(DirectMatches, ComeInTextOrderAndTheLinkWins) {
  const QString text =
      u"+1 212 736 5000 https://example.com/x anna@example.com 212-736-5000 mailto:1@a.com"_s;
  const std::vector<DirectMatch> matches = directMatches(text, in(u"US"_s));
  QStringList found;
  for (const DirectMatch& match : matches) {
    const bool phone = match.type == DirectMatch::Type::phone;
    EXPECT_EQ(match.url.isEmpty(), phone);
    EXPECT_EQ(match.number.isEmpty(), !phone);
    found.append((phone ? u"phone "_s : u"link "_s) + text.mid(match.start, match.length));
  }
  EXPECT_EQ(found,
            (QStringList{u"phone +1 212 736 5000"_s, u"link https://example.com/x"_s,
                         u"link anna@example.com"_s, u"phone 212-736-5000"_s, u"link mailto:1@a.com"_s}));
  EXPECT_TRUE(directMatches(u"https://wa.me/send?phone=+12127365000"_s, in(u"US"_s)).size() == 1);
}

}  // namespace
}  // namespace lumeno::detect
