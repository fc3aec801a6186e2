#include <QDateTime>
#include <QUuid>
#include <utility>

#include "ai/ai_runner.h"
#include "base/text.h"
#include "core/model/app_model_private.h"

using namespace Qt::StringLiterals;

// What happens from a chip to its result.
namespace lumeno {

namespace {

ActionResult makeResult(IntentKind kind, const QString& title, const QString& body) {
  return {QUuid::createUuid(), kind, title, body, QDateTime::currentDateTimeUtc()};
}

ActionSuggestion addingToCalendar() {
  ActionSuggestion suggestion;
  suggestion.kind = IntentKind::date;
  suggestion.title = u"Adding to Calendar"_s;
  suggestion.confidence = 1;
  return suggestion;
}

bool isDirect(IntentKind kind) {
  return kind == IntentKind::address || kind == IntentKind::link || kind == IntentKind::email ||
         kind == IntentKind::phone;
}

}  // namespace

void AppModel::Private::run(const ActionSuggestion& suggestion) {
  const std::optional<Selection> selection = model_.selection.get();
  if (!selection) return;
  if (isDirect(suggestion.kind)) {
    const std::optional<QUrl> url = suggestion.directURL;
    // First, so that the notice of a failure, however quick, is not hidden again.
    dismiss();
    if (url) openLink(*url);
  } else if (suggestion.kind == IntentKind::date) {
    startCalendar(text::trimmed(selection->text).toString(), suggestion);
  } else {
    generate(suggestion, *selection);
  }
}

void AppModel::Private::openLink(const QUrl& url) {
  openedLink_ = std::make_shared<const char>();
  collaborators_.urlOpener.open(url, [this, wanted = std::weak_ptr(openedLink_)](bool opened) {
    if (!opened && !wanted.expired()) showNotice(u"No application can open this link."_s);
  });
}

void AppModel::Private::generate(const ActionSuggestion& suggestion, const Selection& selection) {
  setPhase(phase::Generating{suggestion, QString()});
  const auto& settings = collaborators_.settings;
  const AIRunner runner(collaborators_.aiServices, settings.backend.get(), settings.ollamaModel.get());
  generateTask_ =
      runner.run(suggestion, contextOf(selection), [this, suggestion](const AIRunner::Update& update) {
        if (const auto* partial = std::get_if<AIRunner::Partial>(&update)) {
          setPhase(phase::Generating{suggestion, partial->text});
          return;
        }
        const auto& finished = std::get<AIRunner::Finished>(update);
        showResult(finished.usedAI, makeResult(suggestion.kind, suggestion.title, finished.body));
      });
}

void AppModel::Private::startCalendar(const QString& text, const ActionSuggestion& suggestion) {
  if (!collaborators_.calendar) return;
  setPhase(phase::Generating{suggestion, QString()});
  generateTask_ = collaborators_.calendar->makeDraft(
      text, [this](const std::variant<CalendarDraft, CalendarFailure>& answer) {
        if (const auto* failure = std::get_if<CalendarFailure>(&answer)) {
          showResult(false, makeResult(IntentKind::date, u"Couldn’t add event"_s, failure->message));
          return;
        }
        model_.usedAI.set(false);
        setPhase(phase::CalendarConfirm{std::get<CalendarDraft>(answer)});
      });
}

void AppModel::Private::confirmCalendar() {
  const auto* confirm = std::get_if<phase::CalendarConfirm>(&model_.phase.get());
  if (!confirm || !collaborators_.calendar) return;
  const CalendarDraft draft = confirm->draft;
  setPhase(phase::Generating{addingToCalendar(), QString()});
  generateTask_ = collaborators_.calendar->add(
      draft, [this](const std::variant<CalendarAddition, CalendarFailure>& answer) {
        if (const auto* failure = std::get_if<CalendarFailure>(&answer)) {
          showResult(false, makeResult(IntentKind::date, u"Couldn’t add event"_s, failure->message));
          return;
        }
        const auto& [message, isSaved] = std::get<CalendarAddition>(answer);
        // Where another program asks once more, nothing is in the calendar yet.
        const QString title = isSaved ? u"Added to Calendar"_s : u"Not added yet"_s;
        showResult(false, makeResult(IntentKind::date, title, message));
      });
}

void AppModel::Private::showResult(bool usedAI, ActionResult result) {
  model_.usedAI.set(usedAI);
  setPhase(phase::Result{std::move(result)});
}

void AppModel::Private::copyResult() {
  const auto* shown = std::get_if<phase::Result>(&model_.phase.get());
  if (!shown) return;
  collaborators_.clipboard.copy(shown->result.body);
  dismiss();
}

void AppModel::Private::copyFileOutput() {
  const auto& session = model_.fileSession.get();
  if (!session) return;
  const auto* ended = std::get_if<FileActionSession::Stage::Result>(&session->stage.get());
  if (ended) collaborators_.clipboard.copy(ended->outcome.summary());
}

void AppModel::Private::replaceResult() {
  const auto* shown = std::get_if<phase::Result>(&model_.phase.get());
  if (!shown) return;
  const QString body = shown->result.body;
  // The panel goes first: the keyboard must be back in the other application when the paste arrives.
  dismiss();
  replaceTask_ = collaborators_.replacer.replace(body, source_, [this](SelectionReplacer::Outcome outcome) {
    const bool hasMovedOn = model_.selection.get() || model_.fileSession.get();
    if (outcome == SelectionReplacer::Outcome::selectionGone && !hasMovedOn) {
      showNotice(u"The selection is gone. The result is on the clipboard."_s);
    }
  });
}

void AppModel::Private::back() {
  generateTask_.cancel();
  setPhase(phase::Suggestions());
}

}  // namespace lumeno
