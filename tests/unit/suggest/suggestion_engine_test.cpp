#include "suggest/suggestion_engine.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using testing::fixedSurroundings;
using testing::selection;
using testing::words;
using enum IntentKind;

std::vector<ActionSuggestion> suggest(const QString& text, const QString& app = {},
                                      const QSet<IntentKind>& disabled = {}) {
  return SuggestionEngine().suggestions(selection(text, app), disabled, fixedSurroundings());
}

std::vector<IntentKind> kinds(const std::vector<ActionSuggestion>& suggestions) {
  std::vector<IntentKind> all;
  for (const auto& suggestion : suggestions) all.push_back(suggestion.kind);
  return all;
}

const ActionSuggestion& find(const std::vector<ActionSuggestion>& suggestions, IntentKind kind) {
  static const ActionSuggestion missing;
  const auto found = std::ranges::find(suggestions, kind, &ActionSuggestion::kind);
  EXPECT_NE(found, suggestions.end()) << rawValue(kind).toStdString();
  return found == suggestions.end() ? missing : *found;
}

QSet<IntentKind> allBut(std::initializer_list<IntentKind> kept) {
  QSet<IntentKind> disabled(allIntentKinds.begin(), allIntentKinds.end());
  for (const IntentKind kind : kept) disabled.remove(kind);
  return disabled;
}

TEST(SuggestionEngine, ATermIsDefinedFirst) {
  const auto list = suggest(u"serendipity"_s, u"Firefox"_s);
  EXPECT_EQ(kinds(list), (std::vector{definition, explain}));
  EXPECT_EQ(list[0].confidence, 0.82 * 0.62 + 0.92 * 0.38);
  EXPECT_EQ(list[0].rationale,
            u"A short selection is most likely a term to define. Classifier: short term or phrase."_s);
  EXPECT_EQ(list[1].confidence, 0.46 * 0.62 + 0.36 * 0.38);
}

TEST(SuggestionEngine, ASelectionThatIsADirectActionOffersOnlyThat) {
  const auto phones = suggest(u" +1 (555) 010-7788\n"_s, u"Messages"_s);
  ASSERT_EQ(kinds(phones), std::vector{phone});
  EXPECT_EQ(phones[0], (ActionSuggestion{phone, u"Call +1 (555) 010-7788"_s, u"Call"_s,
                                         u"Start a call to this number."_s,
                                         u"Detected a phone number in the selection."_s, 0.97,
                                         u"+1 (555) 010-7788"_s, QUrl(u"tel:+15550107788"_s)}));
  const auto emails = suggest(u"ann@example.com"_s);
  ASSERT_EQ(kinds(emails), std::vector{email});
  EXPECT_EQ(emails[0].title, u"Email ann@example.com"_s);
  EXPECT_EQ(emails[0].preview, u"ann@example.com"_s);
  EXPECT_EQ(emails[0].directURL, QUrl(u"mailto:ann@example.com"_s));
}

TEST(SuggestionEngine, DirectActionsInsideTextAreRankedWithTheRest) {
  const auto list = suggest(
      u"See https://example.com/a?b or https://example.org, mail ann@example.com, bob@example.com."_s);
  EXPECT_EQ(std::ranges::count(list, link, &ActionSuggestion::kind), 1);
  EXPECT_EQ(find(list, link).preview, u"https://example.com/a?b"_s);
  EXPECT_EQ(find(list, link).summary, u"example.com/a"_s);
  EXPECT_EQ(find(list, link).confidence, 0.72);
  EXPECT_EQ(std::ranges::count(list, email, &ActionSuggestion::kind), 1);
  EXPECT_EQ(find(list, email).preview, u"ann@example.com"_s);
  // Equal confidence and priority: in the order of the text.
  const auto order = kinds(list);
  EXPECT_EQ(std::ranges::find(order, email) - std::ranges::find(order, link), 1);
  EXPECT_GT(order.size(), 2u);
}

TEST(SuggestionEngine, ALoneAddressDoesNotHideTextActions) {
  const QString text = u"1 Infinite Loop, Cupertino, CA 95014"_s;
  const auto list = suggest(text);
  EXPECT_EQ(find(list, address).confidence, 0.89);
  EXPECT_EQ(find(list, address).directURL->toString(QUrl::FullyEncoded),
            u"maps://?q=1%20Infinite%20Loop,%20Cupertino,%20CA%2095014"_s);
  EXPECT_EQ(find(list, address).rationale,
            u"Detected an address in the selection. Classifier: address detector matched."_s);
  EXPECT_GT(list.size(), 1u);
}

