#pragma once

#include <gtest/gtest.h>

#include "core/model/app_model.h"
#include "hud/hud_panel_controller.h"
#include "support/fake_accessibility.h"
#include "support/fake_ai_service.h"
#include "support/fake_appearance.h"
#include "support/fake_calendar_store.h"
#include "support/fake_command_shell.h"
#include "support/fake_event_monitor.h"
#include "support/fake_feedback_devices.h"
#include "support/fake_file_manager.h"
#include "support/fake_keystroke_sender.h"
#include "support/fake_login_item.h"
#include "support/fake_panel_window.h"
#include "support/fake_pasteboard.h"
#include "support/fake_preferences.h"
#include "support/fake_screen_layout.h"
#include "support/fake_selection_buffer.h"
#include "support/fake_url_opener.h"
#include "support/fake_workspace.h"
#include "support/manual_scheduler.h"
#include "support/print_text.h"

namespace lumeno {

inline ActionSuggestion suggestion(IntentKind kind, const QString& title, const QString& summary = {}) {
  return {kind, title, {}, summary, {}, 0.5, {}, {}};
}

/// The real model and panel controller on fakes of the system, for views to be put on. Tests assign the
/// model's published state where they need a particular one.
class HudFixture : public testing::Test {
 protected:
  void setPhase(HUDPhase phase) { model.phase.set(std::move(phase)); }
  void generate(const QString& partial, const QString& title = QStringLiteral("Make it professional")) {
    setPhase(phase::Generating{suggestion(IntentKind::tone, title), partial});
  }
  void finish(const QString& body, IntentKind kind = IntentKind::tone,
              const QString& title = QStringLiteral("Make it professional")) {
    setPhase(phase::Result{{QUuid::createUuid(), kind, title, body, QDateTime::currentDateTime()}});
  }
  void offer(std::vector<ActionSuggestion> suggestions, const QString& app = QStringLiteral("Mail")) {
    model.selection.set(Selection{QStringLiteral("text"), app, Rect{600, 500, 200, 20}});
    model.suggestions.set(std::move(suggestions));
    setPhase(phase::Suggestions{});
  }
  /// Opens a file command bar in a stage, as the model does.
  FileActionSession& openFiles(FileActionSession::StageValue stage = FileActionSession::Stage::Input{},
                               const QStringList& names = {QStringLiteral("a.png"), QStringLiteral("b.png"),
                                                           QStringLiteral("c.png")}) {
    FileSelection files;
    for (const QString& name : names) files.urls.push_back(fileUrl("/home/ana/Pictures/" + name.toUtf8()));
    const auto session = std::make_shared<FileActionSession>(
        files, FileActionService(FakeAIService::factory(scheduler, script), shell, scheduler,
                                 AIBackend::ollama, QStringLiteral("model")));
    session->stage.set(std::move(stage));
    model.fileSession.set(session);
    return *session;
  }
  void showPanel() { panel.show(Rect{600, 500, 200, 20}, false, false, false); }

  ManualScheduler scheduler;
  FakeAccessibility accessibility{scheduler};
  FakeWorkspace workspace;
  FakePasteboard pasteboard{scheduler};
  FakeKeystrokeSender keystrokes{scheduler};
  FakeSelectionBuffer buffer{scheduler};
  FakeEventMonitor events;
  FakeFeedbackDevices devices;
  FakeUrlOpener urlOpener{scheduler};
  FakePreferences preferences;
  FakeLoginItem loginItem;
  std::shared_ptr<FakeAIScript> script = std::make_shared<FakeAIScript>();
  FakeFileManager fileManager{scheduler};
  FakeCommandShell shell{scheduler};
  FakePanelWindow panelWindow;
  FakeScreenLayout screens;
  FakeAppearance appearance;
  SettingsStore settings{preferences, loginItem};
  AccessibilityAuthorization authorization{accessibility, scheduler};
  ClipboardSelectionCapture clipboardCapture{pasteboard, keystrokes, buffer, scheduler};
  SelectionObserver observer{accessibility, workspace, scheduler, clipboardCapture};
  FinderSelectionObserver fileObserver{fileManager,   workspace,        authorization,
                                       accessibility, clipboardCapture, scheduler};
  ClipboardService clipboard{pasteboard};
  SelectionReplacer replacer{pasteboard, keystrokes, scheduler};
  FeedbackService feedback{devices, devices};
  FakeCalendarStore calendarStore{scheduler};
  CalendarService calendar{calendarStore, scheduler};
  HUDPanelController panel{panelWindow, screens, events, appearance};
  AppModel model{{authorization, settings, observer, fileObserver, panel, events, clipboard, replacer,
                  feedback, urlOpener, shell, scheduler, FakeAIService::factory(scheduler, script),
                  &calendar}};
};

}  // namespace lumeno
