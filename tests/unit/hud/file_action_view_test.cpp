#include <QClipboard>

#include "hud/long_text_view.h"
#include "support/wait_until.h"
#include "unit/hud/hud_view_fixture.h"

namespace lumeno {
namespace {

using Stage = FileActionSession::Stage;

const QString request = u"Request"_s;  // the field

FileCommand zipCommand() {
  return {u"zip them"_s, u"zip -r archive.zip 'IMG_2381.HEIC' 'IMG_2382.HEIC' 'IMG_2383.HEIC'"_s,
          fileUrl("/home/ana/Pictures/Quay"), std::nullopt};
}
FileCommand blockedCommand() {
  return {u"delete all"_s, u"rm -rf ~"_s, fileUrl("/home/ana/Pictures/Quay"),
          u"This command was blocked because it recursively deletes a top-level or home path."_s};
}

class FileActionViewTest : public HudViewTest {
 protected:
  void show(bool summoned = true) {
    panel.show(Rect{600, 500, 200, 20}, true, true, summoned);
    window.show();
    scheduler.advance(500);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();  // the window learns its size, the theme its font
    scheduler.advance(0);
    QCoreApplication::processEvents();
  }
  void type(const QString& text) {
    for (const QChar c : text) press(0, c);
  }
  void enter(FileActionSession::StageValue stage) {
    model.fileSession.get()->stage.set(std::move(stage));
    scheduler.advance(0);
  }
  /// What comes after the answer is done by a worker, against a deadline: the clock must not go on meanwhile.
  void letModelAnswer() { scheduler.advance(script->elementTime); }
  [[nodiscard]] FileActionSession& session() const { return *model.fileSession.get(); }
  [[nodiscard]] bool isIn(size_t stage) const { return session().stage.get().index() == stage; }
  [[nodiscard]] QString focused() const {
    const auto* told = QAccessible::queryAccessibleInterface(window.activeFocusItem());
    return told ? told->text(QAccessible::Name) : QString();
  }
};

// The places in `StageValue`.
constexpr size_t preview = 0;
constexpr size_t running = 1;
constexpr size_t input = 4;
constexpr size_t planning = 5;

TEST_F(FileActionViewTest, EveryStageIsDrawnInBothSchemes) {
  QString longOutput;
  for (int i = 0; i < 400; ++i) longOutput += u"  adding: IMG_%1.HEIC (deflated 2%)\n"_s.arg(i);
  const QString done =
      u"adding: IMG_2381.HEIC (deflated 2%)\n  adding: IMG_2382.HEIC (deflated 1%)\n  adding: IMG_2383.HEIC "
      "(deflated 2%)"_s;
  FileCommand longCommand = zipCommand();
  longCommand.command =
      u"for f in *.HEIC; do convert \"$f\" \"${f%.HEIC}.png\" && echo done; done; "_s.repeated(9);
  struct View {
    QString name;
    FileActionSession::StageValue stage;
    QString request = {};
  };
  const std::vector<View> views = {
      {u"input"_s, Stage::Input{}},
      {u"input-preset"_s, Stage::Input{}, u"Rename these to lowercase words separated by dashes"_s},
      {u"input-long"_s, Stage::Input{}, u"one line of many\n"_s.repeated(9) + u"the last"_s},
      {u"planning"_s, Stage::Planning{}},
      {u"preview"_s, Stage::Preview{zipCommand()}},
      {u"preview-blocked"_s, Stage::Preview{blockedCommand()}},
      {u"preview-long"_s, Stage::Preview{longCommand}},
      {u"running"_s, Stage::Running{zipCommand()}},
      {u"result-done"_s, Stage::Result{{{}, done, {}, 0, false}}},
      {u"result-failed"_s,
       Stage::Result{{{}, {}, u"zip error: Could not create output file (archive.zip)"_s, 15, false}}},
      {u"result-stopped"_s,
       Stage::Result{{{}, longOutput, u"Command timed out after 60s and was stopped."_s, 143, true}}},
      {u"error"_s,
       Stage::Error{
           u"The AI backend isn't available. Start Ollama or enable Apple Intelligence in the menu."_s}},
  };
  for (const bool dark : {false, true}) {
    for (const View& each : views) {
      SCOPED_TRACE(each.name.toStdString());
      appearance.set({.dark = dark, .reduceMotion = true, .accent = {}});
      openFiles(each.stage).instruction.set(each.request);
      show();
      EXPECT_TRUE(accessible(u"3 items"_s));
      EXPECT_EQ(window.width(), 380);
      EXPECT_EQ(window.contentSize(), (Size{panelWindow.frame.width, panelWindow.frame.height}));
      picture(u"files-"_s + each.name + (dark ? u"-dark"_s : u"-light"_s));
    }
  }
}

TEST_F(FileActionViewTest, TypingGoesToTheFieldAndReturnSendsIt) {
  openFiles();
  show();
  EXPECT_EQ(focused(), request);
  type(u"zip"_s);
  press(Qt::Key_Return, u"\r"_s, Qt::ShiftModifier);
  type(u"them"_s);
  EXPECT_EQ(session().instruction.get(), u"zip\nthem"_s);
  EXPECT_TRUE(isIn(input));
  session().instruction.set(u"from elsewhere"_s);
  scheduler.advance(0);
  type(u"!"_s);
  EXPECT_EQ(session().instruction.get(), u"from elsewhere!"_s);
  press(Qt::Key_Return, u"\r"_s);
  EXPECT_TRUE(isIn(planning));
  EXPECT_TRUE(accessible(u"Generating a command"_s));
  EXPECT_FALSE(accessible(request));
  press(Qt::Key_Escape);
  EXPECT_FALSE(model.fileSession.get());
}

TEST_F(FileActionViewTest, ABarShownAgainHasTheFocusInItsField) {
  openFiles();
  show();
  press(Qt::Key_Tab);
  panel.hide();
  panelWindow.finishFade();
  window.hide();
  openFiles(Stage::Input{}, {u"other.txt"_s});
  show();
  EXPECT_TRUE(accessible(u"other.txt"_s));
  EXPECT_EQ(focused(), request);
}

TEST_F(FileActionViewTest, ABarThatGoesOnForOtherFilesKeepsNothingOfTheFormerOnes) {
  openFiles();
  show();
  const auto reuse = [this] {
    openFiles(Stage::Input{}, {u"other.txt"_s});
    scheduler.advance(0);
    EXPECT_TRUE(accessible(u"other.txt"_s));
    EXPECT_EQ(focused(), request);
    press(Qt::Key_Z, {}, Qt::ControlModifier);
    EXPECT_EQ(session().instruction.get(), QString());
  };
  for (const bool isDeleted : {false, true}) {
    type(u"zip"_s);
    for (int i = 0; isDeleted && i < 3; ++i) press(Qt::Key_Backspace, u"\b"_s);
    press(Qt::Key_Backtab);
    press(Qt::Key_Backtab);
    EXPECT_EQ(focused(), u"Convert"_s);
    QQuickItem* row = accessible(u"Convert"_s)->parentItem()->parentItem()->parentItem();
    ASSERT_TRUE(row->setProperty("contentX", 10));
    reuse();
    EXPECT_EQ(row->property("contentX").toDouble(), 0);
  }
  enter(Stage::Preview{zipCommand()});
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), u"Edit request"_s);
  reuse();
}