TEST(SuggestionEngine, DiagnosticsNameTheirEvidence) {
  const auto list = suggest(u"error: cannot find symbol in scope"_s, u"Xcode"_s);
  ASSERT_EQ(list[0].kind, error);
  EXPECT_EQ(list[0].confidence, (2 * 0.22 + 0.32 + 0.08) * 0.62 + (2 * 0.16 + 0.14 + 0.16) * 0.38);
  EXPECT_EQ(list[0].rationale,
            u"Matched 2 error signals in Xcode, focused window. Classifier: 2 diagnostic cues."_s);
}

TEST(SuggestionEngine, FilenamesCarryTheirCleanedName) {
  const auto list = suggest(u"My_Report-FINAL.pdf"_s, u"Finder"_s);
  EXPECT_EQ(find(list, filename).preview, u"my-report-final.pdf"_s);
  EXPECT_EQ(find(list, filename).confidence, 0.86 * 0.62 + (0.86 + 0.08) * 0.38);
  EXPECT_EQ(
      find(list, filename).rationale,
      u"Matched a filename/path pattern in Finder, focused window. Classifier: filename or path shape."_s);
}

TEST(SuggestionEngine, MessagesAndLongTexts) {
  const auto message = suggest(u"Can you send me the numbers we talked about?"_s, u"Slack"_s);
  EXPECT_EQ(find(message, reply).rationale,
            u"Detected a communication app and 2 reply cues. Classifier: 2 reply cues."_s);
  EXPECT_EQ(find(message, tone).rationale,
            u"Looks like a message in Slack, focused window. Classifier: general prose rewrite fit."_s);
  EXPECT_EQ(find(message, explain).confidence, (0.46 + 0.12) * 0.62 + 0.5 * 0.38);

  const auto essay = suggest(words(70));
  EXPECT_EQ(find(essay, writing).confidence, (0.7 + 30 / 300.0) * 0.62 + 0.88 * 0.38);
  EXPECT_EQ(find(essay, writing).rationale,
            u"The selection is 70 words long. Classifier: 70 words selected."_s);
  EXPECT_EQ(find(suggest(words(500)), writing).confidence, (0.7 + 0.18) * 0.62 + 0.88 * 0.38);
}

TEST(SuggestionEngine, TheListIsRankedAndAboveTheThreshold) {
  for (const char16_t* text :
       {u"Can you call +1 (555) 010-7788 tomorrow at 3pm? Error: the build failed in main.cpp",
        u"func a() {\n  return b\n}", u"hello there my friend", u"1"}) {
    const auto list = suggest(QString::fromUtf16(text), u"Slack"_s);
    EXPECT_TRUE(std::ranges::is_sorted(list, std::ranges::greater(), &ActionSuggestion::confidence));
    for (const auto& suggestion : list) EXPECT_GE(suggestion.confidence, 0.4);
  }
}

TEST(SuggestionEngine, DisabledKindsAreDroppedBeforeRanking) {
  const auto list = suggest(u"https://example.com"_s, {}, {link});
  EXPECT_EQ(kinds(list), (std::vector{definition, filename, explain}));
}

TEST(SuggestionEngine, TheFallbackDefines) {
  const QString essay = words(70);
  const auto list = suggest(essay, {}, allBut({definition}));
  ASSERT_EQ(kinds(list), std::vector{definition});
  EXPECT_EQ(list[0].title, u"Define this"_s);
  EXPECT_EQ(list[0].confidence, 0.52);
  EXPECT_EQ(list[0].rationale, u"No stronger action beat the fallback."_s);
  EXPECT_TRUE(suggest(essay, {}, allBut({})).empty());
  EXPECT_TRUE(suggest(u" \n "_s).empty());
}

TEST(LinkDisplay, ShowsHostAndPath) {
  const std::pair<const char16_t*, const char16_t*> cases[] = {
      {u"https://example.com", u"example.com"},
      {u"https://example.com/", u"example.com"},
      {u"https://example.com/a/b?c=d#e", u"example.com/a/b"},
      {u"https://user@example.com:8080/x", u"example.com/x"},
      {u"urn:isbn:1", u"urn:isbn:1isbn:1"},
  };
  for (const auto& [url, shown] : cases) {
    EXPECT_EQ(linkDisplay(QUrl(QString::fromUtf16(url))), QString::fromUtf16(shown));
  }
}

TEST(KindGroups, HoldEveryKindButUnknownOnce) {
  std::vector<IntentKind> all = transformKinds();
  all.insert(all.end(), quickActionKinds().begin(), quickActionKinds().end());
  EXPECT_EQ(all.size(), allIntentKinds.size() - 1);
  for (const IntentKind kind : allIntentKinds) {
    EXPECT_EQ(std::ranges::count(all, kind), kind == unknown ? 0 : 1) << rawValue(kind).toStdString();
  }
  EXPECT_EQ(transformKinds().front(), writing);
  EXPECT_EQ(quickActionKinds().front(), date);
}

}  // namespace
}  // namespace lumeno
