#include <gtest/gtest.h>

#include "suggest/detect/detect.h"
#include "unit/detect/corpus.h"
#include "unit/detect/linear_cost.h"

namespace lumeno::detect {
namespace {

using namespace Qt::StringLiterals;

TEST(Addresses, FindsWhatTheCorpusMarks) {
  corpus::Score score;
  for (const corpus::Case& c : corpus::read(u"addresses.txt"_s)) {
    std::vector<std::pair<qsizetype, QString>> found;
    for (const AddressMatch& match : addresses(c.text)) {
      found.emplace_back(match.start, c.text.mid(match.start, match.length));
    }
    score.check(c, found);
    EXPECT_EQ(hasAddress(c.text), !found.empty()) << "line " << c.line;
  }
}

TEST(Addresses, CostIsLinear) {
  for (const QString& piece : cost::hostilePieces()) {
    const auto detect = [](const QString& text) { (void)addresses(text); };
    const double small = cost::stepsPerCharacter(piece, 4000, detect);
    const double large = cost::stepsPerCharacter(piece, 32000, detect);
    EXPECT_LE(large, small * 1.5 + 1) << qPrintable(piece);
    EXPECT_LE(large, 400) << qPrintable(piece);
  }
}

}  // namespace
}  // namespace lumeno::detect
