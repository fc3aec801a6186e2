#include "platform/atspi/selection_merge.h"

#include <gtest/gtest.h>

namespace lumeno::atspi {
namespace {

struct Case {
  const char* what;
  FocusKnowledge knowledge;
  const char16_t* focusText;
  std::optional<const char16_t*> offered;
  std::optional<const char16_t*> expected;
};

TEST(SelectionMerge, JoinsBothSources) {
  const Case cases[] = {
      {"an application that tells nothing", FocusKnowledge::nothing, u"", u"offered", u"offered"},
      {"neither knows anything", FocusKnowledge::nothing, u"", std::nullopt, std::nullopt},
      {"a left-over of an earlier selection", FocusKnowledge::noSelection, u"", u"stale", std::nullopt},
      {"a password", FocusKnowledge::secret, u"", u"hunter2", std::nullopt},
      {"nothing is offered", FocusKnowledge::selection, u"word", std::nullopt, u"word"},
      {"both agree", FocusKnowledge::selection, u"word", u"word", u"word"},
      {"line breaks differ", FocusKnowledge::selection, u"one two", u"one\r\n\r\ntwo", u"one\r\n\r\ntwo"},
      {"marks of embedded objects", FocusKnowledge::selection, u"one\uFFFCtwo", u"one\ntwo", u"one\ntwo"},
      {"only one paragraph is known", FocusKnowledge::selection, u"second", u"first\nsecond\nthird",
       u"first\nsecond\nthird"},
      {"an older, shorter offer", FocusKnowledge::selection, u"all of the text", u"the", u"all of the text"},
      {"unrelated texts: the focus is asked live", FocusKnowledge::selection, u"alpha", u"omega", u"alpha"},
      {"unreadable parts: what is offered is whole", FocusKnowledge::selection, u"a\uFFFCz", u"quite other",
       u"quite other"},
  };
  for (const auto& c : cases) {
    const auto offered = c.offered ? std::optional(QString::fromUtf16(*c.offered)) : std::nullopt;
    const auto expected = c.expected ? std::optional(QString::fromUtf16(*c.expected)) : std::nullopt;
    EXPECT_EQ(mergeSelection(c.knowledge, QString::fromUtf16(c.focusText), offered), expected) << c.what;
  }
}

}  // namespace
}  // namespace lumeno::atspi