TEST_F(FileActionViewTest, TabPassesThroughEveryControl) {
  openFiles();
  show();
  QStringList order;
  for (int i = 0; i < 7; ++i) {
    press(Qt::Key_Tab, u"\t"_s);
    order += focused();
  }
  EXPECT_EQ(order, (QStringList{u"Generate command"_s, u"Rename"_s, u"Zip"_s, u"Folder"_s, u"Convert"_s,
                                u"Dismiss"_s, request}));
  press(Qt::Key_Backtab);
  press(Qt::Key_Backtab);
  EXPECT_EQ(focused(), u"Convert"_s);
  press(Qt::Key_Space, u" "_s);
  EXPECT_EQ(session().instruction.get(), u"Convert these to "_s);
  EXPECT_EQ(focused(), request);
  EXPECT_TRUE(isIn(input));
}

TEST_F(FileActionViewTest, APresetFillsTheFieldAndCanBeUndone) {
  struct Preset {
    QString title;
    QString prompt;
  };
  const std::vector<Preset> presets = {
      {u"Rename"_s, u"Rename these to lowercase words separated by dashes"_s},
      {u"Zip"_s, u"Compress these into a single zip archive"_s},
      {u"Folder"_s, u"Move these into a new folder named "_s},
      {u"Convert"_s, u"Convert these to "_s}};
  openFiles();
  show(false);
  EXPECT_FALSE(panelWindow.isKey);
  for (const Preset& preset : presets) {
    click(preset.title);
    EXPECT_EQ(session().instruction.get(), preset.prompt);
    EXPECT_EQ(focused(), request);
    EXPECT_TRUE(isIn(input));
  }
  EXPECT_TRUE(panelWindow.isKey) << "the user is to type on";
  type(u"JPG"_s);
  EXPECT_EQ(session().instruction.get(), u"Convert these to JPG"_s);
  for (int i = 0; i < 5; ++i) press(Qt::Key_Z, {}, Qt::ControlModifier);
  EXPECT_NE(session().instruction.get(), u"Convert these to JPG"_s);
}

