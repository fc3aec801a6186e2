#include "suggest/intent_classifier.h"

#include <algorithm>

#include "suggest/scoring.h"
#include "suggest/selection_cues.h"

// Ties between suggestions are decided by exact equality, so the order of every sum and product matters here.

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

using Classification = IntentClassification;

/// The number of cues as evidence, or what to say when there are none.
QString evidence(int count, QLatin1StringView noun, QLatin1StringView none) {
  return count >= 1 ? countPhrase(count, noun) : QString(none);
}

Classification address(const IntentFeatures& f) {
  return f.detectorMatches(DetectorType::address) ? Classification{0.93, u"address detector matched"_s}
                                                  : Classification{0.1, u"no address shape"_s};
}

Classification code(const IntentFeatures& f) {
  const int cues = f.cueCount(CueFamily::codeCuePatterns);
  double score = cues * 0.13 + 0.16;
  if (f.isCodeApp()) score += 0.18;
  return {clampScore(score), evidence(cues, "code cue"_L1, "weak code shape"_L1)};
}

Classification date(const IntentFeatures& f) {
  const bool detected = f.detectorMatches(DetectorType::date);
  const double score = f.cueCount(CueFamily::dateCuePatterns) * 0.08 + (detected ? 0.74 : 0.12);
  return {clampScore(score), detected ? u"date detector matched"_s : u"no date detector match"_s};
}

double definitionScore(const IntentFeatures& f) {
  const qsizetype words = f.wordCount();
  if (words <= 1) return f.isAcronym() ? 1.0 : 0.92;
  if (words == 2) return 0.82;
  if (words <= 5) return f.looksLikeProse() ? 0.5 : 0.64;
  return 0.18;
}

Classification definition(const IntentFeatures& f) {
  return {clampScore(definitionScore(f)),
          f.wordCount() <= 2 ? u"short term or phrase"_s : QString::number(f.wordCount()) + " words"_L1};
}

Classification error(const IntentFeatures& f) {
  const int cues = f.cueCount(CueFamily::errorCuePatterns);
  double score = cues * 0.16 + 0.14;
  if (f.isCodeApp()) score += 0.16;
  return {clampScore(score), evidence(cues, "diagnostic cue"_L1, "no diagnostic cue"_L1)};
}

Classification explain(const IntentFeatures& f) {
  const int cues = f.cueCount(CueFamily::explanationCuePatterns);
  const double base = f.hasQuestionMark() ? 0.5 : 0.36;
  const bool isReading =
      f.wordCount() >= 8 && !f.isCommunicationApp() && f.cueCount(CueFamily::requestCuePatterns) == 0;
  const double bonus = isReading ? 0.08 : 0.0;
  return {clampScore(base + bonus + cues * 0.08),
          evidence(cues, "explanation cue"_L1, "general explanation fit"_L1)};
}

Classification filename(const IntentFeatures& f) {
  double score = f.looksLikeFilename() ? 0.86 : 0.12;
  if (f.isFinder()) score = std::max(score + 0.08, 0.05);
  return {std::min(score, 0.98),
          f.looksLikeFilename() ? u"filename or path shape"_s : u"no filename shape"_s};
}

Classification grammar(const IntentFeatures& f) {
  const double proseScore = f.isCodeApp() ? 0.48 : 0.68;
  return {f.looksLikeProse() && f.wordCount() >= 3 ? proseScore : 0.14,
          f.looksLikeProse() ? u"natural-language prose"_s : u"not prose-like"_s};
}

Classification reply(const IntentFeatures& f) {
  const int cues = f.cueCount(CueFamily::replyCuePatterns);
  const double base = f.isCommunicationApp() ? 0.16 + 0.28 : 0.16;
  return {clampScore(cues * 0.12 + base), evidence(cues, "reply cue"_L1, "few reply cues"_L1)};
}

Classification tone(const IntentFeatures& f) {
  const int cues = f.cueCount(CueFamily::toneCuePatterns);
  const double base = f.isCommunicationApp() ? 0.34 + 0.26 : 0.34;
  const bool isProse = f.looksLikeProse() && f.wordCount() >= 4;
  return {clampScore(isProse ? cues * 0.08 + base : 0.12),
          evidence(cues, "tone cue"_L1, "general prose rewrite fit"_L1)};
}

Classification translate(const IntentFeatures& f) {
  const double phraseScore = f.isNonEnglish() ? 0.94 : 0.18;
  return {f.wordCount() > 1 ? phraseScore : 0.08,
          f.isNonEnglish() ? u"dominant language is not English"_s : u"English or unknown language"_s};
}

double writingScore(const IntentFeatures& f) {
  const qsizetype words = f.wordCount();
  const double paragraphs = f.hasParagraphBreak() ? 0.08 : 0.0;
  if (words >= 61) return paragraphs + 0.88;
  if (words >= 31) return paragraphs + 0.74;
  return words >= 15 ? 0.56 : 0.18;
}

Classification writing(const IntentFeatures& f) {
  return {clampScore(writingScore(f)), QString::number(f.wordCount()) + " words selected"_L1};
}

}  // namespace

QMap<IntentKind, IntentClassification> IntentClassifier::classify(
    const SelectedContext& context, const detect::Surroundings& surroundings) const {
  TextAnalysis analysis(context, surroundings);
  return classify(analysis);
}

QMap<IntentKind, IntentClassification> IntentClassifier::classify(TextAnalysis& analysis) const {
  const IntentFeatures features(analysis);
  if (features.trimmedText().isEmpty()) return {};
  return {
      {IntentKind::address, address(features)},     {IntentKind::code, code(features)},
      {IntentKind::date, date(features)},           {IntentKind::definition, definition(features)},
      {IntentKind::error, error(features)},         {IntentKind::explain, explain(features)},
      {IntentKind::filename, filename(features)},   {IntentKind::grammar, grammar(features)},
      {IntentKind::reply, reply(features)},         {IntentKind::tone, tone(features)},
      {IntentKind::translate, translate(features)}, {IntentKind::writing, writing(features)},
  };
}

}  // namespace lumeno
