#include <gtest/gtest.h>

#include <QStringList>

#include "suggest/cue_finder.h"
#include "suggest/needle_finder.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

/// A text that counts how often one of its units is read.
class CountingText {
 public:
  explicit CountingText(const QString& text) : units_(text) {}
  [[nodiscard]] qsizetype size() const { return units_.size(); }
  char16_t operator[](qsizetype i) const {
    ++reads_;
    return units_[i];
  }
  [[nodiscard]] std::uint64_t reads() const { return reads_; }

 private:
  scan::Units units_;
  mutable std::uint64_t reads_ = 0;
};

std::uint64_t readsOf(const QString& text) {
  const CountingText counting(text);
  (void)scan::findCues(counting);
  (void)scan::hasFilename(counting);
  (void)scan::isAcronym(counting);
  return counting.reads();
}

TEST(Linearity, ScansReadHostileTextAFixedNumberOfTimes) {
  const QStringList shapes = {
      u"a"_s,
      u"\n"_s,
      u"\r\n"_s,
      u" "_s,
      u"\n "_s,
      u"<a"_s,
      u"<a<a>"_s,
      u"a."_s,
      u"a.a:"_s,
      u".a:1"_s,
      u"a.b:1:x"_s,
      u"at x("_s,
      u"at\n"_s,
      u"\nat x"_s,
      u"at\n\n"_s,
      u"1"_s,
      u"1:"_s,
      u"12:3"_s,
      u"\u0301"_s,
      u":\u0301"_s,
      u"1\u0301:11\u0301"_s,
      u"\u200D"_s,
      u"s "_s,
      u"st "_s,
      u"stack trac "_s,
      u"what d "_s,
      u"permission denie "_s,
      u"{ "_s,
      u"="_s,
      u"?"_s,
      u"a-"_s,
      u"A"_s,
      u"ß"_s,
      u"\uFB06 "_s,
      u"\U0001F600"_s,
      u"\U0001D7CE:"_s,
      QString(QChar(0xD83D)),
  };
  constexpr qsizetype repeats = 500;
  for (const QString& shape : shapes) {
    for (const QString& start : {QString(), u"<a"_s, u"at "_s, u"a."_s, u"1:"_s}) {
      const std::uint64_t once = readsOf(start + shape.repeated(repeats));
      const std::uint64_t eightfold = readsOf(start + shape.repeated(8 * repeats));
      EXPECT_LE(eightfold, 8 * once + 1000) << start.toStdString() << " and many " << shape.toStdString();
    }
  }
}

TEST(Linearity, NeedlesAreFoundInOneReading) {
  static constexpr auto words = std::to_array<QStringView>({u"aaab", u"aab"});
  const scan::NeedleFinder finder({words});
  const QString text = u"a"_s.repeated(1000);
  const CountingText counting(text);
  scan::NeedleFinder::Progress progress;
  finder.feed(counting, progress);
  EXPECT_EQ(counting.reads(), 1000u);
}

}  // namespace
}  // namespace lumeno
