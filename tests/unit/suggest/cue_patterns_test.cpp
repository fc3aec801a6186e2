#include "suggest/cue_patterns.h"

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/uniset.h>

#include <QStringList>
#include <random>

#include "reference_regex.h"
#include "suggest/cue_finder.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using testing::ReferenceRegex;

QString quoted(const QString& text) {
  QString shown;
  for (const QChar c : text) {
    const bool plain = c.unicode() > 0x20 && c.unicode() < 0x7F;
    shown += plain ? QString(c) : u"\\u%1"_s.arg(c.unicode(), 4, 16, QChar(u'0'));
  }
  return shown;
}

/// Characters that matching rules treat in a way of their own: blanks and line ends of all kinds, marks and
/// joiners, letters that fold or lowercase to others or to several, digits of other scripts, halves of
/// surrogate pairs.
const QStringList& oddPieces() {
  static const QStringList pieces = {
      u" "_s,
      u"  "_s,
      u"\t"_s,
      u"\n"_s,
      u"\r"_s,
      u"\r\n"_s,
      u"\v"_s,
      u"\f"_s,
      u"\u0085"_s,
      u"\u2028"_s,
      u"\u2029"_s,
      u"\u00A0"_s,
      u"\u3000"_s,
      u"\u200B"_s,
      u"\u0301"_s,
      u"\u0307"_s,
      u"\u0903"_s,
      u"\u200C"_s,
      u"\u200D"_s,
      u"\u00AD"_s,
      u"\uFE0F"_s,
      u"\u0130"_s,
      u"\u0131"_s,
      u"\u017F"_s,
      u"\u212A"_s,
      u"\u00DF"_s,
      u"\u1E9E"_s,
      u"\uFB00"_s,
      u"\uFB01"_s,
      u"\uFB05"_s,
      u"\uFB06"_s,
      u"\u1E97"_s,
      u"\u1E96"_s,
      u"\u0149"_s,
      u"\u0663"_s,
      u"\u0967"_s,
      u"\U0001D7CE"_s,
      u"\U0001F600"_s,
      u"\U0001F3FD"_s,
      u"\U0001F130"_s,
      u"\u24B6"_s,
      u"\uFF9E"_s,
      u"é"_s,
      u"ж"_s,
      u"字"_s,
      u"_"_s,
      u"-"_s,
      u"."_s,
      u":"_s,
      u"?"_s,
      u"a"_s,
      u"S"_s,
      u"x"_s,
      u"7"_s,
      u"\u0000"_s,
      QString(QChar(0xD83D)),
      QString(QChar(0xDE00)),
  };
  return pieces;
}

/// What strings for a pattern are made of besides the odd pieces.
QStringList ownPieces(const CuePattern& pattern) {
  switch (pattern.form) {
    case CueForm::listedWords: {
      QStringList pieces;
      for (const auto& phrase : scan::spellOut(pattern.source, 1)) pieces += {phrase.text, phrase.text};
      return pieces;
    }
    case CueForm::endsWithBrace:
      return {u"{"_s, u"}"_s};
    case CueForm::hasArrow:
      return {u"="_s, u">"_s, u"-"_s};
    case CueForm::hasTag:
      return {u"<"_s, u"</"_s, u">"_s, u"/"_s, u"b"_s, u"<a<a"_s};
    case CueForm::hasIndentedLine:
      return {u"\n   "_s, u"\n    "_s, u"    "_s, u"\r\n"_s};
    case CueForm::hasStackFrame:
      return {u"at"_s, u"AT "_s, u"at x("_s, u"("_s, u"\n at"_s, u"f(x)"_s};
    case CueForm::hasSourceLocation:
      return {u"a.b"_s, u":1"_s, u":12"_s, u"."_s, u":"_s, u"main.c:1:2"_s};
    case CueForm::hasClockTime:
      return {u"1"_s, u"12"_s, u":"_s, u"12:30"_s, u"1:2"_s};
    case CueForm::endsWithQuestionMark:
      return {u"?"_s, u"\n"_s, u"\r"_s};
  }
  return {};
}

class TextMaker {
 public:
  TextMaker(QStringList own, unsigned seed) : own_(std::move(own)), random_(seed) {}

  QString make() {
    QString text;
    for (unsigned count = pick(8); count > 0; --count) {
      QString piece = pick(5) < 2 ? any(oddPieces()) : any(own_);
      if (pick(6) == 0) piece = damaged(piece);
      if (pick(8) == 0) piece = piece.toUpper();
      text += piece;
      if (pick(3) == 0) text += u' ';
    }
    return text;
  }

 private:
  unsigned pick(qsizetype limit) { return static_cast<unsigned>(random_() % static_cast<unsigned>(limit)); }
  const QString& any(const QStringList& pieces) { return pieces[pick(pieces.size())]; }

  /// With one unit missing or an odd piece inside.
  QString damaged(QString piece) {
    const auto at = pick(piece.size());
    if (pick(2) == 0) return piece.remove(at, 1);
    return piece.insert(at, any(oddPieces()));
  }

  QStringList own_;
  std::mt19937 random_;
};

constexpr int textsPerPattern = 6000;