TEST_F(FileActionViewTest, APressIntoTheFieldTakesTheKeyboard) {
  openFiles();
  show(false);
  click(request);
  EXPECT_TRUE(panelWindow.isKey);
  panelWindow.isKey = false;
  click(u"Generate command"_s);
  EXPECT_FALSE(panelWindow.isKey);
  EXPECT_TRUE(isIn(input)) << "there is nothing to plan";
}

TEST_F(FileActionViewTest, RunsByReturnOnlyWhatCouldBeRead) {
  script->elements = {u"zip -r all.zip ."_s};
  openFiles();
  show();
  type(u"zip"_s);
  press(Qt::Key_Return, u"\r"_s);
  enter(Stage::Preview{zipCommand()});
  for (int i = 0; i < 30; ++i) {  // held down
    press(Qt::Key_Return, u"\r"_s, {}, true);
    scheduler.advance(40);
  }
  EXPECT_TRUE(isIn(preview));
  press(Qt::Key_Return, u"\r"_s);
  EXPECT_TRUE(isIn(preview)) << "a repetition that does not say it is one";
  scheduler.advance(399);
  press(Qt::Key_Return, u"\r"_s);
  EXPECT_TRUE(isIn(preview));
  scheduler.advance(401);
  press(Qt::Key_Return, u"\r"_s);
  EXPECT_TRUE(isIn(running));
  EXPECT_TRUE(accessible(u"Running…"_s));
  ASSERT_EQ(shell.commands.size(), 1U);
}

TEST_F(FileActionViewTest, RunsByReturnOnlyWhereTheKeyboardLeadsThere) {
  openFiles(Stage::Preview{zipCommand()});
  show(false);
  press(Qt::Key_Return, u"\r"_s);
  EXPECT_TRUE(isIn(preview)) << "the bar opened by itself";
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), u"Edit request"_s);
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), u"Run"_s);
  scheduler.advance(500);
  press(Qt::Key_Return, u"\r"_s);
  EXPECT_TRUE(isIn(running));

  openFiles(Stage::Preview{zipCommand()}).instruction.set(u"zip them"_s);
  show();
  press(Qt::Key_Tab);
  scheduler.advance(500);
  press(Qt::Key_Return, u"\r"_s);
  EXPECT_TRUE(isIn(input)) << "Return presses the button that has the focus";
  EXPECT_EQ(focused(), request);
  type(u"!"_s);
  EXPECT_EQ(session().instruction.get(), u"zip them!"_s) << "the cursor is at the end";
}

TEST_F(FileActionViewTest, ABlockedCommandCannotBeRun) {
  openFiles(Stage::Preview{blockedCommand()});
  show();
  EXPECT_TRUE(accessible(*blockedCommand().blockedReason));
  QQuickItem* run = named(u"Run"_s);
  ASSERT_TRUE(run);
  EXPECT_EQ(run->opacity(), 0.4);
  click(u"Run"_s);
  press(Qt::Key_Return, u"\r"_s);
  QAccessibleInterface* told = QAccessible::queryAccessibleInterface(run);
  told->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_FALSE(told->state().focusable);
  QStringList order;
  for (int i = 0; i < 3; ++i) {
    press(Qt::Key_Tab);
    order += focused();
  }
  EXPECT_EQ(order, (QStringList{u"Edit request"_s, u"Dismiss"_s, u"Edit request"_s}));
  EXPECT_TRUE(isIn(preview));
  EXPECT_TRUE(shell.commands.empty());
}

TEST_F(FileActionViewTest, EveryButtonDoesItsPart) {
  openFiles(Stage::Preview{zipCommand()}).instruction.set(u"zip them"_s);
  show(false);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(accessible(u"Run"_s))->text(QAccessible::Description),
            u"Runs the command on your files"_s);
  click(u"Run"_s);
  EXPECT_TRUE(isIn(running));
  shell.end.standardOutput = "all done";
  scheduler.advance(100);
  ASSERT_TRUE(waitUntil([this] {
    scheduler.advance(100);
    return accessible(u"Copy output"_s) != nullptr;
  }));
  EXPECT_FALSE(pasteboard.string());
  enter(Stage::Result{{{}, u"  raw \x1B[1moutput\n"_s, {}, 0, false}});
  EXPECT_TRUE(accessible(u"raw output"_s));
  click(u"Copy output"_s);
  EXPECT_EQ(pasteboard.string(), u"raw \x1B[1moutput"_s);
  click(u"Another"_s);
  EXPECT_TRUE(isIn(input));
  EXPECT_EQ(session().instruction.get(), QString());
  EXPECT_EQ(focused(), request);

  type(u"again"_s);
  enter(Stage::Error{u"No answer."_s});
  EXPECT_TRUE(accessible(u"No answer."_s));
  click(u"Try again"_s);
  EXPECT_TRUE(isIn(input));
  EXPECT_EQ(session().instruction.get(), u"again"_s);
  click(u"Generate command"_s);
  EXPECT_TRUE(isIn(planning));
  enter(Stage::Result{{{}, {}, {}, 1, false}});
  EXPECT_TRUE(accessible(u"Command failed"_s));
  EXPECT_TRUE(accessible(u"Command failed (exit 1)."_s));
  click(u"Done"_s);
  EXPECT_FALSE(model.fileSession.get());
}

