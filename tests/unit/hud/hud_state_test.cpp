#include "hud/hud_state.h"

#include <QDir>

#include "unit/hud/hud_fixture.h"

using namespace Qt::StringLiterals;

namespace lumeno {
namespace {

class HudStateTest : public HudFixture {
 protected:
  HudStateTest() {
    scheduler.advance(0);
    idle = scheduler.pendingCount();
    QObject::connect(&state, &HudState::partialChanged, &state, [this] { partials += state.partial(); });
    QObject::connect(&state, &HudState::contentChanged, &state, [this] { ++contentChanges; });
  }
  void turn() { scheduler.advance(0); }

  HudState state{model, scheduler};
  QStringList partials;
  int contentChanges = 0;
  size_t idle = 0;
};

TEST_F(HudStateTest, DescribesEveryPhase) {
  offer({suggestion(IntentKind::grammar, u"Fix spelling & grammar"_s), suggestion(IntentKind::tone, u"B"_s),
         suggestion(IntentKind::link, u"C"_s), suggestion(IntentKind::code, u"D"_s),
         suggestion(IntentKind::error, u"E"_s)});
  state.present(true);
  EXPECT_EQ(state.content().phase, u"suggestions"_s);
  EXPECT_EQ(state.content().headerSymbol, u"sparkles"_s);
  EXPECT_EQ(state.content().headerTitle, u"Mail"_s);
  ASSERT_EQ(state.chips().size(), 4);
  EXPECT_EQ(state.chips()[0].toMap()[u"symbol"_s], u"checkmark.bubble"_s);
  EXPECT_EQ(state.chips()[0].toMap()[u"tint"_s], u"orange"_s);
  EXPECT_EQ(state.content().pillTitle, u"Fix spelling & grammar"_s);
  EXPECT_EQ(state.content().pillCount, 4);

  generate({}, u"Summarise"_s);
  turn();
  EXPECT_EQ(state.content().headerTitle, u"Summarise"_s);
  EXPECT_EQ(state.content().headerSymbol, u"sparkles"_s);

  model.usedAI.set(true);
  finish(u"Done"_s, IntentKind::writing, u"Summarise"_s);
  turn();
  EXPECT_EQ(state.content().headerSymbol, u"text.alignleft"_s);
  EXPECT_EQ(state.content().resultBody, u"Done"_s);
  EXPECT_TRUE(state.content().usedAI);
  EXPECT_TRUE(state.content().allowReplace);
  finish(u"Added"_s, IntentKind::date, u"Added to Calendar"_s);
  turn();
  EXPECT_FALSE(state.content().allowReplace);

  model.selection.set(std::nullopt);
  model.suggestions.set({});
  setPhase(phase::Notice{u"Nothing selected"_s});
  turn();
  EXPECT_EQ(state.content().headerSymbol, u"text.cursor"_s);
  EXPECT_EQ(state.content().headerTitle, u"Lumeno"_s);
  EXPECT_EQ(state.content().notice, u"Nothing selected"_s);
  EXPECT_EQ(state.content().pillSymbol, u"sparkles"_s);
  EXPECT_EQ(state.content().pillTitle, u"Actions"_s);
  EXPECT_EQ(state.content().pillTint, u"secondary"_s);
  setPhase(phase::Suggestions{});
  turn();
  EXPECT_EQ(state.content().headerTitle, u"Lumeno"_s);
}

TEST_F(HudStateTest, DescribesTheCalendarCard) {
  const QDateTime start({2026, 11, 16}, {15, 0});
  const CalendarDraft draft{u"Team sync"_s, start, start.addSecs(3600), u"Work"_s};
  setPhase(phase::CalendarConfirm{draft});
  state.present(true);
  EXPECT_EQ(state.content().headerSymbol, u"calendar.badge.plus"_s);
  EXPECT_EQ(state.content().headerTitle, u"New event"_s);
  EXPECT_EQ(state.content().eventTitle, u"Team sync"_s);
  EXPECT_EQ(state.content().eventTime, draft.dateRangeText());
  EXPECT_EQ(state.content().eventCalendar, u"Work"_s);
}

TEST_F(HudStateTest, DescribesEveryStageOfTheFileCommandBar) {
  using Stage = FileActionSession::Stage;
  offer({suggestion(IntentKind::tone, u"A"_s)});
  FileActionSession& session = openFiles(Stage::Input{}, {u"a\nb.txt"_s});
  session.instruction.set(u"list"_s);
  state.present(true);
  EXPECT_EQ(state.content().phase, u"files"_s);
  EXPECT_EQ(state.content().headerSymbol, u"folder.fill.badge.gearshape"_s);
  EXPECT_EQ(state.content().headerTitle, u"a\nb.txt"_s);
  const FileActionState& files = *state.files();
  EXPECT_EQ(files.content().stage, u"input"_s);
  EXPECT_EQ(files.request(), u"list"_s);

  const auto enter = [&](const FileActionSession::StageValue& stage) {
    session.stage.set(stage);
    turn();
  };
  enter(Stage::Planning{});
  EXPECT_EQ(files.content().stage, u"planning"_s);
  const QUrl inside = fileUrl((QDir::homePath() + u"/Pictures"_s).toUtf8());
  enter(Stage::Preview{{u"list"_s, u"ls\x1B[2K \u202E-l"_s, inside, std::nullopt}});
  EXPECT_EQ(files.content().stage, u"preview"_s);
  EXPECT_EQ(files.content().command, u"ls␛[2K ⟨U+202E⟩-l"_s);
  EXPECT_EQ(files.content().folder, u"~/Pictures"_s);
  EXPECT_FALSE(files.content().blocked);
  enter(Stage::Preview{{u"list"_s, u"rm -rf /"_s, fileUrl(QDir::homePath().toUtf8()), u"Too much."_s}});
  EXPECT_EQ(files.content().folder, u"~"_s);
  EXPECT_TRUE(files.content().blocked);
  EXPECT_EQ(files.content().blockedReason, u"Too much."_s);
  enter(Stage::Running{{}});
  EXPECT_EQ(files.content().stage, u"running"_s);
  EXPECT_EQ(files.content().command, u"rm -rf /"_s) << "what fades out keeps its text";

  enter(Stage::Result{{{}, u"listed"_s, u"warning"_s, 0, false}});
  EXPECT_EQ(files.content().stage, u"result"_s);
  EXPECT_FALSE(files.content().failed);
  EXPECT_EQ(files.output(), u"listed"_s);
  EXPECT_EQ(files.content().stopNotice, QString());
  enter(Stage::Result{{{}, u"half"_s, u"It was stopped."_s, 0, true}});
  EXPECT_TRUE(files.content().failed);
  EXPECT_EQ(files.output(), u"half"_s);
  EXPECT_EQ(files.content().stopNotice, u"It was stopped."_s);
  enter(Stage::Result{{{}, u" \n"_s, u"It was stopped."_s, 143, true}});
  EXPECT_EQ(files.output(), u"It was stopped."_s);
  EXPECT_EQ(files.content().stopNotice, QString()) << "not twice";
  enter(Stage::Error{u"No answer."_s});
  EXPECT_EQ(files.content().error, u"No answer."_s);

  model.fileSession.set(nullptr);
  turn();
  EXPECT_EQ(state.content().phase, u"suggestions"_s);
}

TEST_F(HudStateTest, TheRequestGoesBothWaysAndOnlyToTheBarThatIsShown) {
  const auto first = [this] {
    openFiles();
    return model.fileSession.get();
  }();
  state.present(true);
  FileActionState& files = *state.files();
  files.setRequest(u"a"_s);
  files.setRequest(u"ab"_s);
  EXPECT_EQ(first->instruction.get(), u"ab"_s);
  turn();
  EXPECT_EQ(files.request(), u"ab"_s);
  first->instruction.set(u"from elsewhere"_s);
  turn();
  EXPECT_EQ(files.request(), u"from elsewhere"_s);

  // Another selection, which is not shown yet.
  FileActionSession& second = openFiles();
  files.setRequest(u"typed for the first"_s);
  files.submit();
  EXPECT_EQ(second.instruction.get(), QString());
  EXPECT_TRUE(std::holds_alternative<FileActionSession::Stage::Input>(second.stage.get()));
  turn();
  EXPECT_EQ(files.request(), QString());
  state.retire();
  files.setRequest(u"too late"_s);
  EXPECT_EQ(second.instruction.get(), QString());
}

TEST_F(HudStateTest, HighlightsOnlyInKeyboardMode) {
  offer({suggestion(IntentKind::tone, u"A"_s), suggestion(IntentKind::link, u"B"_s)});
  model.selectedChipIndex.set(1);
  state.present(true);
  EXPECT_EQ(state.content().selectedChip, -1);
  model.keyboardMode.set(true);
  turn();
  EXPECT_EQ(state.content().selectedChip, 1);
}

TEST_F(HudStateTest, TellsTheChangesOfOneTurnTogether) {
  state.present(true);
  contentChanges = 0;
  offer({suggestion(IntentKind::tone, u"A"_s)});
  model.keyboardMode.set(true);
  EXPECT_EQ(contentChanges, 0);
  turn();
  EXPECT_EQ(contentChanges, 1);
}

TEST_F(HudStateTest, KeepsStillWhileItGoes) {
  finish(u"The result"_s);
  state.present(true);
  contentChanges = 0;
  // The order in which a dismissal happens: hidden first, then emptied.
  state.retire();
  model.selection.set(std::nullopt);
  setPhase(phase::Suggestions{});
  scheduler.advance(1000);
  EXPECT_EQ(contentChanges, 0);
  EXPECT_EQ(state.content().phase, u"result"_s);
  state.copyResult();
  EXPECT_FALSE(pasteboard.string());

  // A selection that goes away empties the model first and hides in the same turn.
  offer({suggestion(IntentKind::tone, u"A"_s)});
  state.present(true);
  model.suggestions.set({});
  state.retire();
  scheduler.advance(1000);
  EXPECT_EQ(state.chips().size(), 1);
  EXPECT_EQ(scheduler.pendingCount(), idle) << "nothing runs while hidden";
}

TEST_F(HudStateTest, MorphsOnlyWhatIsSeen) {
  std::vector<bool> morphsAtChange;
  QObject::connect(&state, &HudState::contentChanged, &state,
                   [&] { morphsAtChange.push_back(state.morphs()); });
  offer({suggestion(IntentKind::tone, u"A"_s)});
  state.present(true);
  generate({});
  turn();
  finish(u"B"_s);
  state.present(false);
  EXPECT_EQ(morphsAtChange, (std::vector<bool>{false, true, true}));
}

TEST_F(HudStateTest, ShowsTheFirstTextAtOnceThenThirtyTimesASecondAndAlwaysTheLast) {
  generate({});
  state.present(true);
  partials.clear();
  for (int i = 1; i <= 1000; ++i) {  // one piece a millisecond
    generate(QString(i, u'x'));
    if (i == 1) {
      EXPECT_EQ(partials.size(), 1);
    }
    scheduler.advance(1);
  }
  EXPECT_GE(partials.size(), 29);
  EXPECT_LE(partials.size(), 32);
  scheduler.advance(33);
  EXPECT_EQ(state.partial().size(), 1000);
  const auto told = partials.size();
  scheduler.advance(1000);
  EXPECT_EQ(partials.size(), told);
  EXPECT_EQ(scheduler.pendingCount(), idle) << "a stream that pauses costs nothing";

  generate(QString(1001, u'x'));
  EXPECT_EQ(state.partial().size(), 1001) << "after a pause the next text is first again";
}

TEST_F(HudStateTest, ANewRunStartsWithoutTheOldText) {
  generate(u"old"_s);
  state.present(true);
  setPhase(phase::Suggestions{});
  turn();
  EXPECT_EQ(state.partial(), u"old"_s) << "what fades out keeps its text";
  generate({});
  turn();
  EXPECT_EQ(state.partial(), QString());
}

}  // namespace
}  // namespace lumeno
