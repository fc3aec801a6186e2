#pragma once

#include "suggest/text_analysis.h"

namespace lumeno {

/// The platform detectors that can be asked for a match.
enum class DetectorType { date, address };

/// The cues that classifier and builders share: a view of one analysis, which it does not own.
class SelectionCues {
 public:
  explicit SelectionCues(TextAnalysis& analysis) : analysis_(analysis) {}

  [[nodiscard]] const SelectedContext& context() const { return analysis_.context(); }
  [[nodiscard]] QStringView trimmedText() const { return analysis_.trimmedText(); }
  [[nodiscard]] qsizetype wordCount() const { return analysis_.wordCount(); }
  [[nodiscard]] bool hasQuestionMark() const {
    return analysis_.count(TextAnalysis::ExactStrings::questionMark) > 0;
  }
  [[nodiscard]] bool isCodeApp() const { return analysis_.isCodeApp(); }
  [[nodiscard]] bool isCommunicationApp() const { return analysis_.isCommunicationApp(); }
  [[nodiscard]] bool isFinder() const;
  [[nodiscard]] bool looksLikeProse() const { return analysis_.looksLikeProse(); }
  [[nodiscard]] bool looksLikeFilename() const { return analysis_.looksLikeFilename(); }
  [[nodiscard]] std::optional<QString> dominantLanguage() const { return analysis_.dominantLanguage(); }
  [[nodiscard]] bool isNonEnglish() const;
  /// Whether the detector finds a match anywhere in the trimmed text.
  [[nodiscard]] bool detectorMatches(DetectorType type) const;

 protected:
  TextAnalysis& analysis_;
};

/// The cues that the intent classifier reads.
class IntentFeatures : public SelectionCues {
 public:
  using SelectionCues::SelectionCues;

  [[nodiscard]] const QString& lowercasedText() const { return analysis_.lowercasedText(); }
  /// Two consecutive line feeds.
  [[nodiscard]] bool hasParagraphBreak() const {
    return analysis_.count(TextAnalysis::ExactStrings::paragraphBreak) > 0;
  }
  [[nodiscard]] bool isAcronym() const;
  [[nodiscard]] int cueCount(CueFamily family) const { return analysis_.cueCount(family); }
};

/// The cues that the suggestion builders read.
class ContextAnalysis : public SelectionCues {
 public:
  using SelectionCues::SelectionCues;

  /// "Slack, focused window"
  [[nodiscard]] QString locationPhrase() const;
  /// Text, application and window title, lowercased: where error keywords and messaging words are looked for.
  [[nodiscard]] QString contextHaystack() const;
  [[nodiscard]] int errorKeywordCount() const {
    return analysis_.count(TextAnalysis::ContextWords::errorKeywords);
  }
  [[nodiscard]] int messagingWordCount() const {
    return analysis_.count(TextAnalysis::ContextWords::messagingAppWords);
  }
  [[nodiscard]] int replyPhraseCount() const { return analysis_.replyPhraseCount(); }
  [[nodiscard]] int codeMarkerCount() const {
    return analysis_.count(TextAnalysis::ExactStrings::codeMarkers);
  }
  [[nodiscard]] QString filenameSlug() const;
};

}  // namespace lumeno
