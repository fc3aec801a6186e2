#include "suggest/local_templates.h"

#include <gtest/gtest.h>

#include "support.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using enum IntentKind;

QString localText(IntentKind kind, const QString& text, const QString& app = {}, const QString& window = {}) {
  return ActionRunner().localText(kind, text, testing::selection(u"not used"_s, app, window));
}

TEST(LocalTemplates, SpliceInWhatTheyName) {
  const QString diagnostic =
      localText(error, u"\nfatal: not a git repository\n(or any parent)"_s, u"Terminal"_s);
  EXPECT_TRUE(diagnostic.endsWith(u"Selected diagnostic:\nfatal: not a git repository"_s));
  EXPECT_TRUE(diagnostic.contains(u"2. Confirm the setup path in Terminal for .\n3. "_s));
  EXPECT_TRUE(localText(error, u"x"_s).contains(u"path in  for ."_s));
  EXPECT_EQ(
      localText(date, u"lunch"_s, u"Mail"_s),
      u"Calendar draft:\nTitle: lunch\nSource: Mail, \nNotes: Created locally from the selected text."_s);
  EXPECT_TRUE(localText(code, u"a\r\n\r\nb"_s).contains(u"across 2 line(s)."_s));
  EXPECT_TRUE(localText(code, QString()).contains(u"across 1 line(s)."_s));
  EXPECT_TRUE(
      localText(writing, u"Ship it. Then rest."_s).startsWith(u"Summary:\n- Ship it\n- Main ask: "_s));
  EXPECT_EQ(localText(filename, u"Team_Notes-Final Copy.txt"_s), u"team-notes-final-copy.txt"_s);
  EXPECT_TRUE(localText(definition, u"term"_s, u"Notes"_s)
                  .startsWith(u"term: a term or phrase selected in Notes. In this"_s));
  EXPECT_TRUE(localText(translate, u"Hallo"_s).startsWith(u"Hallo\n\nTranslation needs "_s));
}

TEST(LocalTemplates, FirstSentences) {
  const std::pair<QString, QString> cases[] = {
      {u"...Hello there. More."_s, u"Hello there"_s},
      {u" no stop at all\n"_s, u"no stop at all"_s},
      {u" ... "_s, QString()},
      {u"..."_s, u"..."_s},
  };
  for (const auto& [text, sentence] : cases) {
    EXPECT_EQ(localText(explain, text, u"App"_s),
              u"Selected from App: "_s + sentence +
                  u". Turn on Apple Intelligence or Ollama for a full explanation."_s);
  }
}

TEST(LocalTemplates, DirectKindsAndRewritesGiveTheTextBack) {
  for (const IntentKind kind : {address, link, email, phone, grammar, tone}) {
    EXPECT_EQ(localText(kind, u" as it is "_s), u" as it is "_s);
  }
  for (const IntentKind kind : {reply, unknown}) {
    EXPECT_EQ(localText(kind, u"a"_s), localText(kind, u"b"_s));
  }
}

}  // namespace
}  // namespace lumeno
