#pragma once

#include <QString>
#include <QStringView>
#include <optional>
#include <vector>

#include "records/selected_context.h"
#include "suggest/cue_patterns.h"
#include "suggest/detect/detect.h"
#include "suggest/needle_finder.h"

namespace lumeno {

/// What the rules measure on one selection, each thing when it is first asked for and never twice. Lives for
/// one classification or suggestion run, on one thread. All cost is linear in the text.
class TextAnalysis {
 public:
  /// `context` must outlive the analysis.
  TextAnalysis(const SelectedContext& context, const detect::Surroundings& surroundings);
  TextAnalysis(const SelectedContext&&, const detect::Surroundings&) = delete;

  [[nodiscard]] const SelectedContext& context() const { return context_; }

  /// The selected text without surrounding white space; every other answer is about this text.
  [[nodiscard]] QStringView trimmedText() const { return trimmedText_; }
  [[nodiscard]] const QString& lowercasedText();
  [[nodiscard]] const QString& lowercasedApp();
  [[nodiscard]] const QString& lowercasedWindowTitle();
  [[nodiscard]] qsizetype wordCount();

  /// Strings that are searched for in the text as it is.
  enum class ExactStrings {
    proseCodeMarkers,
    codeMarkers,
    questionMark,
    paragraphBreak,
    filenameSigns,
    blank
  };
  /// How many of them occur.
  [[nodiscard]] int count(ExactStrings strings);

  /// Phrases that are searched for in the lowercased text.
  [[nodiscard]] int replyPhraseCount();
  /// Words that are searched for in lowercased text, application name and window title joined with blanks.
  enum class ContextWords { errorKeywords, messagingAppWords };
  [[nodiscard]] int count(ContextWords words);

  /// How many regular expressions of the family match the lowercased text.
  [[nodiscard]] int cueCount(CueFamily family);

  [[nodiscard]] bool isCodeApp();
  [[nodiscard]] bool isCommunicationApp();
  [[nodiscard]] bool looksLikeProse();
  [[nodiscard]] bool looksLikeFilename();

  /// The code of the language that the text is in with a probability of at least 0.6.
  [[nodiscard]] const std::optional<QString>& dominantLanguage();
  [[nodiscard]] bool hasDate();
  [[nodiscard]] bool hasAddress();
  /// All links and at least the first phone number.
  [[nodiscard]] const std::vector<detect::DirectMatch>& linksAndFirstPhone();

 private:
  struct LowercaseStrings {
    scan::NeedleFinder::Progress inText;
    scan::NeedleFinder::Progress inContext;
  };
  const LowercaseStrings& lowercaseStrings();

  const SelectedContext& context_;
  detect::Surroundings surroundings_;
  QStringView trimmedText_;
  std::optional<QString> lowercasedText_;
  std::optional<QString> lowercasedApp_;
  std::optional<QString> lowercasedWindowTitle_;
  std::optional<qsizetype> wordCount_;
  std::optional<scan::NeedleFinder::Progress> exactStrings_;
  std::optional<LowercaseStrings> lowercaseStrings_;
  std::optional<CueSet> cues_;
  std::optional<bool> isCodeApp_;
  std::optional<bool> isCommunicationApp_;
  std::optional<bool> looksLikeProse_;
  std::optional<bool> looksLikeFilename_;
  std::optional<std::optional<QString>> dominantLanguage_;
  std::optional<bool> hasDate_;
  std::optional<bool> hasAddress_;
  std::optional<std::vector<detect::DirectMatch>> linksAndFirstPhone_;
};

}  // namespace lumeno
