#include "core/model/app_model.h"

#include <QUuid>
#include <algorithm>
#include <utility>

#include "base/text.h"
#include "core/model/app_model_private.h"

using namespace Qt::StringLiterals;

namespace lumeno {

using namespace std::chrono_literals;

namespace {

constexpr auto settleDelay = 350ms;
constexpr auto noticeLifetime = 2600ms;
constexpr std::size_t visibleSuggestionLimit = 4;

}  // namespace

SelectedContext contextOf(const Selection& selection) {
  return {QUuid::createUuid(), selection.text, selection.sourceApp, QString()};
}

void AppModel::Private::wireUp() {
  auto& settings = collaborators_.settings;
  auto& observer = collaborators_.observer;
  hotkey_.onSummon = [this] { summon(); };
  collaborators_.panel.onOutsideDismiss = [this] { dismiss(); };

  cancellables_.push_back(settings.summonHotkeyEnabled.subscribeDistinct([this](bool enabled) {
    if (enabled) {
      hotkey_.start();
    } else {
      hotkey_.stop();
    }
  }));
  cancellables_.push_back(settings.summonHotkey.subscribeDistinct([this](const HotkeyConfig& config) {
    hotkey_.keyCode = config.keyCode;
    hotkey_.requiredFlags = config.modifiers & modifier::shortcutMask;
  }));
  cancellables_.push_back(observer.selection().subscribe(
      [this](const std::optional<Selection>& value) { handleSelection(value); }));
  cancellables_.push_back(
      collaborators_.accessibility.isTrusted().subscribeDistinct([&observer](bool trusted) {
        if (trusted) {
          observer.start();
        } else {
          observer.stop();
        }
      }));
  watchFiles();
}

void AppModel::Private::watchFiles() {
  auto& settings = collaborators_.settings;
  auto& fileObserver = collaborators_.fileObserver;
  cancellables_.push_back(fileObserver.selection().subscribe(
      [this](const std::optional<FileSelection>& value) { handleFileSelection(value); }));
  const auto follow = [this, &settings, &fileObserver](bool) {
    if (settings.fileActionsEnabled.get() && settings.hasCompletedOnboarding.get()) {
      fileObserver.start();
      return;
    }
    fileObserver.stop();
    fileObserver.clear();
    if (model_.fileSession.get()) dismiss();
  };
  cancellables_.push_back(settings.fileActionsEnabled.subscribeDistinct(follow));
  cancellables_.push_back(settings.hasCompletedOnboarding.subscribeDistinct(follow));
}

void AppModel::Private::cancelJobs() {
  generateTask_.cancel();
  noticeTask_.cancel();
  presentTask_.cancel();
  openedLink_.reset();
}

void AppModel::Private::setPhase(HUDPhase newPhase) {
  const auto isResult = [](const HUDPhase& phase) { return std::holds_alternative<phase::Result>(phase); };
  const bool entersResult = isResult(newPhase) && !isResult(model_.phase.get());
  model_.phase.set(std::move(newPhase));
  if (entersResult) {
    const auto& settings = collaborators_.settings;
    collaborators_.feedback.play(settings.resultSoundEnabled.get(), settings.hapticsEnabled.get());
  }
}

void AppModel::Private::endFileSession() {
  const auto session = model_.fileSession.get();
  if (!session) return;
  session->abandon();
  model_.fileSession.set(nullptr);
}

void AppModel::Private::dismiss() {
  cancelJobs();
  endFileSession();
  collaborators_.panel.hide();
  model_.selection.set(std::nullopt);
  model_.keyboardMode.set(false);
  model_.selectedChipIndex.set(std::nullopt);
  model_.isHintCollapsed.set(false);
  setPhase(phase::Suggestions());
}

void AppModel::Private::handleSelection(const std::optional<Selection>& newValue) {
  const bool hasText = newValue && !text::trimmed(newValue->text).isEmpty();
  const bool isBarOpen = model_.fileSession.get() != nullptr;
  if (!hasText && isBarOpen) return;
  endFileSession();
  cancelJobs();
  if (hasText) {
    if (isBarOpen) collaborators_.panel.hide();
    const TriggerMode mode = collaborators_.settings.triggerMode;
    if (mode == TriggerMode::manual) return;
    const Form form = mode == TriggerMode::hint ? Form::hintPill : Form::chips;
    presentTask_ = collaborators_.scheduler.after(
        settleDelay, [this, selection = *newValue, form] { present(selection, Navigation::pointer, form); });
    return;
  }
  model_.selection.set(std::nullopt);
  model_.suggestions.set({});
  setPhase(phase::Suggestions());
  model_.isHintCollapsed.set(false);
  collaborators_.panel.hide();
}

void AppModel::Private::handleFileSelection(const std::optional<FileSelection>& newValue) {
  if (!collaborators_.settings.fileActionsEnabled.get()) return;
  const auto session = model_.fileSession.get();
  if (!newValue) {
    if (session) dismiss();
  } else if (!session || session->selection != *newValue) {
    presentFileSession(*newValue, Focus::left);
  }
}

void AppModel::Private::presentFileSession(const FileSelection& selection, Focus focus) {
  cancelJobs();
  endFileSession();
  model_.selection.set(std::nullopt);
  model_.suggestions.set({});
  model_.keyboardMode.set(false);
  model_.selectedChipIndex.set(std::nullopt);
  model_.isHintCollapsed.set(false);
  setPhase(phase::Suggestions());
  const auto& settings = collaborators_.settings;
  model_.fileSession.set(std::make_shared<FileActionSession>(
      selection, FileActionService(collaborators_.aiServices, collaborators_.shell, collaborators_.scheduler,
                                   settings.backend.get(), settings.ollamaModel.get())));
  collaborators_.panel.show(selection.anchor, true, true, focus == Focus::taken);
}

std::vector<ActionSuggestion> AppModel::Private::suggestionsFor(const Selection& selection) const {
  QSet<IntentKind> disabledKinds = collaborators_.settings.disabledActionKinds.get();
  if (!collaborators_.calendar) disabledKinds.insert(IntentKind::date);
  return engine_.suggestions(contextOf(selection), disabledKinds);
}

void AppModel::Private::present(Selection selection, Navigation navigation, Form form) {
  if (collaborators_.settings.disabledApps.get().contains(selection.sourceApp.toLower())) {
    clear();
    return;
  }
  endFileSession();
  auto list = suggestionsFor(selection);
  if (form == Form::hintPill && list.empty()) {
    clear();
    return;
  }
  const bool byKeyboard = navigation == Navigation::keyboard;
  source_ = collaborators_.observer.lastSource();
  model_.selection.set(selection);
  model_.suggestions.set(std::move(list));
  setPhase(phase::Suggestions());
  model_.keyboardMode.set(byKeyboard);
  model_.selectedChipIndex.set(byKeyboard ? std::optional(0) : std::nullopt);
  model_.isHintCollapsed.set(!byKeyboard && form == Form::hintPill);
  collaborators_.panel.show(selection.screenBounds, false, byKeyboard, byKeyboard);
}

void AppModel::Private::clear() {
  endFileSession();
  model_.selection.set(std::nullopt);
  model_.suggestions.set({});
  model_.keyboardMode.set(false);
  model_.isHintCollapsed.set(false);
  collaborators_.panel.hide();
}

void AppModel::Private::showNotice(const QString& text) {
  endFileSession();
  model_.selection.set(std::nullopt);
  model_.suggestions.set({});
  model_.keyboardMode.set(false);
  model_.isHintCollapsed.set(false);
  setPhase(phase::Notice{text});
  collaborators_.panel.show(std::nullopt, false, false, false);
  noticeTask_ = collaborators_.scheduler.after(noticeLifetime, [this] {
    if (std::holds_alternative<phase::Notice>(model_.phase.get())) dismiss();
  });
}

void AppModel::Private::summon() {
  if (model_.isCapturing.get()) return;
  cancelJobs();
  model_.isCapturing.set(true);
  if (!collaborators_.settings.fileActionsEnabled.get()) {
    captureText();
    return;
  }
  summonTask_ =
      collaborators_.fileObserver.currentSelection([this](const std::optional<FileSelection>& files) {
        if (!files) {
          captureText();
          return;
        }
        model_.isCapturing.set(false);
        presentFileSession(*files, Focus::taken);
      });
}

void AppModel::Private::captureText() {
  summonTask_ = collaborators_.observer.captureSelection([this](const std::optional<Selection>& captured) {
    cancelJobs();  // what was begun during the capture would show itself over the captured selection
    model_.isCapturing.set(false);
    if (!captured) {
      showNotice(u"No selection found. Select some text, then press ⌥⌘Space."_s);
      return;
    }
    const bool byKeyboard = collaborators_.settings.keyboardNavEnabled.get();
    present(*captured, byKeyboard ? Navigation::keyboard : Navigation::pointer, Form::chips);
  });
}

AppModel::AppModel(Collaborators collaborators)
    : d_(std::make_unique<Private>(*this, std::move(collaborators))) {
  d_->wireUp();
}

AppModel::~AppModel() = default;

std::vector<ActionSuggestion> AppModel::visibleSuggestions() const {
  const auto& all = suggestions.get();
  const auto count = std::min(all.size(), visibleSuggestionLimit);
  return {all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count)};
}

