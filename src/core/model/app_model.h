#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "ai/ai_service.h"
#include "base/job.h"
#include "base/observable.h"
#include "base/scheduler.h"
#include "calendar/calendar_service.h"
#include "capture/accessibility_authorization.h"
#include "capture/output_services.h"
#include "capture/selection_observer.h"
#include "core/model/hud_phase.h"
#include "core/model/hud_presenter.h"
#include "core/settings/settings_store.h"
#include "files/file_action_session.h"
#include "files/finder_selection_observer.h"
#include "hotkey/hotkey_monitor.h"
#include "platform/event_monitor.h"
#include "platform/url_opener.h"
#include "records/selection.h"
#include "suggest/suggestion_engine.h"

namespace lumeno {

/// The central state machine and the only coordinator: takes selections, decides whether and how the HUD is
/// shown, runs chips and holds results. Views observe it and call its operations. Main thread; one instance
/// for the life of the process.
class AppModel {
 public:
  /// Everything must outlive the model.
  struct Collaborators {
    AccessibilityAuthorization& accessibility;
    SettingsStore& settings;
    SelectionObserver& observer;
    FinderSelectionObserver& fileObserver;
    HUDPresenter& panel;
    EventMonitor& events;
    ClipboardService& clipboard;
    SelectionReplacer& replacer;
    FeedbackService& feedback;
    UrlOpener& urlOpener;
    CommandShell& shell;
    Scheduler& scheduler;
    AIServiceFactory aiServices;
    /// Null where this build has no calendar: date suggestions are then not offered.
    CalendarService* calendar = nullptr;
  };

  explicit AppModel(Collaborators collaborators);
  ~AppModel();
  AppModel(const AppModel&) = delete;
  AppModel& operator=(const AppModel&) = delete;

  // Published state. Views read and observe it; only the model assigns it (`isHintCollapsed` through
  // `expandHint`).
  Observable<std::optional<Selection>> selection;
  /// The open file command bar; null when there is none. A session lives on while somebody still holds it.
  Observable<std::shared_ptr<FileActionSession>> fileSession;
  Observable<std::vector<ActionSuggestion>> suggestions;
  Observable<HUDPhase> phase{HUDPhase{phase::Suggestions{}}};
  Observable<bool> usedAI;
  Observable<bool> isCapturing;
  Observable<bool> keyboardMode;
  Observable<std::optional<int>> selectedChipIndex;
  Observable<bool> isHintCollapsed;

  /// The first four of `suggestions`.
  [[nodiscard]] std::vector<ActionSuggestion> visibleSuggestions() const;
  /// The symbol of the tray item.
  [[nodiscard]] QString menuBarSymbol() const;

  // Operations.
  void summon();
  void dismiss();
  void handleSelection(const std::optional<Selection>& newValue);
  /// Opens, keeps or closes the file command bar.
  void handleFileSelection(const std::optional<FileSelection>& newValue);
  void run(const ActionSuggestion& suggestion);
  void confirmCalendar();
  void copyResult();
  /// Hides the HUD, then pastes the result over the selection it was made from; when that is gone the result
  /// is on the pasteboard and a notice says so.
  void replaceResult();
  void back();
  void moveSelection(int delta);
  void runSelectedChip();
  /// Return in keyboard mode: by phase, runs the highlighted chip, confirms the event or copies the result.
  void activate();
  /// A digit key; false when there is no such chip (the key is then not handled).
  bool runChipNumber(int number);
  /// From the hint pill to the chips.
  void expandHint();
  /// Puts what the command of the file command bar came to on the pasteboard; nothing before it has ended.
  void copyFileOutput();

 private:
  bool runChipAt(int index);

  class Private;
  std::unique_ptr<Private> d_;
};

}  // namespace lumeno
