#include "suggest/selection_cues.h"

#include <gtest/gtest.h>

#include "support.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using testing::fixedSurroundings;
using testing::selection;

struct Measured {
  explicit Measured(SelectedContext selected) : context(std::move(selected)) {}
  SelectedContext context;
  TextAnalysis analysis{context, fixedSurroundings()};
  IntentFeatures intent{analysis};
  ContextAnalysis builder{analysis};
};

TEST(SelectionCues, ApplicationsAreToldByTheirNames) {
  struct Case {
    const char* app;
    bool code;
    bool communication;
    bool finder;
    int messagingWords;
  };
  for (const Case& c :
       {Case{"Visual Studio Code", true, false, false, 0}, Case{"Code", false, false, false, 0},
        Case{"iTerm2", true, false, false, 0}, Case{"Microsoft Outlook", false, true, false, 1},
        Case{"WhatsApp", false, true, false, 0}, Case{"Telegram", false, true, false, 0},
        Case{"Finder", false, false, true, 0}, Case{"Finder Sync", false, false, false, 0},
        Case{"", false, false, false, 0}}) {
    const Measured m(selection(u"text"_s, QString::fromLatin1(c.app)));
    EXPECT_EQ(m.intent.isCodeApp(), c.code) << c.app;
    EXPECT_EQ(m.intent.isCommunicationApp(), c.communication) << c.app;
    EXPECT_EQ(m.intent.isFinder(), c.finder) << c.app;
    EXPECT_EQ(m.builder.messagingWordCount(), c.messagingWords) << c.app;
  }
}

TEST(SelectionCues, ProseNeedsALetterABlankAndNoCode) {
  struct Case {
    const char16_t* text;
    bool prose;
  };
  for (const Case& c :
       {Case{u"hello world", true}, Case{u"hello", false}, Case{u"let x = 1", false}, Case{u"1 2 3", false},
        Case{u"a\tb\nc", false}, Case{u"о чём", true}, Case{u"see </b> here", false},
        Case{u"sublet it", false}, Case{u"a (b) => c", false}}) {
    const QString text = QString::fromUtf16(c.text);
    EXPECT_EQ(Measured(selection(text)).intent.looksLikeProse(), c.prose) << text.toStdString();
  }
}

TEST(SelectionCues, FilenamesAreShortAndNeedAnEnding) {
  const QString name = u"notes.txt"_s;
  const auto isFilename = [](const QString& text) {
    return Measured(selection(text)).intent.looksLikeFilename();
  };
  EXPECT_TRUE(isFilename(u"see report_final.pdf today"_s));
  EXPECT_FALSE(isFilename(u"a/b_c"_s));
  EXPECT_FALSE(isFilename(u"a.b"_s));
  EXPECT_TRUE(isFilename(QString(139 - name.size(), u'x') + name));
  EXPECT_FALSE(isFilename(QString(140 - name.size(), u'x') + name));
  // Marks do not make more characters.
  EXPECT_TRUE(isFilename(u"e\u0301"_s.repeated(139 - name.size()) + name));
}

TEST(SelectionCues, AcronymsAreCaseSensitive) {
  for (const char* text : {"NASA", "HTTP2", " NASA\n"}) {
    EXPECT_TRUE(Measured(selection(QString::fromLatin1(text))).intent.isAcronym()) << text;
  }
  for (const char* text : {"Nasa", "A", "ABCDEFGHI", "A B"}) {
    EXPECT_FALSE(Measured(selection(QString::fromLatin1(text))).intent.isAcronym()) << text;
  }
}

TEST(SelectionCues, CountsSeeEachEntryOnce) {
  const Measured m(
      selection(u" Error: the build FAILED, failed again.\n\nCan you please look? Please! "_s, u"Mail"_s));
  EXPECT_EQ(m.builder.errorKeywordCount(), 2);
  EXPECT_EQ(m.builder.replyPhraseCount(), 3);
  EXPECT_EQ(m.builder.messagingWordCount(), 1);
  EXPECT_TRUE(m.intent.hasParagraphBreak());
  EXPECT_TRUE(m.intent.hasQuestionMark());
  EXPECT_EQ(m.intent.wordCount(), 11);
  // Code markers are case-sensitive, the code cues are not.
  const Measured shouted(selection(u"FUNC main"_s));
  EXPECT_EQ(shouted.builder.codeMarkerCount(), 0);
  EXPECT_EQ(shouted.intent.cueCount(CueFamily::codeCuePatterns), 1);
}

TEST(SelectionCues, TheHaystackJoinsTextApplicationAndWindow) {
  const Measured m(selection(u"An email. Exit"_s, u"Code"_s, u"Crash log"_s));
  EXPECT_EQ(m.builder.contextHaystack(), u"an email. exit code crash log"_s);
  // "exit code" lies across the joint, "crash" in the window's title, "mail" inside "email".
  EXPECT_EQ(m.builder.errorKeywordCount(), 2);
  EXPECT_EQ(m.builder.messagingWordCount(), 1);
  EXPECT_EQ(m.builder.locationPhrase(), u"Code, Crash log"_s);
  EXPECT_EQ(Measured(selection(u"x"_s)).builder.locationPhrase(), u"the active app, focused window"_s);
}

TEST(SelectionCues, FilenameSlugs) {
  const auto slug = [](const QString& text) { return Measured(selection(text)).builder.filenameSlug(); };
  EXPECT_EQ(slug(u"  My_Quarterly-Report  FINAL.PDF "_s), u"my-quarterly-report-final.pdf"_s);
  EXPECT_EQ(slug(u" _-- "_s), QString());
}

TEST(SelectionCues, LanguageNeedsFourCharacters) {
  EXPECT_EQ(Measured(selection(u"hey"_s)).intent.dominantLanguage(), std::nullopt);
  EXPECT_FALSE(Measured(selection(u"hey"_s)).intent.isNonEnglish());
  const Measured french(selection(u"Je voudrais réserver une table pour deux personnes ce soir."_s));
  EXPECT_EQ(french.intent.dominantLanguage(), u"fr"_s);
  EXPECT_TRUE(french.intent.isNonEnglish());
}

TEST(SelectionCues, BlankTextHasNoCues) {
  const Measured m(selection(u" \n\t "_s));
  EXPECT_EQ(m.intent.wordCount(), 0);
  EXPECT_EQ(m.intent.dominantLanguage(), std::nullopt);
  EXPECT_FALSE(m.intent.detectorMatches(DetectorType::date));
  EXPECT_FALSE(m.intent.detectorMatches(DetectorType::address));
  for (const CueFamily family : allCueFamilies) EXPECT_EQ(m.intent.cueCount(family), 0);
  EXPECT_EQ(m.builder.errorKeywordCount() + m.builder.replyPhraseCount() + m.builder.codeMarkerCount(), 0);
}

}  // namespace
}  // namespace lumeno