TEST_F(FileActionViewTest, TheFieldHasTheFocusAgainAlsoWhenViewsFade) {
  appearance.set({.reduceMotion = false, .accent = {}});
  openFiles().instruction.set(u"zip"_s);
  show();
  ASSERT_TRUE(waitUntil([this] { return focused() == request; }));
  press(Qt::Key_Return, u"\r"_s);
  for (const QString& button : {u"Try again"_s, u"Edit request"_s, u"Another"_s}) {
    enter(button == u"Try again"_s      ? FileActionSession::StageValue{Stage::Error{u"No answer."_s}}
          : button == u"Edit request"_s ? FileActionSession::StageValue{Stage::Preview{zipCommand()}}
                                        : Stage::Result{{{}, u"output"_s, {}, 0, false}});
    ASSERT_TRUE(waitUntil([&] { return accessible(button) && !accessible(request); }));
    runFor(std::chrono::milliseconds(400));  // longer than any motion
    panelWindow.isKey = false;
    QAccessible::queryAccessibleInterface(accessible(button))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(panelWindow.isKey);
    scheduler.advance(0);
    runFor(std::chrono::milliseconds(400));
    EXPECT_EQ(focused(), request) << button.toStdString();
  }
  // Before the field has quite gone.
  press(Qt::Key_Return, u"\r"_s);
  enter(Stage::Error{u"No answer."_s});
  runFor(std::chrono::milliseconds(20));
  EXPECT_NE(focused(), request);
  session().edit();
  scheduler.advance(0);
  EXPECT_EQ(focused(), request);
}

TEST_F(FileActionViewTest, CautionsStandUnderTheCommandAndPointIntoIt) {
  script->elements = {u"echo '\u202E'; rm -rf build && ls"_s};  // shown longer than it is
  openFiles().instruction.set(u"clean up"_s);
  show();
  session().submit();
  letModelAnswer();
  ASSERT_TRUE(waitUntil([this] { return isIn(preview); }));
  scheduler.advance(0);
  ASSERT_FALSE(session().cautions().empty());
  const Caution caution = session().cautions().back();
  QQuickItem* line = accessible(caution.text);
  ASSERT_TRUE(line);
  picture(u"files-preview-caution"_s);
  const auto* well = window.rootObject()->findChild<LongTextView*>();
  ASSERT_TRUE(well);
  const QVariantMap mark = well->property("marks").toList().back().toMap();
  const QString marked =
      well->property("text").toString().sliced(mark[u"start"_s].toLongLong(), mark[u"length"_s].toLongLong());
  EXPECT_EQ(marked, u"rm"_s);
  QTest::mouseMove(&window, line->mapToScene({5, 5}).toPoint());
  EXPECT_EQ(well->property("highlightedMark").toInt(), 1);
  picture(u"files-preview-caution-hovered"_s);
}

TEST_F(FileActionViewTest, ManyCautionsScrollAndLeaveTheButtonsInPlace) {
  script->elements = {u"cat /1 /2 /3 /4 /5 /6 /7; 'w'c; 'd'u; 'l's; 's'ort; 'u'niq; 'c'ut"_s};
  openFiles().instruction.set(u"everything"_s);
  show();
  session().submit();
  letModelAnswer();
  ASSERT_TRUE(waitUntil([this] { return isIn(preview); }));
  scheduler.advance(0);
  QCoreApplication::processEvents();
  ASSERT_EQ(session().cautions().size(), 13U);
  const QQuickItem* list = accessible(u"Cautions"_s);
  ASSERT_TRUE(list);
  EXPECT_EQ(list->height(), 140);
  EXPECT_LE(list->mapToScene({0, list->height()}).y(), accessible(u"Run"_s)->mapToScene({0, 0}).y());
  const QQuickItem* last = accessible(session().cautions().back().text);
  ASSERT_TRUE(last);
  EXPECT_GT(last->mapToItem(list, {0, 0}).y(), list->height());
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), u"Cautions"_s);
  press(Qt::Key_Down);
  EXPECT_GT(last->mapToItem(list, {0, 0}).y(), list->height());
  for (int i = 0; i < 4; ++i) press(Qt::Key_PageDown);
  EXPECT_LE(last->mapToItem(list, {0, last->height()}).y(), list->height());
  picture(u"files-preview-many-cautions"_s);
  press(Qt::Key_Tab);
  EXPECT_EQ(focused(), u"Edit request"_s);
}

