#include "hud/long_text.h"

#include <gtest/gtest.h>

#include <QPainter>

#include "hud/visible_text.h"
#include "support/print_text.h"

using namespace Qt::StringLiterals;

namespace lumeno {
namespace {

TEST(VisibleTextTest, ShowsWhatWouldBeHidden) {
  struct Case {
    QString text;
    QString shown;
  };
  const std::vector<Case> cases = {
      {u"plain ünïcode 漢字 👍🏽\n\tkept"_s, u"plain ünïcode 漢字 👍🏽\n\tkept"_s},
      {QString(u'a') + QChar(0) + u'\x1B' + u'\x7F' + u'\r' + u'b', u"a␀␛␡␍b"_s},
      {u"a\u202Eb\u2028\u0085\u200B"_s, u"a⟨U+202E⟩b⟨U+2028⟩⟨U+0085⟩⟨U+200B⟩"_s},
      {u"می\u200Cخواهم 👩\u200D🚀"_s, u"می\u200Cخواهم 👩\u200D🚀"_s},
      {QString(u'a') + QChar(0xD83D) + u'b' + QChar(0xDC4D), u"a\uFFFDb\uFFFD"_s},
      {QString::fromUcs4(U"x\U000E0041"), u"x⟨U+E0041⟩"_s},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(visibleText(each.text), each.shown);
    EXPECT_EQ(visibleText(each.shown), each.shown) << "what is shown is shown as it is";
  }
}

TEST(VisibleTextTest, OutputLosesItsEscapeSequences) {
  struct Case {
    QString text;
    QString shown;
  };
  const std::vector<Case> cases = {
      {u"\x1B[1;31mred\x1B[0m and \x1B[38;2;1;2;3mmore\x1B[K"_s, u"red and more"_s},
      {u"\x1B]0;a title\x07text\x1B]8;;http://a.b\x1B\\link\x1B(B"_s, u"textlink"_s},
      {u"\x1B[31"_s, u"␛[31"_s},
      {u"\x1B]0;no end\nnext"_s, u"␛]0;no end\nnext"_s},
      {u"a\x1B"_s, u"a␛"_s},
  };
  for (const Case& each : cases) EXPECT_EQ(visibleOutput(each.text), each.shown);
}

class LongTextTest : public testing::Test {
 protected:
  static constexpr double lineHeight = 18;
  static constexpr double window = 220;

  LongTextTest() {
    QFont font(u"monospace"_s);
    font.setPixelSize(12);
    text.setStyle(font, 300, lineHeight);
  }
  [[nodiscard]] QString seenAt(double top) {
    const auto first = text.positionAt({0, 1}, top);
    return text.textIn({first, text.positionAt({1000, window - 1}, top)});
  }
  void draw(double top) {
    QImage image(300, static_cast<int>(window), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    text.draw(painter, {Qt::black, Qt::blue, Qt::yellow}, top, window, std::nullopt, std::nullopt);
  }

  LongText text;
};

TEST_F(LongTextTest, LaysOutOnlyWhatIsLookedAt) {
  QString lines;
  for (int i = 0; i < 1'000'000; ++i) lines += u"line %1\n"_s.arg(i);
  lines.chop(1);
  text.setText(lines);
  EXPECT_EQ(text.height(), 1'000'000 * lineHeight);
  draw(0);
  EXPECT_TRUE(seenAt(0).startsWith(u"line 0\nline 1\n"_s));
  draw(500'000 * lineHeight);
  EXPECT_TRUE(seenAt(500'000 * lineHeight).startsWith(u"line 500000\n"_s))
      << seenAt(9e6).left(40).toStdString();
  draw(text.height() - window);
  EXPECT_TRUE(seenAt(text.height() - window).endsWith(u"\nline 999999"_s));
  EXPECT_LT(text.layoutCount(), 12);
}

TEST_F(LongTextTest, ALineOfAnyLengthIsLaidOutInParts) {
  text.setText(QString(3'000'000, u'x') + u"end"_s);
  draw(text.height() / 2);
  draw(text.height() - window);
  EXPECT_TRUE(seenAt(text.height() - window).endsWith(u"xend"_s));
  EXPECT_LT(text.layoutCount(), 12);
}

TEST_F(LongTextTest, EndsExactlyAtItsEndHoweverWrongTheReckoning) {
  // Wide characters and many sequences: the lengths say little about the heights.
  QString lines;
  for (int i = 0; i < 3000; ++i) {
    lines += i % 3 == 0 ? QString(70, QChar(0x6F22)) : u"\x1B[31m"_s.repeated(30) + u"short"_s;
    lines += u'\n';
  }
  text.setText(lines + u"the last"_s);
  const double bottom = text.height();
  EXPECT_TRUE(seenAt(bottom - window).endsWith(u"\nthe last"_s));
  const auto last = text.positionAt({1000, window - 2}, bottom - window);
  EXPECT_EQ(text.positionAt({1000, window + 500}, bottom - window), last);
  // Every piece is passed on the way down, and none twice.
  LongText::Position previous;
  for (double top = 0; top <= bottom - window; top += window / 4) {
    const auto at = text.positionAt({0, 0}, top);
    EXPECT_GE(at, previous);
    previous = at;
  }
}

TEST_F(LongTextTest, KeepsEveryCharacterWhereverItIsCut) {
  const QString piece = u"some words\tand 👍🏽 and \x1B[1;32mgreen\x1B[0m\r\nover\rwritten\n\n"_s;
  const QString shownPiece = u"some words\tand 👍🏽 and green\nover\nwritten\n\n"_s;
  for (const int padding : {0, 1, 2, 3, 5, 7, 11}) {
    const QString start(padding + 2040, u'.');
    text.setText(start + piece.repeated(200) + QString(5000, u'-') + u"\x1B[31m👍"_s.repeated(2000));
    const auto end = text.positionAt({1e6, 1e6}, text.height() - window);
    EXPECT_EQ(text.textIn({{0, 0}, end}),
              start + shownPiece.repeated(200) + QString(5000, u'-') + u"👍"_s.repeated(2000));
  }
}

TEST_F(LongTextTest, FindsWordsAndMarks) {
  text.setText(u"rm -rf build\nls"_s);
  text.setMarks({{7, 5}}, Qt::red);
  EXPECT_EQ(text.textIn(text.wordAt({0, 8})), u"build"_s);
  EXPECT_EQ(text.extentOf({7, 5}), (std::pair{0.0, lineHeight}));
  EXPECT_EQ(text.extentOf({13, 2}), (std::pair{lineHeight, 2 * lineHeight}));
  text.setText({});
  EXPECT_EQ(text.height(), 0);
  draw(0);
}

}  // namespace
}  // namespace lumeno
