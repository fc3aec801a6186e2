#include "suggest/suggestion_builders.h"

#include <algorithm>
#include <array>

#include "suggest/scoring.h"

// Ties between suggestions are decided by exact equality, so the order of every sum and product matters here.

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

struct Estimate {
  double confidence = 0;
  QString rationale;
};

Estimate error(const ContextAnalysis& a) {
  const int markers = a.errorKeywordCount();
  double confidence = markers * 0.22 + 0.32;
  if (a.isCodeApp()) confidence += 0.08;
  return {clampScore(confidence), markers >= 1 ? "Matched "_L1 + countPhrase(markers, "error signal"_L1) +
                                                     " in "_L1 + a.locationPhrase() + u'.'
                                               : u"No strong diagnostic marker found."_s};
}

Estimate reply(const ContextAnalysis& a) {
  const int messagingWords = a.messagingWordCount();
  const int cues = a.replyPhraseCount();
  return {clampScore(messagingWords * 0.18 + 0.26 + cues * 0.16),
          messagingWords >= 1
              ? "Detected a communication app and "_L1 + countPhrase(cues, "reply cue"_L1) + u'.'
              : u"Reply confidence is low without a communication app cue."_s};
}

Estimate code(const ContextAnalysis& a) {
  const int markers = a.codeMarkerCount();
  double confidence = markers * 0.12 + 0.28;
  if (a.isCodeApp()) confidence += 0.14;
  return {clampScore(confidence), markers >= 1 ? "Found "_L1 + countPhrase(markers, "code marker"_L1) +
                                                     " in "_L1 + a.locationPhrase() + u'.'
                                               : u"Code confidence comes mostly from the active app."_s};
}

Estimate date(const ContextAnalysis& a) {
  return a.detectorMatches(DetectorType::date)
             ? Estimate{0.82, u"Detected a date or time inside the selected text."_s}
             : Estimate{0.22, u"No date signal found."_s};
}

Estimate filename(const ContextAnalysis& a) {
  return a.looksLikeFilename()
             ? Estimate{a.isFinder() ? 0.86 : 0.78,
                        "Matched a filename/path pattern in "_L1 + a.locationPhrase() + u'.'}
             : Estimate{a.isFinder() ? 0.28 : 0.2, u"No filename pattern found."_s};
}

Estimate address(const ContextAnalysis& a) {
  return a.detectorMatches(DetectorType::address) ? Estimate{0.88, u"Detected an address in the selection."_s}
                                                  : Estimate{0.12, u"No address signal found."_s};
}

Estimate grammar(const ContextAnalysis& a) {
  return a.wordCount() >= 3 && a.looksLikeProse()
             ? Estimate{a.isCodeApp() ? 0.5 : 0.62, u"The selection reads like prose worth proofing."_s}
             : Estimate{0.18, u"Not enough prose to proofread."_s};
}

Estimate tone(const ContextAnalysis& a) {
  const bool isProse = a.wordCount() >= 4 && a.looksLikeProse();
  const double proseConfidence = a.isCommunicationApp() ? 0.62 : 0.4;
  return {isProse ? proseConfidence : 0.16, a.isCommunicationApp()
                                                ? "Looks like a message in "_L1 + a.locationPhrase() + u'.'
                                                : u"Prose that could be re-toned."_s};
}

Estimate translate(const ContextAnalysis& a) {
  const double phraseConfidence = a.isNonEnglish() ? 0.8 : 0.24;
  return {a.wordCount() > 1 ? phraseConfidence : 0.1, a.isNonEnglish()
                                                          ? u"The selection doesn't look like English."_s
                                                          : u"Translation is available on demand."_s};
}

Estimate explain(const ContextAnalysis& a) {
  const double base = a.hasQuestionMark() ? 0.46 + 0.12 : 0.46;
  return {a.wordCount() > 14 ? clampScore(base + 0.06) : base,
          u"A plain-language explanation usually helps for any selection."_s};
}

double writingConfidence(qsizetype words) {
  if (words < 15) return 0.28;
  if (words <= 40) return 0.52;
  return 0.7 + std::min(static_cast<double>(words - 40) / 300, 0.18);
}

Estimate writing(const ContextAnalysis& a) {
  return {clampScore(writingConfidence(a.wordCount())),
          "The selection is "_L1 + QString::number(a.wordCount()) + " words long."_L1};
}

Estimate definition(const ContextAnalysis& a) {
  const qsizetype words = a.wordCount();
  const double longConfidence = words <= 5 ? 0.5 : 0.24;
  return {words < 3 ? 0.82 : longConfidence, u"A short selection is most likely a term to define."_s};
}

