#include "calendar/draft_title.h"

#include <gtest/gtest.h>

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

TEST(DraftTitle, IsTheFirstLineThatIsNotEmpty) {
  const std::pair<QString, QString> cases[] = {
      {u"Lunch with Mira Friday 12:30"_s, u"Lunch with Mira Friday 12:30"_s},
      {u"\nCall Mira at 5"_s, u"Call Mira at 5"_s},
      {u"\r\n\v\f\u0085\u2028\u2029 \u00A0Call\tMira\u3000\t\r\nat 5"_s, u"Call\tMira"_s},
      {u"Call\u2028Mira"_s, u"Call"_s},
      // A first line of blanks counts as a line; what is left then is the whole text.
      {u" \t\nCall\nMira\n"_s, u"Call\nMira"_s},
      {u""_s, u"Event"_s},
      {u" \n\u2003\n"_s, u"Event"_s},
      {u"\n\n"_s, u"Event"_s},
  };
  for (const auto& [text, title] : cases) EXPECT_EQ(draftTitle(text), title) << text.toStdString();
}

TEST(DraftTitle, IsCutAfterEightyCharactersAsTheUserSeesThem) {
  const QString characters[] = {u"x"_s,  u"ü"_s, u"e\u0301"_s, u"😀"_s, u"👩‍👩‍👧"_s,
                                u"🇩🇪"_s, u"각"_s};
  for (const QString& character : characters) {
    EXPECT_EQ(draftTitle(character.repeated(80)), character.repeated(80));
    EXPECT_EQ(draftTitle(character.repeated(81)), character.repeated(80) + u'…');
    EXPECT_EQ(draftTitle(u"  "_s + character.repeated(100) + u"\nmore"_s), character.repeated(80) + u'…');
  }
}

}  // namespace
}  // namespace lumeno
