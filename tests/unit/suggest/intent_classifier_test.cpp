#include "suggest/intent_classifier.h"

#include <gtest/gtest.h>

#include "support.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using testing::fixedSurroundings;
using testing::selection;
using testing::words;

struct Case {
  QString text;
  QString app;
  IntentKind kind;
  double score;
  QString rationale;
};

// Scores are compared exactly: the ranking breaks ties by equality.
TEST(IntentClassifier, ScoresAndRationales) {
  using enum IntentKind;
  const QString french = u"Je voudrais réserver une table pour deux personnes ce soir."_s;
  const QString paragraphs = words(35) + u"\n\n"_s + words(35);
  const std::vector<Case> cases = {
      {u"NASA"_s, u"Notes"_s, definition, 0.98, u"short term or phrase"_s},
      {u"NASA"_s, u"Notes"_s, translate, 0.08, u"English or unknown language"_s},
      {u"NASA"_s, u"Notes"_s, writing, 0.18, u"1 words selected"_s},
      {u"serendipity"_s, {}, definition, 0.92, u"short term or phrase"_s},
      {u"hash table"_s, {}, definition, 0.82, u"short term or phrase"_s},
      {u"one two three four"_s, {}, definition, 0.5, u"4 words"_s},
      {u"1 2 3"_s, {}, definition, 0.64, u"3 words"_s},
      {u"error: cannot find symbol in scope"_s, u"Xcode"_s, error, 0.62, u"2 diagnostic cues"_s},
      {u"error: cannot find symbol in scope"_s, u"Xcode"_s, code, 0.16 + 0.18, u"weak code shape"_s},
      {u"error: cannot find symbol in scope"_s, u"Xcode"_s, grammar, 0.48, u"natural-language prose"_s},
      {u"TypeError: x is undefined"_s, {}, error, 0.14, u"no diagnostic cue"_s},
      {u"if (x) {"_s, {}, code, 0.29000000000000004, u"1 code cue"_s},
      {u"Can you send the deck by Friday?"_s, u"Slack"_s, reply, 0.68, u"2 reply cues"_s},
      {u"Can you send the deck by Friday?"_s, u"Slack"_s, explain, 0.5, u"general explanation fit"_s},
      {u"Can you send the deck by Friday?"_s, u"Slack"_s, date, 0.74, u"date detector matched"_s},
      {u"just a line"_s, u"Slack"_s, reply, 0.44000000000000006, u"few reply cues"_s},
      {u"next to nothing"_s, {}, date, 0.2, u"no date detector match"_s},
      {u"just a plain line"_s, u"Slack"_s, tone, 0.6000000000000001, u"general prose rewrite fit"_s},
      {u"please, please"_s, {}, tone, 0.12, u"1 tone cue"_s},
      {u"The API of this service is described at length elsewhere"_s,
       {},
       explain,
       0.52,
       u"1 explanation cue"_s},
      {u"The API of this service is described at length elsewhere"_s, u"Mail"_s, explain, 0.44,
       u"1 explanation cue"_s},
      {u"report_final.pdf"_s, u"Finder"_s, filename, 0.94, u"filename or path shape"_s},
      {u"report"_s, u"finder"_s, filename, 0.2, u"no filename shape"_s},
      {french, {}, translate, 0.94, u"dominant language is not English"_s},
      {paragraphs, {}, writing, 0.96, u"70 words selected"_s},
      {words(70), {}, writing, 0.88, u"70 words selected"_s},
      {words(60), {}, writing, 0.74, u"60 words selected"_s},
      {words(30), {}, writing, 0.56, u"30 words selected"_s},
      {words(14), {}, writing, 0.18, u"14 words selected"_s},
      {words(3), {}, address, 0.1, u"no address shape"_s},
  };
  for (const Case& c : cases) {
    const auto scores = IntentClassifier().classify(selection(c.text, c.app), fixedSurroundings());
    const auto verdict = scores.value(c.kind);
    const std::string what = rawValue(c.kind).toStdString() + " of " + c.text.toStdString();
    EXPECT_EQ(verdict.score, c.score) << what;
    EXPECT_EQ(verdict.rationale.toStdString(), c.rationale.toStdString()) << what;
  }
}

TEST(IntentClassifier, ScoresTwelveKindsOrNone) {
  const auto scores = IntentClassifier().classify(selection(u"text"_s), fixedSurroundings());
  EXPECT_EQ(scores.size(), 12);
  for (const IntentKind kind :
       {IntentKind::link, IntentKind::email, IntentKind::phone, IntentKind::unknown}) {
    EXPECT_FALSE(scores.contains(kind));
  }
  EXPECT_TRUE(IntentClassifier().classify(selection(u" \n "_s), fixedSurroundings()).isEmpty());
}

}  // namespace
}  // namespace lumeno
