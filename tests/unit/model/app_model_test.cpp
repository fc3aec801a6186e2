#include "core/model/app_model.h"

#include <gtest/gtest.h>

#include "unit/model/app_model_fixture.h"

namespace lumeno {
namespace {

class AutomaticModelTest : public AppModelTest {
 protected:
  AutomaticModelTest() : AppModelTest(TriggerMode::automatic) {}
};

class ManualModelTest : public AppModelTest {
 protected:
  ManualModelTest() : AppModelTest(TriggerMode::manual) {}
};

// Presenting

TEST_F(AppModelTest, SettledSelectionShowsTheHintPill) {
  select(u" serendipity "_s);
  scheduler.advance(settle - 1);
  EXPECT_FALSE(panel.shown);
  scheduler.advance(1);
  EXPECT_EQ(panel.shown, (FakeHUDPresenter::Shown{place, false, false, false}));
  EXPECT_EQ(model->selection.get(), (Selection{u" serendipity "_s, u"Notes"_s, place}));
  EXPECT_FALSE(model->suggestions.get().empty());
  EXPECT_EQ(phase(), u"suggestions"_s);
  EXPECT_TRUE(model->isHintCollapsed.get());
  EXPECT_FALSE(model->keyboardMode.get());
  EXPECT_EQ(model->selectedChipIndex.get(), std::nullopt);

  model->expandHint();
  EXPECT_FALSE(model->isHintCollapsed.get());
}

TEST_F(AutomaticModelTest, SettledSelectionShowsTheChips) {
  presentSelection();
  EXPECT_FALSE(model->isHintCollapsed.get());
  EXPECT_EQ(panel.shown, (FakeHUDPresenter::Shown{place, false, false, false}));
}

TEST_F(ManualModelTest, OnlyTheShortcutShowsAnything) {
  select(u"serendipity"_s);
  scheduler.advance(10 * settle);
  EXPECT_EQ(panel.shows, 0);
  summonByKey();
  scheduler.advance(0);
  EXPECT_EQ(panel.shows, 1);
}

TEST_F(AppModelTest, ChangingSelectionIsPresentedOnceSettled) {
  for (const auto& text : {u"seren"_s, u"serendip"_s, u"serendipity"_s}) {
    select(text);
    scheduler.advance(100);
  }
  scheduler.advance(settle - 100 - 1);
  EXPECT_EQ(panel.shows, 0);
  scheduler.advance(1);
  EXPECT_EQ(panel.shows, 1);
  EXPECT_EQ(model->selection.get()->text, u"serendipity"_s);
  scheduler.advance(10000);
  EXPECT_EQ(panel.shows, 1);
}

TEST_F(AppModelTest, SelectionThatGoesAwayHidesEverything) {
  select(u"serendipity"_s);
  scheduler.advance(100);
  select(u""_s);
  scheduler.advance(10 * settle);
  EXPECT_EQ(panel.shows, 0);

  presentSelection();
  select(u" \n"_s);
  EXPECT_FALSE(panel.shown);
  EXPECT_EQ(model->selection.get(), std::nullopt);
  EXPECT_TRUE(model->suggestions.get().empty());
  EXPECT_FALSE(model->isHintCollapsed.get());

  presentSelection();
  model->handleSelection(Selection{u" \n"_s, u"Notes"_s, place});
  EXPECT_FALSE(panel.shown);
}

TEST_F(AppModelTest, SwitchedOffApplicationsNeverShowAnything) {
  settings.disabledApps.set({u"notes"_s});
  select(u"serendipity"_s);
  scheduler.advance(settle);
  EXPECT_EQ(panel.shows, 0);
  summonByKey();
  scheduler.advance(settle);
  EXPECT_EQ(panel.shows, 0);
  EXPECT_EQ(phase(), u"suggestions"_s);
}

TEST_F(AppModelTest, EmptyListIsShownOnSummonOnly) {
  settings.disabledActionKinds.set({allIntentKinds.begin(), allIntentKinds.end()});
  select(u"serendipity"_s);
  scheduler.advance(settle);
  EXPECT_EQ(panel.shows, 0);
  EXPECT_EQ(model->selection.get(), std::nullopt);
  summonByKey();
  scheduler.advance(0);
  EXPECT_TRUE(panel.shown);
  EXPECT_TRUE(model->suggestions.get().empty());
}

TEST_F(AutomaticModelTest, EmptyListIsShown) {
  settings.disabledActionKinds.set({allIntentKinds.begin(), allIntentKinds.end()});
  select(u"serendipity"_s);
  scheduler.advance(settle);
  EXPECT_TRUE(panel.shown);
}

TEST_F(AppModelTest, DatesAreOfferedOnlyWhereThereIsACalendar) {
  const auto offersDate = [this] {
    return std::ranges::any_of(model->suggestions.get(),
                               [](const ActionSuggestion& s) { return s.kind == IntentKind::date; });
  };
  presentSelection(u"Dentist on March 3, 2031 at 3:00 PM"_s);
  EXPECT_TRUE(offersDate());
  build(nullptr);
  presentSelection(u"Dentist on March 4, 2031 at 3:00 PM"_s);
  EXPECT_FALSE(offersDate());
}

// Summoning

TEST_F(AppModelTest, SummonTakesTheKeyboardWhenNavigationIsOn) {
  for (const bool navigation : {true, false}) {
    settings.keyboardNavEnabled.set(navigation);
    select(u"serendipity"_s);
    summonByKey();
    EXPECT_TRUE(model->isCapturing.get());
    EXPECT_EQ(model->menuBarSymbol(), u"scope"_s);
    scheduler.advance(0);
    EXPECT_FALSE(model->isCapturing.get());
    EXPECT_EQ(panel.shown, (FakeHUDPresenter::Shown{place, false, navigation, navigation}));
    EXPECT_EQ(model->keyboardMode.get(), navigation);
    EXPECT_EQ(model->selectedChipIndex.get(), navigation ? std::optional(0) : std::nullopt);
    EXPECT_FALSE(model->isHintCollapsed.get());
  }
}

TEST_F(AppModelTest, SummonWithoutASelectionGivesANoticeForAWhile) {
  summonByKey();
  scheduler.advance(600);
  EXPECT_EQ(notice(), u"No selection found. Select some text, then press ⌥⌘Space."_s);
  EXPECT_EQ(panel.shown, (FakeHUDPresenter::Shown{}));
  scheduler.advance(noticeLife - 1);
  EXPECT_TRUE(panel.shown);
  scheduler.advance(1);
  EXPECT_FALSE(panel.shown);
  EXPECT_EQ(phase(), u"suggestions"_s);
}

TEST_F(AppModelTest, NoticeTimerLeavesAnotherPhaseAlone) {
  summonByKey();
  scheduler.advance(600);
  ASSERT_EQ(phase(), u"notice"_s);
  model->phase.set(phase::Result{});
  scheduler.advance(2 * noticeLife);
  EXPECT_EQ(phase(), u"result"_s);
  EXPECT_TRUE(panel.shown);
}

TEST_F(AppModelTest, SelectionDuringANoticeReplacesIt) {
  summonByKey();
  scheduler.advance(600);
  select(u"serendipity"_s);
  scheduler.advance(settle);
  EXPECT_EQ(phase(), u"suggestions"_s);
  scheduler.advance(2 * noticeLife);
  EXPECT_TRUE(panel.shown);
}

TEST_F(AppModelTest, SecondSummonDuringACaptureIsIgnored) {
  summonByKey();
  scheduler.advance(100);
  summonByKey();
  scheduler.advance(1000);
  EXPECT_EQ(keystrokes.copies, 1);
  EXPECT_EQ(panel.shows, 1);
  EXPECT_FALSE(model->isCapturing.get());
  summonByKey();
  scheduler.advance(1000);
  EXPECT_EQ(keystrokes.copies, 2);
}

TEST_F(AppModelTest, SummonDuringGenerationEndsIt) {
  presentSelection();
  model->run(chip(IntentKind::grammar));
  scheduler.advance(150);
  EXPECT_EQ(ai->runningStreams, 1);
  summonByKey();
  EXPECT_EQ(ai->runningStreams, 0);
  scheduler.advance(5000);
  EXPECT_EQ(phase(), u"suggestions"_s);
  EXPECT_TRUE(model->keyboardMode.get());
}

TEST_F(AppModelTest, WhatIsRunDuringACaptureDoesNotOutliveIt) {
  presentSelection();
  element->text.reset();
  accessibility.focused = nullptr;
  keystrokes.onCopy = [this] { pasteboard.put({{"text/plain", "copied"}}); };
  summonByKey();
  model->run(chip(IntentKind::grammar));
  scheduler.advance(5000);
  EXPECT_EQ(phase(), u"suggestions"_s);
  EXPECT_EQ(model->selection.get()->text, u"copied"_s);
  EXPECT_EQ(ai->runningStreams, 0);
}

TEST_F(AppModelTest, PollAfterASummonNeitherCollapsesTheChipsNorEndsAnAnswer) {
  settings.keyboardNavEnabled.set(false);
  accessibility.beginGesture();
  buffer.text = u"serendipity"_s;
  summonByKey();
  scheduler.advance(0);
  ASSERT_TRUE(model->selection.get());
  model->run(chip(IntentKind::grammar));

  element->text = u"serendipity"_s;  // seen by accessibility too by now, at a place of its own
  element->setRangeBounds(elsewhere);
  accessibility.stir();
  scheduler.advance(5000);
  EXPECT_EQ(phase(), u"result"_s);
  EXPECT_FALSE(model->isHintCollapsed.get());
  EXPECT_EQ(panel.shown->anchor, std::nullopt);
}

TEST_F(AppModelTest, ChipsAreNotDisturbedWhileThePanelHasTheKeyboard) {
  select(u"serendipity"_s);
  summonByKey();
  scheduler.advance(0);
  workspace.activate(ourselves);
  accessibility.stir();
  scheduler.advance(5000);
  EXPECT_TRUE(model->keyboardMode.get());

  model->dismiss();
  const int shows = panel.shows;
  workspace.activate(notes);
  scheduler.advance(5000);
  EXPECT_EQ(panel.shows, shows) << "the same selection must not come back by itself";
}

// Running chips

TEST_F(AppModelTest, TextChipStreamsIntoAResult) {
  presentSelection();
  settings.backend.set(AIBackend::ollama);
  settings.ollamaModel.set(u"small"_s);
  const auto suggestion = chip(IntentKind::grammar, u"Fix Grammar"_s);
  model->run(suggestion);
  EXPECT_EQ(model->phase.get(), (HUDPhase{phase::Generating{suggestion, u""_s}}));
  scheduler.advance(100);
  EXPECT_EQ(model->phase.get(), (HUDPhase{phase::Generating{suggestion, u"Better"_s}}));
  scheduler.advance(100);
  EXPECT_EQ(model->phase.get(), (HUDPhase{phase::Generating{suggestion, u"Better text"_s}}));
  scheduler.advance(100);
  EXPECT_TRUE(model->usedAI.get());
  EXPECT_EQ(result().kind, IntentKind::grammar);
  EXPECT_EQ(result().title, u"Fix Grammar"_s);
  EXPECT_EQ(result().body, u"Better text"_s);
  EXPECT_FALSE(result().id.isNull());
  EXPECT_EQ(phases, (QStringList{u"generating"_s, u"generating"_s, u"generating"_s, u"result"_s}));
  EXPECT_EQ(ai->made.back(), std::pair(AIBackend::ollama, u"small"_s));
  EXPECT_TRUE(ai->prompts.back().contains(u"serendipity"_s));
}

TEST_F(AppModelTest, TemplateStandsInForAnAbsentBackend) {
  presentSelection();
  model->usedAI.set(true);
  ai->available = false;
  model->run(chip(IntentKind::grammar));
  scheduler.advance(1000);
  EXPECT_EQ(phases, (QStringList{u"generating"_s, u"result"_s}));
  EXPECT_FALSE(model->usedAI.get());
  EXPECT_FALSE(result().body.isEmpty());
}

TEST_F(AppModelTest, EverythingNewerEndsAGeneration) {
  const struct {
    const char* what;
    std::function<void()> act;
    QString phase;
  } cases[] = {
      {"back", [this] { model->back(); }, u"suggestions"_s},
      {"dismiss", [this] { model->dismiss(); }, u"suggestions"_s},
      {"outside click", [this] { panel.onOutsideDismiss(); }, u"suggestions"_s},
      {"another selection", [this] { select(u"quixotic"_s); }, u"suggestions"_s},
      {"no selection", [this] { select(u""_s); }, u"suggestions"_s},
      {"summon", [this] { summonByKey(); }, u"suggestions"_s},
  };
  for (const auto& c : cases) {
    presentSelection();
    model->run(chip(IntentKind::grammar));
    scheduler.advance(150);
    ASSERT_EQ(ai->runningStreams, 1) << c.what;
    c.act();
    EXPECT_EQ(ai->runningStreams, 0) << c.what;
    scheduler.advance(settle);
    EXPECT_EQ(phase(), c.phase) << c.what;
    phases.clear();
    scheduler.advance(5000);
    EXPECT_FALSE(phases.contains(u"result"_s)) << c.what;
    select(u""_s);
  }
}

TEST_F(AppModelTest, NothingRunsWithoutASelection) {
  for (const auto kind : {IntentKind::grammar, IntentKind::date, IntentKind::link}) {
    model->run(chip(kind, u"Chip"_s, QUrl(u"https://example.org"_s)));
  }
  EXPECT_TRUE(phases.isEmpty());
  EXPECT_TRUE(urlOpener.opened.empty());
}

TEST_F(AppModelTest, DirectChipsOpenTheirLinkAndClose) {
  const QUrl url(u"https://example.org/a"_s);
  for (const auto kind : {IntentKind::address, IntentKind::link, IntentKind::email, IntentKind::phone}) {
    for (const auto& link : {std::optional(url), std::optional<QUrl>()}) {
      urlOpener.opened.clear();
      presentSelection();
      model->run(chip(kind, u"Open"_s, link));
      scheduler.advance(5000);
      EXPECT_EQ(urlOpener.opened.size(), link ? 1U : 0U);
      EXPECT_FALSE(panel.shown);
      EXPECT_EQ(model->selection.get(), std::nullopt);
      EXPECT_TRUE(ai->prompts.empty());
      select(u""_s);
    }
  }
}

TEST_F(AppModelTest, LinkThatNothingOpensGivesANotice) {
  urlOpener.succeeds = false;
  presentSelection();
  model->run(chip(IntentKind::link, u"Open"_s, QUrl(u"odd:thing"_s)));
  scheduler.advance(0);
  EXPECT_EQ(notice(), u"No application can open this link."_s);
  scheduler.advance(noticeLife);
  EXPECT_FALSE(panel.shown);

  // Old news by the time it comes.
  urlOpener.answerTime = std::chrono::milliseconds(1000);
  select(u""_s);
  presentSelection();
  model->run(chip(IntentKind::link, u"Open"_s, QUrl(u"odd:thing"_s)));
  select(u"quixotic"_s);
  scheduler.advance(1000);
  EXPECT_EQ(phase(), u"suggestions"_s);
}

// Calendar

TEST_F(AppModelTest, DateChipDraftsAndSavesAnEvent) {
  presentSelection(u"  Tea on March 3, 2031 at 3:00 PM \n"_s);
  const auto suggestion = chip(IntentKind::date);
  model->run(suggestion);
  EXPECT_EQ(model->phase.get(), (HUDPhase{phase::Generating{suggestion, u""_s}}));
  model->usedAI.set(true);
  scheduler.advance(0);
  ASSERT_EQ(phase(), u"calendarConfirm"_s);
  const auto draft = std::get<phase::CalendarConfirm>(model->phase.get()).draft;
  EXPECT_EQ(draft.title, u"Tea on March 3, 2031 at 3:00 PM"_s);
  EXPECT_EQ(draft.calendarTitle, u"Personal"_s);
  EXPECT_FALSE(model->usedAI.get());
  EXPECT_EQ(model->menuBarSymbol(), u"calendar.badge.plus"_s);

  model->confirmCalendar();
  const auto* adding = std::get_if<phase::Generating>(&model->phase.get());
  ASSERT_TRUE(adding);
  EXPECT_EQ(adding->suggestion,
            (ActionSuggestion{IntentKind::date, u"Adding to Calendar"_s, {}, {}, {}, 1.0, {}, std::nullopt}));
  model->confirmCalendar();
  scheduler.advance(0);
  EXPECT_EQ(calendarStore.saved, (std::vector{CalendarEvent{draft.title, draft.startDate, draft.endDate}}));
  EXPECT_EQ(result().title, u"Added to Calendar"_s);
  EXPECT_TRUE(result().body.startsWith(u"Added “Tea on"_s)) << result().body.toStdString();
  EXPECT_EQ(devices.cues, (QStringList{u"tap"_s, u"Tink"_s}));
}

TEST_F(AppModelTest, AnEventHandedToAnotherProgramIsNotCalledAdded) {
  calendarStore.saveAnswer = CalendarStore::Saved{u"Planner"_s, CalendarStore::Saved::State::opened};
  presentSelection(u"Tea on March 3, 2031"_s);
  model->run(chip(IntentKind::date));
  scheduler.advance(0);
  model->confirmCalendar();
  scheduler.advance(0);
  EXPECT_EQ(result().title, u"Not added yet"_s);
  EXPECT_EQ(result().body, u"Opened in Planner. Confirm it there."_s);
}

TEST_F(AppModelTest, CalendarFailuresAreResults) {
  presentSelection(u"Tea on March 3, 2031"_s);
  calendarStore.saveAnswer = CalendarStore::Failure{CalendarStore::Failure::Reason::other, u"Full."_s};
  model->run(chip(IntentKind::date));
  scheduler.advance(0);
  model->confirmCalendar();
  scheduler.advance(0);
  EXPECT_EQ(result().title, u"Couldn’t add event"_s);
  EXPECT_EQ(result().body, u"Full."_s);

  model->back();
  calendarStore.access = CalendarStore::Access::refused;
  model->run(chip(IntentKind::date));
  scheduler.advance(0);
  EXPECT_EQ(result().title, u"Couldn’t add event"_s);
  EXPECT_TRUE(result().body.startsWith(u"Lumeno needs Calendar access."_s));
  EXPECT_EQ(result().kind, IntentKind::date);
}

TEST_F(AppModelTest, LateCalendarAnswersAreDropped) {
  calendarStore.answerTime = std::chrono::milliseconds(1000);
  presentSelection(u"Tea on March 3, 2031"_s);
  model->run(chip(IntentKind::date));
  scheduler.advance(500);
  model->dismiss();
  phases.clear();
  scheduler.advance(5000);
  EXPECT_TRUE(phases.isEmpty());

  // A save that was confirmed is carried out, but no longer shown once the user has gone back.
  calendarStore.answerTime = std::chrono::milliseconds(0);
  presentSelection(u"Lunch on March 4, 2031"_s);
  model->run(chip(IntentKind::date));
  scheduler.advance(0);
  model->confirmCalendar();
  model->back();
  scheduler.advance(0);
  EXPECT_EQ(calendarStore.saved.size(), 1U);
  EXPECT_EQ(phase(), u"suggestions"_s);
}

// Results

TEST_F(AppModelTest, ResultIsCuedWhenItIsEntered) {
  showResult();
  EXPECT_EQ(devices.cues, (QStringList{u"tap"_s, u"Tink"_s}));

  settings.resultSoundEnabled.set(false);
  model->back();
  EXPECT_EQ(phase(), u"suggestions"_s);
  EXPECT_FALSE(model->suggestions.get().empty());
  devices.cues.clear();
  model->run(chip(IntentKind::tone));
  scheduler.advance(1000);
  EXPECT_EQ(devices.cues, QStringList{u"tap"_s});
}

TEST_F(AppModelTest, CopyPutsTheBodyOnThePasteboardAndCloses) {
  model->copyResult();
  EXPECT_EQ(pasteboard.string(), std::nullopt);
  showResult();
  model->copyResult();
  EXPECT_EQ(pasteboard.string(), u"Better text"_s);
  EXPECT_FALSE(panel.shown);
  EXPECT_EQ(phase(), u"suggestions"_s);
}

TEST_F(AppModelTest, ReplaceClosesAndPastes) {
  model->replaceResult();
  EXPECT_EQ(pasteboard.string(), std::nullopt);
  showResult();
  bool hiddenBeforePaste = false;
  keystrokes.onPaste = [&] { hiddenBeforePaste = !panel.shown; };
  model->replaceResult();
  EXPECT_FALSE(panel.shown);
  scheduler.advance(50);
  EXPECT_EQ(keystrokes.pastes, 1);
  EXPECT_TRUE(hiddenBeforePaste);
  EXPECT_EQ(pasteboard.string(), u"Better text"_s);
  EXPECT_EQ(phase(), u"suggestions"_s);
}

TEST_F(AppModelTest, ReplaceIntoAnotherWindowGivesANotice) {
  showResult();
  keystrokes.windowInFront = 71;
  model->replaceResult();
  scheduler.advance(50);
  EXPECT_EQ(keystrokes.pastes, 0);
  EXPECT_EQ(pasteboard.string(), u"Better text"_s);
  EXPECT_EQ(notice(), u"The selection is gone. The result is on the clipboard."_s);
  scheduler.advance(noticeLife);
  EXPECT_FALSE(panel.shown);
}

// Keyboard

TEST_F(AppModelTest, HighlightWrapsOverTheVisibleChips) {
  select(u"serendipity"_s);
  summonByKey();
  scheduler.advance(0);
  model->suggestions.set(std::vector(6, chip(IntentKind::tone)));
  EXPECT_EQ(model->visibleSuggestions().size(), 4U);
  model->moveSelection(-1);
  EXPECT_EQ(model->selectedChipIndex.get(), 3);
  model->moveSelection(1);
  EXPECT_EQ(model->selectedChipIndex.get(), 0);
  model->selectedChipIndex.set(std::nullopt);
  model->moveSelection(1);
  EXPECT_EQ(model->selectedChipIndex.get(), 1);

  model->suggestions.set({});
  model->moveSelection(1);
  EXPECT_EQ(model->selectedChipIndex.get(), 1);
  model->runSelectedChip();
  EXPECT_EQ(phase(), u"suggestions"_s);
}

TEST_F(AppModelTest, ArrowsDoNothingOutsideKeyboardMode) {
  presentSelection();
  model->moveSelection(1);
  EXPECT_EQ(model->selectedChipIndex.get(), std::nullopt);
  model->runSelectedChip();
  EXPECT_TRUE(phases.isEmpty());
}

TEST_F(AppModelTest, DigitsRunVisibleChips) {
  presentSelection();
  std::vector<ActionSuggestion> six;
  for (int i = 1; i <= 6; ++i) six.push_back(chip(IntentKind::tone, QString::number(i)));
  model->suggestions.set(six);
  for (const int missing : {0, 5, 6, 9}) EXPECT_FALSE(model->runChipNumber(missing)) << missing;
  EXPECT_TRUE(phases.isEmpty());
  EXPECT_TRUE(model->runChipNumber(4));
  EXPECT_EQ(std::get<phase::Generating>(model->phase.get()).suggestion, six[3]);
  EXPECT_FALSE(model->runChipNumber(1)) << "only among the chips";
}

TEST_F(AppModelTest, ReturnActsByPhase) {
  select(u"Tea on March 3, 2031"_s);
  summonByKey();
  scheduler.advance(0);
  model->suggestions.set({chip(IntentKind::tone), chip(IntentKind::date)});
  model->moveSelection(1);
  model->activate();
  EXPECT_EQ(phase(), u"generating"_s);
  model->activate();
  EXPECT_EQ(phase(), u"generating"_s);
  scheduler.advance(0);
  ASSERT_EQ(phase(), u"calendarConfirm"_s);
  model->activate();
  scheduler.advance(0);
  ASSERT_EQ(phase(), u"result"_s);
  const QString confirmation = result().body;
  model->activate();
  EXPECT_EQ(pasteboard.string(), confirmation);
  EXPECT_FALSE(panel.shown);
}

TEST_F(AppModelTest, SymbolFollowsThePhase) {
  const std::pair<HUDPhase, QString> cases[] = {
      {phase::Suggestions{}, u"scope"_s},
      {phase::Generating{}, u"sparkles"_s},
      {phase::CalendarConfirm{}, u"calendar.badge.plus"_s},
      {phase::Result{}, u"checkmark.circle"_s},
      {phase::Notice{}, u"scope"_s},
  };
  for (const auto& [shown, symbol] : cases) {
    model->phase.set(shown);
    EXPECT_EQ(model->menuBarSymbol(), symbol);
  }
  model->phase.set(phase::Result{});
  model->isCapturing.set(true);
  EXPECT_EQ(model->menuBarSymbol(), u"scope"_s);
}

// Wiring

TEST_F(AppModelTest, ShortcutFollowsTheSettings) {
  settings.summonHotkeyEnabled.set(false);
  EXPECT_FALSE(events.watchesKeys());
  settings.summonHotkeyEnabled.set(true);
  settings.summonHotkey.set({40, modifier::control | 0x100});
  summonByKey();
  EXPECT_FALSE(model->isCapturing.get());
  events.pressKey(40, modifier::control);
  EXPECT_TRUE(model->isCapturing.get());
}

TEST_F(AppModelTest, ObserverFollowsTrust) {
  EXPECT_EQ(accessibility.observedProcesses().size(), 1U);
  presentSelection();
  accessibility.trusted = false;
  scheduler.advance(1000);
  EXPECT_TRUE(accessibility.observedProcesses().empty());
  EXPECT_FALSE(panel.shown) << "the selection is withdrawn";
  accessibility.trusted = true;
  scheduler.advance(1000);
  EXPECT_EQ(accessibility.observedProcesses().size(), 1U);
}

TEST_F(AppModelTest, EveryPartialIsPublished) {
  presentSelection();
  ai->elements.clear();
  for (int i = 0; i < 1000; ++i) ai->elements.push_back(QString(i + 1, u'x'));
  ai->elementTime = std::chrono::milliseconds(1);
  model->run(chip(IntentKind::grammar));
  scheduler.advance(2000);
  EXPECT_EQ(phases.count(u"generating"_s), 1001);
  EXPECT_EQ(result().body.size(), 1000);
}

TEST_F(AppModelTest, ModelMayGoInTheMiddleOfEverything) {
  const std::function<void()> beginnings[] = {
      [this] { select(u"quixotic"_s); },
      [this] { summonByKey(); },
      [this] {
        presentSelection();
        model->run(chip(IntentKind::grammar));
      },
      [this] {
        presentSelection(u"Tea on March 3, 2031"_s);
        model->run(chip(IntentKind::date));
      },
      [this] {
        showResult();
        model->replaceResult();
      },
      [this] {
        urlOpener.succeeds = false;
        presentSelection();
        model->run(chip(IntentKind::link, u"Open"_s, QUrl(u"odd:thing"_s)));
      },
  };
  for (const auto& begin : beginnings) {
    begin();
    model.reset();
    const int shows = panel.shows;
    scheduler.advance(5000);
    EXPECT_EQ(panel.shows, shows);
    EXPECT_FALSE(panel.onOutsideDismiss);
    element->text.reset();
    accessibility.beginGesture();
    build(&calendar);
    scheduler.advance(1000);
  }
  EXPECT_EQ(ai->runningStreams, 0);
}

}  // namespace
}  // namespace lumeno