TEST_F(FileActionViewTest, OutputOfAnyLengthStaysCheapAndCanBeSelected) {
  QString output;
  for (int i = 0; i < 1'000'000; ++i) output += u"line %1\n"_s.arg(i);
  openFiles(Stage::Result{{{}, output, {}, 0, false}});
  show();
  auto* well = window.rootObject()->findChild<LongTextView*>();
  ASSERT_TRUE(well);
  EXPECT_EQ(well->height(), 220);
  window.grabWindow();
  for (int i = 0; i < 50; ++i) press(Qt::Key_PageDown);
  window.grabWindow();
  EXPECT_GT(well->property("viewportY").toDouble(), 40 * 198);
  EXPECT_LT(well->layoutCount(), 40);
  EXPECT_LT(well->excerpt().size(), 10'000) << "nor does assistive technology get it all";

  const QPoint start = well->mapToScene({1, 4}).toPoint();
  QTest::mousePress(&window, Qt::LeftButton, {}, start);
  QTest::mouseMove(&window, start + QPoint(20, 20));
  QTest::mouseMove(&window, start + QPoint(250, 90));
  QTest::mouseRelease(&window, Qt::LeftButton, {}, start + QPoint(250, 90));
  picture(u"files-result-selection"_s);
  press(Qt::Key_C, {}, Qt::ControlModifier);
  const QString copied = QGuiApplication::clipboard()->text();
  EXPECT_TRUE(copied.startsWith(u"line "_s));
  EXPECT_EQ(copied.count(u'\n'), 5);
  QTest::mouseDClick(&window, Qt::LeftButton, {}, start);
  EXPECT_EQ(well->selectedText(), u"line"_s);
}

TEST_F(HudViewTest, TheCalendarCardConfirmsAndGoesBack) {
  const QDateTime start({2026, 11, 16}, {15, 0});
  const CalendarDraft draft{u"Team sync Monday 3 pm"_s, start, start.addSecs(3600), u"Work"_s};
  for (const bool dark : {false, true}) {
    appearance.set({.dark = dark, .reduceMotion = true, .accent = {}});
    offerFour();
    setPhase(phase::CalendarConfirm{draft});
    showWindow();
    EXPECT_TRUE(accessible(u"New event"_s));
    EXPECT_TRUE(accessible(u"Title: Team sync Monday 3 pm"_s));
    EXPECT_TRUE(accessible(u"When: "_s + draft.dateRangeText()));
    EXPECT_TRUE(accessible(u"Calendar: Work"_s));
    const QQuickItem* add = accessible(u"Add to Calendar"_s);
    ASSERT_TRUE(add);
    EXPECT_EQ(add->property("hint"), u"Writes this event to your default calendar"_s);
    picture(dark ? u"calendar-dark"_s : u"calendar-light"_s);
  }
  model.keyboardMode.set(true);
  showWindow();
  press(Qt::Key_Return, u"\r"_s, {}, true);
  scheduler.advance(100);
  EXPECT_EQ(phaseName(model.phase.get()), u"calendarConfirm"_s) << "the Return that led here is still held";
  click(u"Back to suggestions"_s);
  EXPECT_EQ(phaseName(model.phase.get()), u"suggestions"_s);

  setPhase(phase::CalendarConfirm{draft});
  showWindow();
  press(Qt::Key_Tab);
  press(Qt::Key_Return, u"\r"_s);
  EXPECT_EQ(phaseName(model.phase.get()), u"suggestions"_s) << "Return on Back means Back";
  EXPECT_TRUE(calendarStore.saved.empty());

  setPhase(phase::CalendarConfirm{draft});
  showWindow();
  click(u"Add to Calendar"_s);
  scheduler.advance(0);
  EXPECT_EQ(phaseName(model.phase.get()), u"result"_s);
  EXPECT_EQ(calendarStore.saved, (std::vector{CalendarEvent{draft.title, draft.startDate, draft.endDate}}));
}

}  // namespace
}  // namespace lumeno
