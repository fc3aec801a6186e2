#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "core/model/app_model.h"

namespace lumeno {

/// The steps behind the operations. Newer user actions cancel older jobs before they change state, and a
/// cancelled job delivers nothing, so that a late answer never overwrites newer state.
class AppModel::Private {
 public:
  enum class Navigation { pointer, keyboard };
  enum class Form { chips, hintPill };
  enum class Focus { left, taken };

  Private(AppModel& model, Collaborators collaborators)
      : collaborators_(std::move(collaborators)),
        hotkey_(collaborators_.events, collaborators_.settings.summonHotkey.get().keyCode,
                collaborators_.settings.summonHotkey.get().modifiers & modifier::shortcutMask),
        model_(model) {}
  ~Private() { collaborators_.panel.onOutsideDismiss = nullptr; }
  Private(const Private&) = delete;
  Private& operator=(const Private&) = delete;

  void wireUp();

  void summon();
  void dismiss();
  void handleSelection(const std::optional<Selection>& newValue);
  void handleFileSelection(const std::optional<FileSelection>& newValue);
  void run(const ActionSuggestion& suggestion);
  void confirmCalendar();
  void copyResult();
  void copyFileOutput();
  void replaceResult();
  void back();

 private:
  void cancelJobs();
  void setPhase(HUDPhase newPhase);
  /// `selection` by value: presenting may end the job that holds it.
  void present(Selection selection, Navigation navigation, Form form);
  void presentFileSession(const FileSelection& selection, Focus focus);
  void endFileSession();
  void watchFiles();
  void captureText();
  void clear();
  void showNotice(const QString& text);
  std::vector<ActionSuggestion> suggestionsFor(const Selection& selection) const;

  void openLink(const QUrl& url);
  void generate(const ActionSuggestion& suggestion, const Selection& selection);
  void startCalendar(const QString& text, const ActionSuggestion& suggestion);
  void showResult(bool usedAI, ActionResult result);

  Collaborators collaborators_;
  SuggestionEngine engine_;
  HotkeyMonitor hotkey_;
  AppModel& model_;
  /// The window that the presented selection was read in.
  std::optional<SelectionSource> source_;

  Job generateTask_;  ///< the running generation, calendar draft or calendar save
  Job noticeTask_;
  Job presentTask_;
  Job summonTask_;
  Job replaceTask_;
  std::shared_ptr<const char> openedLink_;  ///< while it lives, a failure to open the link is still news
  std::vector<Subscription> cancellables_;
};

/// The input to suggestions and prompts, with an identity of its own.
[[nodiscard]] SelectedContext contextOf(const Selection& selection);

}  // namespace lumeno
