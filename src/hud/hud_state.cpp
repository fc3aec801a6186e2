#include "hud/hud_state.h"

#include <QVariantMap>

#include "base/overloaded.h"
#include "hud/visible_text.h"
#include "records/intent_kind.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds partialInterval{33};
/// How long a command must have been on show, and Return been left alone, before Return runs it.
constexpr std::chrono::milliseconds returnRest{400};

QVariantMap chip(const ActionSuggestion& suggestion) {
  return {{u"title"_s, suggestion.title},
          {u"summary"_s, suggestion.summary},
          {u"symbol"_s, symbolName(suggestion)},
          {u"tint"_s, tintName(tint(suggestion.kind))}};
}

void describePhase(HudContent& content, const AppModel& model) {
  const auto header = [&content](const QString& symbol, const QString& title) {
    content.headerSymbol = symbol;
    content.headerTitle = title;
  };
  if (const auto& session = model.fileSession.get()) {
    content.phase = u"files"_s;
    header(u"folder.fill.badge.gearshape"_s, visibleText(session->selection.displayLabel()));
    return;
  }
  const HUDPhase& current = model.phase.get();
  content.phase = phaseName(current);
  std::visit(Overloaded{
                 [&](const phase::Suggestions&) {
                   const auto& selection = model.selection.get();
                   header(u"sparkles"_s, selection ? selection->sourceApp : u"Lumeno"_s);
                 },
                 [&](const phase::Generating& generating) {
                   header(u"sparkles"_s, generating.suggestion.title);
                   content.runningTitle = generating.suggestion.title;
                 },
                 [&](const phase::CalendarConfirm& confirm) {
                   header(u"calendar.badge.plus"_s, u"New event"_s);
                   content.eventTitle = confirm.draft.title;
                   content.eventTime = confirm.draft.dateRangeText();
                   content.eventCalendar = confirm.draft.calendarTitle;
                 },
                 [&](const phase::Result& finished) {
                   header(symbolName(finished.result.kind), finished.result.title);
                   content.resultBody = finished.result.body;
                   content.usedAI = model.usedAI.get();
                   content.allowReplace = finished.result.kind != IntentKind::date;
                 },
                 [&](const phase::Notice& notice) {
                   header(u"text.cursor"_s, u"Lumeno"_s);
                   content.notice = notice.message;
                 },
             },
             current);
}

void describePill(HudContent& content, const std::vector<ActionSuggestion>& visible) {
  content.pillCount = static_cast<int>(visible.size());
  if (visible.empty()) {
    content.pillSymbol = u"sparkles"_s;
    content.pillTitle = u"Actions"_s;
    content.pillTint = tintName(Tint::secondary);
    return;
  }
  content.pillSymbol = symbolName(visible.front());
  content.pillTitle = visible.front().title;
  content.pillTint = tintName(tint(visible.front().kind));
}

}  // namespace

HudState::HudState(AppModel& model, Scheduler& scheduler) : model_(model), scheduler_(scheduler) {
  const auto changed = [this](const auto&) { modelChanged(); };
  subscriptions_.push_back(model.selection.subscribe(changed));
  subscriptions_.push_back(
      model.fileSession.subscribe([this](const auto& session) { files_.follow(session); }));
  subscriptions_.push_back(model.suggestions.subscribe(changed));
  subscriptions_.push_back(model.usedAI.subscribe(changed));
  subscriptions_.push_back(model.keyboardMode.subscribe(changed));
  subscriptions_.push_back(model.selectedChipIndex.subscribe(changed));
  subscriptions_.push_back(model.isHintCollapsed.subscribe(changed));
  subscriptions_.push_back(model.phase.subscribe([this](const HUDPhase& phase) { phaseChanged(phase); }));
}

void HudState::present(bool fromHidden, bool takesKeyboard) {
  isPresented_ = true;
  isSummoned_ = takesKeyboard;
  files_.setReachable(true);
  if (fromHidden) {
    setMorphs(false);
    Q_EMIT appearing();
  }
  publish();
  if (fromHidden) Q_EMIT appeared();
  setMorphs(true);
}

void HudState::retire() {
  isPresented_ = false;
  files_.setReachable(false);
  isPublishDue_ = false;
  publishJob_.cancel();
  isPartialThrottled_ = isPartialDue_ = false;
  throttleJob_.cancel();
}

