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

TEST(Links, MatchesLieOnCharacterBoundaries) {
  // A combining mark behind the link would be torn from its letter.
  EXPECT_TRUE(links(u"https://example.com/a) \u0301"_s).size() == 1);
  for (const LinkMatch& match : links(u"a\u0301https://example.com\u0301 example.com\U0001F1E9\u200D"_s)) {
    EXPECT_FALSE(match.start + match.length == 21);
  }
}

}  // namespace
}  // namespace lumeno::detect
