#include <gtest/gtest.h>

#include "suggest/detect/detect.h"
#include "unit/detect/corpus.h"
#include "unit/detect/linear_cost.h"

namespace lumeno::detect {
namespace {

using namespace Qt::StringLiterals;

TEST(Links, FindsWhatTheCorpusMarks) {
  corpus::Score score;
  for (const corpus::Case& c : corpus::read(u"links.txt"_s)) {
    std::vector<std::pair<qsizetype, QString>> found;
    QStringList urls;
    for (const LinkMatch& match : links(c.text)) {
      found.emplace_back(match.start, c.text.mid(match.start, match.length));
      urls.append(QString::fromLatin1(match.url.toEncoded()));
    }
    score.check(c, found);
    if (c.expectation.isEmpty()) continue;
    EXPECT_EQ(urls.join(u' '), c.expectation) << "line " << c.line;
  }
}

TEST(Links, CostIsLinear) {
  for (const QString& piece : cost::hostilePieces()) {
    const auto detect = [](const QString& text) { (void)links(text); };
    const double small = cost::stepsPerCharacter(piece, 4000, detect);
    const double large = cost::stepsPerCharacter(piece, 32000, detect);
    EXPECT_LE(large, small * 1.5 + 1) << qPrintable(piece);
    EXPECT_LE(large, 40) << qPrintable(piece);
  }
}

TEST(Links, MatchesTearNoCharacterApart) {
  // The joiner belongs to the last letter of the host, so the host cannot end before it.
  EXPECT_TRUE(links(u"https://example.com\u200D x"_s).empty());
  EXPECT_TRUE(links(u"anna@example.com\uFE0F\u200D"_s).empty());
  const auto found = links(u"x\u0301 example.com\u2019s \U0001F600https://example.com\U0001F600"_s);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].start, 3);
  EXPECT_EQ(found[0].length, 11);
  EXPECT_EQ(found[1].start, 19);
  EXPECT_EQ(found[1].length, 19);
}

}  // namespace
}  // namespace lumeno::detect
