#include "base/text.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace lumeno::text {
namespace {

using namespace Qt::StringLiterals;

QStringList strings(const std::vector<QStringView>& views) {
  QStringList all;
  for (const QStringView view : views) all += view.toString();
  return all;
}

TEST(Trimmed, RemovesEveryBlankAndLineBreakAtTheEnds) {
  EXPECT_EQ(trimmed(u"\t\n\v\f\r\u0085\u00A0\u1680\u2003\u2028\u2029\u202F\u205F\u3000 a b \u3000\n"),
            u"a b");
  EXPECT_EQ(trimmed(u" \r\n "), u"");
  EXPECT_EQ(trimmed(u""), u"");
  // A zero-width space and a word joiner are no white space.
  EXPECT_EQ(trimmed(u" \u200Ba\u2060 "), u"\u200Ba\u2060");
}

TEST(IsUnseen, TellsWhatCannotBeSeen) {
  for (const char32_t c : std::u32string(U"\x1B\x7F\u0085\u00AD\u061C\u115F\u200B\u200D\u2028\u202E\u2066"
                                         U"\u3164\uFEFF\uFFFC\U000E0041")) {
    EXPECT_TRUE(isUnseen(c)) << uint32_t(c);
  }
  for (const char32_t c : std::u32string(U"a \n\tü漢\u00A0\u0301\uFE0F👍")) {
    EXPECT_FALSE(isUnseen(c)) << uint32_t(c);
  }
  const QStringView text = u"a👍";
  EXPECT_EQ(characterAt(text, 1), U'👍');
  EXPECT_TRUE(isUnseen(characterAt(text, 2))) << "half a character";
}

TEST(CharacterCount, CountsWhatUsersSeeAsOne) {
  struct Case {
    QStringView text;
    qsizetype count;
  };
  for (const Case& c : {Case{u"", 0}, Case{u"abc", 3}, Case{u"e\u0301a", 2}, Case{u"\r\n", 1},
                        Case{u"👨‍👩‍👧", 1}, Case{u"🇩🇪🇫🇷", 2}, Case{u"각", 1}}) {
    EXPECT_EQ(characterCount(c.text), c.count);
    for (const qsizetype limit : {0, 1, 2, 3}) {
      EXPECT_EQ(hasMoreCharactersThan(c.text, limit), c.count > limit) << limit;
    }
  }
}

TEST(FirstCharacters, CutBetweenCharacters) {
  const QString text = u"e\u0301👨‍👩‍👧x"_s;
  EXPECT_EQ(firstCharacters(text, 0), u"");
  EXPECT_EQ(firstCharacters(text, 1), u"e\u0301");
  EXPECT_EQ(firstCharacters(text, 2), u"e\u0301👨‍👩‍👧");
  EXPECT_EQ(firstCharacters(text, 3), text);
  EXPECT_EQ(firstCharacters(text, 9), text);
}

TEST(Words, AreRunsBetweenWhiteSpace) {
  const QString text = u" one\u00A0two\n\nthree-four\u3000"_s;
  EXPECT_EQ(strings(words(text)), (QStringList{u"one"_s, u"two"_s, u"three-four"_s}));
  EXPECT_EQ(wordCount(text), 3);
  EXPECT_EQ(wordCount(u" \n"), 0);
  EXPECT_EQ(wordCount(u"a\u200Bb"), 1);
}

TEST(Lines, SplitAtEveryLineBreakAndDropEmptyPieces) {
  EXPECT_EQ(strings(lines(u"\na\r\nb\r\rc\u0085d\u2028e\u2029f\vg\fh\n")),
            (QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"g"_s, u"h"_s}));
  EXPECT_EQ(strings(lines(u" \n")), QStringList{u" "_s});
  EXPECT_TRUE(lines(u"\n\r\n").empty());
}

TEST(Utf8, IsTakenWholeOrNotAtAll) {
  EXPECT_EQ(decodedUtf8("h\xC3\xA9\n"), u"hé\n"_s);
  EXPECT_EQ(decodedUtf8(""), QString());
  EXPECT_EQ(decodedUtf8(QByteArrayView("a\0b", 3)), QString::fromUtf16(u"a\0b", 3));
  EXPECT_EQ(decodedUtf8("\xEF\xBB\xBFx"), u"\uFEFFx"_s);
  EXPECT_EQ(decodedUtf8("\xF0\x9F\x98\x80"), u"😀"_s);
  for (const char* invalid : {"\xFF", "ok\xC3", "\xC3(", "\xED\xA0\x80", "\xC0\x80", "\xF4\x90\x80\x80"}) {
    EXPECT_EQ(decodedUtf8(invalid), std::nullopt) << QByteArray(invalid).toHex().constData();
  }
}

}  // namespace
}  // namespace lumeno::text