struct Builder {
  IntentKind kind;
  QLatin1StringView title;
  QLatin1StringView actionTitle;
  QLatin1StringView summary;
  QLatin1StringView preview;
  Estimate (*estimate)(const ContextAnalysis&);
};

constexpr auto builders = std::to_array<Builder>({
    {IntentKind::error, "Explain the fix"_L1, "Show fix"_L1,
     "This reads like a diagnostic, so the fastest next step is the likely fix."_L1,
     "Identify the failing symbol, explain why it failed, then suggest the smallest likely change."_L1,
     error},
    {IntentKind::reply, "Draft a reply"_L1, "Write reply"_L1,
     "The selection looks like a message that wants a response."_L1,
     "Draft a short, warm response that answers the ask and keeps the thread moving."_L1, reply},
    {IntentKind::code, "Explain the code"_L1, "Explain"_L1,
     "The selection contains code structure, so a focused explanation is likely most useful."_L1,
     "Summarize what the code does, call out side effects, and flag the riskiest assumption."_L1, code},
    {IntentKind::date, "Create calendar event"_L1, "Add event"_L1,
     "A date or time was detected, so turning it into an event is the best next action."_L1,
     "Prepare a calendar event using the selected text as the title and detected time as the start."_L1,
     date},
    {IntentKind::filename, "Clean up filename"_L1, "Rename"_L1,
     "The selection looks like a file or path that could be normalized."_L1, ""_L1, filename},
    {IntentKind::address, "Open in Maps"_L1, "Maps"_L1, "Show this place on a map."_L1,
     "Show the location and a one-line description of the place at this address."_L1, address},
    {IntentKind::grammar, "Fix spelling & grammar"_L1, "Fix"_L1,
     "Correct mistakes without changing the meaning."_L1,
     "Correct any spelling, grammar, and punctuation mistakes in the selected text. Preserve the original "
     "meaning, "
     "tone, and formatting. Return only the corrected text, with no commentary."_L1,
     grammar},
    {IntentKind::tone, "Make it professional"_L1, "Rephrase"_L1,
     "Rewrite in a polished, professional tone."_L1,
     "Rewrite the selected text in a clear, polished, professional tone. Keep the same meaning and roughly "
     "the same "
     "length. Return only the rewritten text."_L1,
     tone},
    {IntentKind::translate, "Translate to English"_L1, "Translate"_L1,
     "Translate the selection into English."_L1,
     "Translate the selected text into natural, fluent English. Return only the translation, with no notes "
     "or "
     "transliteration."_L1,
     translate},
    {IntentKind::explain, "Explain simply"_L1, "Explain"_L1, "Break this down in plain language."_L1,
     "Explain the selected text in plain language that a smart non-expert can follow, in two or three "
     "sentences. "
     "Return only the explanation."_L1,
     explain},
    {IntentKind::writing, "Summarise"_L1, "Summarise"_L1, "Condense this into the key points."_L1,
     "Summarise the selected text into its key points. Use a few short bullets if it covers multiple ideas, "
     "otherwise one or two sentences. Return only the summary."_L1,
     writing},
    {IntentKind::definition, "Define"_L1, "Define"_L1, "Look up what this means."_L1,
     "Define the selected word or phrase in one concise sentence, the way a dictionary would. If it has "
     "multiple "
     "common senses, give the most likely one for this context. Return only the definition."_L1,
     definition},
});

std::optional<QUrl> mapUrl(QStringView place) {
  // What a query may hold as it is; letters, digits and "-._~" always stay.
  const QByteArray query = QUrl::toPercentEncoding(place.toString(), "!$&'()*+,/:;=?@");
  const QUrl url = QUrl::fromEncoded("maps://?q=" + query, QUrl::StrictMode);
  return url.isValid() ? std::optional(url) : std::nullopt;
}

}  // namespace

std::vector<ActionSuggestion> buildSuggestions(const ContextAnalysis& analysis) {
  std::vector<ActionSuggestion> suggestions;
  suggestions.reserve(builders.size());
  for (const Builder& builder : builders) {
    const Estimate estimate = builder.estimate(analysis);
    suggestions.push_back({.kind = builder.kind,
                           .title = builder.title,
                           .actionTitle = builder.actionTitle,
                           .summary = builder.summary,
                           .rationale = estimate.rationale,
                           .confidence = estimate.confidence,
                           .preview = builder.preview,
                           .directURL = std::nullopt});
  }
  return suggestions;
}

void completeSuggestion(ActionSuggestion& suggestion, const ContextAnalysis& analysis) {
  if (suggestion.kind == IntentKind::filename) suggestion.preview = analysis.filenameSlug();
  if (suggestion.kind == IntentKind::address) suggestion.directURL = mapUrl(analysis.trimmedText());
}

}  // namespace lumeno