QString AppModel::menuBarSymbol() const {
  if (isCapturing.get()) return u"scope"_s;
  if (fileSession.get()) return u"folder.badge.gearshape"_s;
  const HUDPhase& current = phase.get();
  if (std::holds_alternative<phase::Generating>(current)) return u"sparkles"_s;
  if (std::holds_alternative<phase::CalendarConfirm>(current)) return u"calendar.badge.plus"_s;
  if (std::holds_alternative<phase::Result>(current)) return u"checkmark.circle"_s;
  return u"scope"_s;
}

void AppModel::summon() {
  d_->summon();
}

void AppModel::dismiss() {
  d_->dismiss();
}

void AppModel::handleSelection(const std::optional<Selection>& newValue) {
  d_->handleSelection(newValue);
}

void AppModel::handleFileSelection(const std::optional<FileSelection>& newValue) {
  d_->handleFileSelection(newValue);
}

void AppModel::run(const ActionSuggestion& suggestion) {
  d_->run(suggestion);
}

void AppModel::confirmCalendar() {
  d_->confirmCalendar();
}

void AppModel::copyResult() {
  d_->copyResult();
}

void AppModel::replaceResult() {
  d_->replaceResult();
}

void AppModel::back() {
  d_->back();
}

void AppModel::moveSelection(int delta) {
  const int count = static_cast<int>(visibleSuggestions().size());
  if (!keyboardMode.get() || count == 0) return;
  selectedChipIndex.set((selectedChipIndex.get().value_or(0) + delta + count) % count);
}

void AppModel::runSelectedChip() {
  if (const auto index = selectedChipIndex.get()) runChipAt(*index);
}

void AppModel::activate() {
  const HUDPhase& current = phase.get();
  if (std::holds_alternative<phase::Suggestions>(current)) {
    runSelectedChip();
  } else if (std::holds_alternative<phase::CalendarConfirm>(current)) {
    confirmCalendar();
  } else if (std::holds_alternative<phase::Result>(current)) {
    copyResult();
  }
}

bool AppModel::runChipNumber(int number) {
  return std::holds_alternative<phase::Suggestions>(phase.get()) && runChipAt(number - 1);
}

bool AppModel::runChipAt(int index) {
  const auto chips = visibleSuggestions();
  if (index < 0 || index >= static_cast<int>(chips.size())) return false;
  run(chips[static_cast<std::size_t>(index)]);
  return true;
}

void AppModel::expandHint() {
  isHintCollapsed.set(false);
}

void AppModel::copyFileOutput() {
  d_->copyFileOutput();
}

}  // namespace lumeno
