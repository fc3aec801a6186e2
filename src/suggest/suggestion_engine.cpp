#include "suggest/suggestion_engine.h"

#include <algorithm>

#include "suggest/direct_actions.h"
#include "suggest/scoring.h"
#include "suggest/selection_cues.h"
#include "suggest/suggestion_builders.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr double lowestShown = 0.4;
constexpr double nearCertain = 0.9;

bool isDirect(IntentKind kind) {
  return kind == IntentKind::address || kind == IntentKind::link || kind == IntentKind::email ||
         kind == IntentKind::phone;
}

/// The tie-break of the ranking: lower wins.
int priority(IntentKind kind) {
  switch (kind) {
    case IntentKind::address:
    case IntentKind::link:
    case IntentKind::email:
    case IntentKind::phone:
      return 0;
    case IntentKind::error:
      return 1;
    case IntentKind::date:
      return 2;
    case IntentKind::reply:
      return 3;
    case IntentKind::code:
      return 4;
    case IntentKind::translate:
      return 5;
    case IntentKind::filename:
      return 6;
    case IntentKind::writing:
      return 7;
    case IntentKind::grammar:
      return 8;
    case IntentKind::tone:
      return 9;
    case IntentKind::explain:
      return 10;
    case IntentKind::definition:
      return 11;
    case IntentKind::unknown:
      return 12;
  }
  return 12;
}

bool ranksBefore(const ActionSuggestion& a, const ActionSuggestion& b) {
  return a.confidence > b.confidence || (a.confidence == b.confidence && priority(a.kind) < priority(b.kind));
}

/// Mixes the builder's confidence with the classifier's verdict and says so in the rationale.
void blend(ActionSuggestion& candidate, const QMap<IntentKind, IntentClassification>& scores) {
  const auto verdict = scores.constFind(candidate.kind);
  if (verdict == scores.constEnd()) return;
  // A detected address stays below near certainty, so that alone it never hides the text suggestions.
  const double confidence = isDirect(candidate.kind)
                                ? std::max(candidate.confidence, std::min(verdict->score, 0.89))
                                : candidate.confidence * 0.62 + verdict->score * 0.38;
  candidate.confidence = clampScore(confidence);
  candidate.rationale += " Classifier: "_L1 + verdict->rationale + u'.';
}

ActionSuggestion fallbackSuggestion() {
  return {.kind = IntentKind::definition,
          .title = u"Define this"_s,
          .actionTitle = u"Define"_s,
          .summary = u"A short phrase is most likely something the user wants explained in context."_s,
          .rationale = u"No stronger action beat the fallback."_s,
          .confidence = 0.52,
          .preview = u"Give a one-paragraph definition, then add why it matters in the current app."_s,
          .directURL = std::nullopt};
}

}  // namespace

std::vector<ActionSuggestion> SuggestionEngine::suggestions(const SelectedContext& context,
                                                            const QSet<IntentKind>& disabledKinds,
                                                            const detect::Surroundings& surroundings) const {
  TextAnalysis analysis(context, surroundings);
  const ContextAnalysis cues(analysis);
  if (cues.trimmedText().isEmpty()) return {};

  const auto scores = classifier_.classify(analysis);
  std::vector<ActionSuggestion> kept = directActions(analysis);
  std::ranges::move(buildSuggestions(cues), std::back_inserter(kept));
  for (ActionSuggestion& candidate : kept) blend(candidate, scores);
  std::erase_if(kept, [&](const ActionSuggestion& candidate) {
    return !(candidate.confidence >= lowestShown) || disabledKinds.contains(candidate.kind);
  });
  std::ranges::stable_sort(kept, ranksBefore);

  if (kept.empty()) {
    if (disabledKinds.contains(IntentKind::definition)) return {};
    return {fallbackSuggestion()};
  }
  if (isDirect(kept.front().kind) && kept.front().confidence >= nearCertain) {
    std::erase_if(kept, [](const ActionSuggestion& suggestion) { return !isDirect(suggestion.kind); });
  }
  for (ActionSuggestion& suggestion : kept) completeSuggestion(suggestion, cues);
  return kept;
}

const std::vector<IntentKind>& transformKinds() {
  using enum IntentKind;
  static const std::vector kinds = {writing,   explain,    reply, grammar, tone,
                                    translate, definition, code,  error};
  return kinds;
}

const std::vector<IntentKind>& quickActionKinds() {
  using enum IntentKind;
  static const std::vector kinds = {date, filename, address, link, email, phone};
  return kinds;
}

}  // namespace lumeno