void HudState::modelChanged() {
  // Not at once: the model makes several changes in a row, and its last step may be to hide the HUD.
  if (!isPresented_ || isPublishDue_) return;
  isPublishDue_ = true;
  publishJob_ = scheduler_.after(std::chrono::milliseconds(0), [this] { publish(); });
}

void HudState::phaseChanged(const HUDPhase& phase) {
  const auto* generating = std::get_if<phase::Generating>(&phase);
  const bool isMoreText = generating && !isPublishDue_ && content_.phase == phaseName(phase) &&
                          content_.runningTitle == generating->suggestion.title;
  if (isPresented_ && isMoreText) {
    publishPartial();
  } else {
    modelChanged();
  }
}

void HudState::publish() {
  isPublishDue_ = false;
  HudContent next = content_;
  describePhase(next, model_);
  next.summoned = isSummoned_;
  if (files_.publish()) noteReturn();
  next.collapsed = model_.isHintCollapsed.get();
  next.keyboardMode = model_.keyboardMode.get();
  next.selectedChip = next.keyboardMode ? model_.selectedChipIndex.get().value_or(-1) : -1;
  auto visible = model_.visibleSuggestions();
  describePill(next, visible);
  if (visible != suggestions_) {
    suggestions_ = std::move(visible);
    chips_.clear();
    for (const ActionSuggestion& suggestion : suggestions_) chips_.append(chip(suggestion));
    Q_EMIT chipsChanged();
  }
  if (const auto* generating = std::get_if<phase::Generating>(&model_.phase.get()))
    setPartial(generating->partial);
  if (next != content_) {
    content_ = next;
    Q_EMIT contentChanged();
  }
  Q_EMIT published();
}

void HudState::publishPartial() {
  if (isPartialThrottled_) {
    isPartialDue_ = true;
    return;
  }
  const auto* generating = std::get_if<phase::Generating>(&model_.phase.get());
  if (!generating) return;
  isPartialThrottled_ = true;
  throttleJob_ = scheduler_.after(partialInterval, [this] {
    isPartialThrottled_ = false;
    if (std::exchange(isPartialDue_, false)) publishPartial();
  });
  setPartial(generating->partial);
  Q_EMIT published();
}

void HudState::setPartial(const QString& text) {
  if (text == partial_) return;
  partial_ = text;
  Q_EMIT partialChanged();
}

void HudState::setMorphs(bool morphs) {
  if (morphs == morphs_) return;
  morphs_ = morphs;
  Q_EMIT morphsChanged();
}

void HudState::dismiss() {
  if (isPresented_) model_.dismiss();
}

void HudState::runChip(int index) {
  if (!isPresented_ || index < 0 || index >= static_cast<int>(suggestions_.size())) return;
  // A copy: running it changes the list.
  const ActionSuggestion suggestion = suggestions_[static_cast<size_t>(index)];
  model_.run(suggestion);
}

bool HudState::runChipNumber(int number) {
  return isPresented_ && model_.runChipNumber(number);
}

void HudState::copyResult() {
  if (isPresented_) model_.copyResult();
}

void HudState::replaceResult() {
  if (isPresented_) model_.replaceResult();
}

void HudState::back() {
  if (isPresented_) model_.back();
}

void HudState::moveSelection(int delta) {
  if (isPresented_) model_.moveSelection(delta);
}

void HudState::activate() {
  if (isPresented_) model_.activate();
}

void HudState::expandHint() {
  if (isPresented_) model_.expandHint();
}

void HudState::confirmCalendar() {
  if (isPresented_) model_.confirmCalendar();
}

void HudState::copyFileOutput() {
  if (isPresented_) model_.copyFileOutput();
}

void HudState::takeKeyboard() {
  if (isPresented_) Q_EMIT keyboardWanted();
}

void HudState::noteReturn() {
  isReturnResting_ = true;
  returnRestJob_ = scheduler_.after(returnRest, [this] { isReturnResting_ = false; });
}

bool HudState::isReturnMeant(bool isRepeat) {
  const bool isMeant = isPresented_ && !isRepeat && !isReturnResting_;
  noteReturn();
  return isMeant;
}

}  // namespace lumeno