TEST(CuePatterns, EveryFormAnswersAsItsExpressionDoes) {
  unsigned seed = 1;
  CueSet bit = 1;
  for (const CuePattern& pattern : cuePatterns()) {
    ReferenceRegex reference(pattern.source, UREGEX_CASE_INSENSITIVE);
    ASSERT_TRUE(reference.isValid()) << pattern.source.toUtf8().constData();
    TextMaker maker(ownPieces(pattern), seed++);
    int hits = 0;
    for (int i = 0; i < textsPerPattern; ++i) {
      const QString text = maker.make();
      const bool expected = reference.matches(text);
      hits += expected ? 1 : 0;
      ASSERT_EQ((findCues(text) & bit) != 0, expected)
          << pattern.source.toUtf8().constData() << " on " << quoted(text).toStdString();
    }
    // Strings that always or never match would prove nothing.
    EXPECT_GT(hits, textsPerPattern / 50) << pattern.source.toUtf8().constData();
    EXPECT_LT(hits, textsPerPattern * 49 / 50) << pattern.source.toUtf8().constData();
    bit <<= 1;
  }
}

TEST(CuePatterns, WordsOfOnePatternDoNotHideThoseOfAnother) {
  QStringList pieces;
  std::vector<ReferenceRegex> references;
  for (const CuePattern& pattern : cuePatterns()) {
    pieces += ownPieces(pattern);
    references.emplace_back(pattern.source, UREGEX_CASE_INSENSITIVE);
  }
  TextMaker maker(pieces, 77);
  for (int i = 0; i < textsPerPattern; ++i) {
    const QString text = maker.make().toLower();
    CueSet expected = 0;
    for (size_t k = 0; k < references.size(); ++k) {
      if (references[k].matches(text)) expected |= CueSet{1} << k;
    }
    ASSERT_EQ(findCues(text), expected) << quoted(text).toStdString();
  }
}

TEST(CuePatterns, SinglePatternsAnswerAsTheirExpressionsDo) {
  ReferenceRegex filename(filenamePattern, 0);
  ReferenceRegex acronym(acronymPattern, 0);
  TextMaker filenames({u"a"_s, u"report"_s, u".pdf"_s, u"."_s, u"/"_s, u"_"_s, u"-"_s, u".c"_s, u"Z9"_s}, 21);
  TextMaker acronyms({u"A"_s, u"7"_s, u"NASA"_s, u"HTTP2"_s, u"\n"_s, u"AB"_s}, 22);
  int hits = 0;
  for (int i = 0; i < 4 * textsPerPattern; ++i) {
    const QString name = filenames.make();
    ASSERT_EQ(scan::hasFilename(scan::Units(name)), filename.matches(name)) << quoted(name).toStdString();
    // Whole strings of the kind are rare, so most of them are made without odd pieces.
    QString term = acronyms.make();
    if (i % 4 != 0) term.remove(u' ').truncate(9);
    ASSERT_EQ(scan::isAcronym(scan::Units(term)), acronym.matches(term)) << quoted(term).toStdString();
    hits += acronym.matches(term) ? 1 : 0;
  }
  EXPECT_GT(hits, 100);
}

TEST(CharacterClasses, AgreeWithTheirDefinitionsForEveryCharacter) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::UnicodeSet word(uR"([\p{Alphabetic}\p{M}\p{Nd}\p{Pc}\u200c\u200d])", status);
  const icu::UnicodeSet space(uR"([\p{White_Space}])", status);
  const icu::UnicodeSet digit(uR"([\p{Nd}])", status);
  ASSERT_TRUE(U_SUCCESS(status));
  for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
    const bool attached = u_hasBinaryProperty(c, UCHAR_GRAPHEME_EXTEND) || u_charType(c) == U_FORMAT_CHAR;
    const auto plain = word.contains(c) ? scan::CharClass::word : scan::CharClass::other;
    const auto character = static_cast<char32_t>(c);
    ASSERT_EQ(scan::classOf(character), attached ? scan::CharClass::attached : plain) << std::hex << c;
    ASSERT_EQ(scan::isWordCharacter(character), word.contains(c)) << std::hex << c;
    ASSERT_EQ(scan::isSpace(character), space.contains(c)) << std::hex << c;
    ASSERT_EQ(scan::isDigit(character), digit.contains(c)) << std::hex << c;
    if (c >= 128) {
      ASSERT_EQ(scan::foldsToAscii(character), scan::foldNonAscii(character).units[0] < 128) << std::hex << c;
    }
  }
}

TEST(CueCount, CountsEachPatternOfTheFamilyOnce) {
  struct Case {
    QStringView text;
    CueFamily family;
    int count;
  };
  const Case cases[] = {
      {u"error: failed", CueFamily::errorCuePatterns, 2},
      {u"typeerror: x is undefined", CueFamily::errorCuePatterns, 0},
      {u"error: cannot find symbol in scope", CueFamily::errorCuePatterns, 2},
      {u"please, please", CueFamily::toneCuePatterns, 1},
      {u"func main", CueFamily::codeCuePatterns, 1},
      {u"can you send the deck by friday?", CueFamily::replyCuePatterns, 2},
      {u"can you send the deck by friday?", CueFamily::requestCuePatterns, 2},
      {u"what is an api", CueFamily::explanationCuePatterns, 2},
      {u"lunch at 12:30 pm", CueFamily::dateCuePatterns, 3},
      // A word boundary after a full stop needs a letter right behind it.
      {u"9 a.m. sharp", CueFamily::dateCuePatterns, 0},
      {u"9 a.m.sharp", CueFamily::dateCuePatterns, 1},
      {u"", CueFamily::codeCuePatterns, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(cueCount(findCues(c.text), c.family), c.count) << c.text.toUtf8().constData();
  }
}

}  // namespace
}  // namespace lumeno
