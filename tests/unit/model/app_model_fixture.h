#pragma once

#include <gtest/gtest.h>

#include "core/model/app_model.h"
#include "support/fake_accessibility.h"
#include "support/fake_ai_service.h"
#include "support/fake_calendar_store.h"
#include "support/fake_command_shell.h"
#include "support/fake_event_monitor.h"
#include "support/fake_feedback_devices.h"
#include "support/fake_file_manager.h"
#include "support/fake_hud_presenter.h"
#include "support/fake_keystroke_sender.h"
#include "support/fake_login_item.h"
#include "support/fake_pasteboard.h"
#include "support/fake_preferences.h"
#include "support/fake_selection_buffer.h"
#include "support/fake_url_opener.h"
#include "support/fake_workspace.h"
#include "support/manual_scheduler.h"

namespace lumeno {

using namespace Qt::StringLiterals;

inline const RunningApplication notes{u"org.example.Notes"_s, u"Notes"_s, 7, 70, false};
inline const RunningApplication ourselves{u"org.lumeno.Lumeno"_s, u"Lumeno"_s, 1, 10, false};
inline constexpr Rect place{100, 200, 50, 14};
inline constexpr Rect elsewhere{100, 600, 50, 14};
inline constexpr int settle = 350;
inline constexpr int noticeLife = 2600;
inline constexpr uint64_t optionCommand = modifier::option | modifier::command;

inline ActionSuggestion chip(IntentKind kind, const QString& title = u"Chip"_s,
                             const std::optional<QUrl>& url = std::nullopt) {
  return {kind, title, {}, {}, {}, 0.5, u"Do it."_s, url};
}

/// The model over the real observer, capture and output services, on fakes of the system alone.
class AppModelTest : public testing::Test {
 protected:
  explicit AppModelTest(TriggerMode mode = TriggerMode::hint) : settings(preferences, loginItem, mode) {
    settings.resultSoundEnabled.set(true);
    workspace.frontmost = notes;
    accessibility.focused = element;
    ai->elements = {u"Better"_s, u"Better text"_s};
    build(&calendar);
  }

  void build(CalendarService* service) {
    model.reset();
    model = std::make_unique<AppModel>(AppModel::Collaborators{
        authorization, settings, observer, fileObserver, panel, events, clipboard, replacer, feedback,
        urlOpener, shell, scheduler, FakeAIService::factory(scheduler, ai), service});
    scheduler.advance(0);
    phaseLog = model->phase.subscribe([this](const HUDPhase& phase) { phases.append(phaseName(phase)); });
    phases.clear();
  }

  /// The user selects text in the application in front, and the desktop tells so.
  void select(const QString& text, const Rect& bounds = place) {
    accessibility.beginGesture();
    element->text = text;
    element->setRangeBounds(bounds);
    accessibility.notify(workspace.frontmost->processIdentifier,
                         AccessibilityNotification::selectedTextChanged);
    scheduler.advance(0);
  }
  void presentSelection(const QString& text = u"serendipity"_s) {
    select(text);
    scheduler.advance(settle);
    ASSERT_TRUE(model->selection.get()) << "nothing was presented";
    phases.clear();
  }
  void summonByKey() { events.pressKey(49, optionCommand); }

  [[nodiscard]] QString phase() const { return phaseName(model->phase.get()); }
  [[nodiscard]] QString notice() const {
    const auto* shown = std::get_if<phase::Notice>(&model->phase.get());
    return shown ? shown->message : QString();
  }
  [[nodiscard]] ActionResult result() const {
    const auto* shown = std::get_if<phase::Result>(&model->phase.get());
    return shown ? shown->result : ActionResult();
  }
  /// From a presented selection to its result.
  void showResult() {
    presentSelection();
    model->run(chip(IntentKind::grammar, u"Fix Grammar"_s));
    scheduler.advance(1000);
    ASSERT_EQ(phase(), u"result"_s);
  }

  ManualScheduler scheduler;
  FakeAccessibility accessibility{scheduler};
  FakeWorkspace workspace;
  FakePasteboard pasteboard{scheduler};
  FakeKeystrokeSender keystrokes{scheduler};
  FakeSelectionBuffer buffer{scheduler};
  FakeEventMonitor events;
  FakeHUDPresenter panel;
  FakeFeedbackDevices devices;
  FakeUrlOpener urlOpener{scheduler};
  FakeFileManager fileManager{scheduler};
  FakeCommandShell shell{scheduler};
  FakeCalendarStore calendarStore{scheduler};
  CalendarService calendar{calendarStore, scheduler};
  std::shared_ptr<FakeAIScript> ai = std::make_shared<FakeAIScript>();
  FakePreferences preferences;
  FakeLoginItem loginItem;
  SettingsStore settings;
  AccessibilityAuthorization authorization{accessibility, scheduler};
  ClipboardSelectionCapture clipboardCapture{pasteboard, keystrokes, buffer, scheduler};
  SelectionObserver observer{accessibility, workspace, scheduler, clipboardCapture};
  FinderSelectionObserver fileObserver{fileManager,   workspace,        authorization,
                                       accessibility, clipboardCapture, scheduler};
  ClipboardService clipboard{pasteboard};
  SelectionReplacer replacer{pasteboard, keystrokes, scheduler};
  FeedbackService feedback{devices, devices};
  std::shared_ptr<FakeElement> element = std::make_shared<FakeElement>();
  QStringList phases;
  Subscription phaseLog;
  std::unique_ptr<AppModel> model;
};

}  // namespace lumeno
