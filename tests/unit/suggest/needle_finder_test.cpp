#include "suggest/needle_finder.h"

#include <gtest/gtest.h>

#include <QString>
#include <algorithm>
#include <random>

#include "suggest/text_units.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

TEST(NeedleFinder, FindsWhatPlainSearchFinds) {
  static constexpr auto overlapping =
      std::to_array<QStringView>({u"he", u"she", u"hers", u"his", u"e", u"rsh", u"\n\n"});
  static constexpr auto others = std::to_array<QStringView>({u"hers", u" ", u"s h"});
  const scan::NeedleFinder finder({overlapping, others});
  std::mt19937 random(5);
  constexpr QStringView alphabet = u"hersi \né";
  for (int round = 0; round < 20000; ++round) {
    QString text;
    for (auto length = random() % 12; length > 0; --length)
      text += alphabet[static_cast<qsizetype>(random() % 8)];
    // In two pieces: a string may lie across the joint.
    const auto cut = static_cast<qsizetype>(random() % static_cast<unsigned>(text.size() + 1));
    scan::NeedleFinder::Progress progress;
    finder.feed(scan::Units(QStringView(text).first(cut)), progress);
    finder.feed(scan::Units(QStringView(text).sliced(cut)), progress);

    const auto expected = [&](const auto& needles) {
      return std::ranges::count_if(needles, [&](QStringView needle) { return text.contains(needle); });
    };
    ASSERT_EQ(finder.count(progress, 0), expected(overlapping)) << text.toStdString();
    ASSERT_EQ(finder.count(progress, 1), expected(others)) << text.toStdString();
  }
}

}  // namespace
}  // namespace lumeno
