#include <QSet>

#include "detections.h"
#include "operations.h"
#include "request_surroundings.h"
#include "suggest/suggestion_engine.h"

namespace lumeno::probe {

using namespace Qt::StringLiterals;

namespace {

/// The named kinds; names of no kind are skipped, as they are in the stored settings.
QSet<IntentKind> disabledKinds(const Request& request) {
  QSet<IntentKind> kinds;
  if (!request.has("disabled"_L1)) return kinds;
  for (const QJsonValue value : request.array("disabled"_L1)) {
    if (!value.isString()) throw RequestError{u"field \"disabled\" is not a list of strings"_s};
    if (const auto kind = intentKindFromRawValue(value.toString())) kinds.insert(*kind);
  }
  return kinds;
}

QJsonObject toJson(const ActionSuggestion& suggestion) {
  return {
      {"kind"_L1, rawValue(suggestion.kind)},
      {"title"_L1, suggestion.title},
      {"actionTitle"_L1, suggestion.actionTitle},
      {"summary"_L1, suggestion.summary},
      {"rationale"_L1, suggestion.rationale},
      {"confidence"_L1, suggestion.confidence},
      {"preview"_L1, suggestion.preview},
      {"directURL"_L1, suggestion.directURL ? QJsonValue(suggestion.directURL->toString(QUrl::FullyEncoded))
                                            : QJsonValue::Null}};
}

}  // namespace

QJsonObject suggest(const Request& request) {
  const SelectedContext context = request.context();
  const detect::Surroundings surroundings = surroundingsOf(request);

  QJsonArray suggestions;
  for (const auto& suggestion :
       SuggestionEngine().suggestions(context, disabledKinds(request), surroundings)) {
    suggestions += toJson(suggestion);
  }
  QJsonObject scores;
  const auto verdicts = IntentClassifier().classify(context, surroundings);
  for (auto verdict = verdicts.begin(); verdict != verdicts.end(); ++verdict) {
    scores[rawValue(verdict.key())] =
        QJsonObject{{"score"_L1, verdict->score}, {"rationale"_L1, verdict->rationale}};
  }
  return {{"suggestions"_L1, suggestions},
          {"scores"_L1, scores},
          {"detections"_L1, detections(context.selectedText, surroundings)}};
}

}  // namespace lumeno::probe
