#include "base/text.h"
#include "operations.h"
#include "request_surroundings.h"
#include "suggest/selection_cues.h"

namespace lumeno::probe {

using namespace Qt::StringLiterals;

QJsonObject features(const Request& request) {
  const SelectedContext context = request.context();
  TextAnalysis analysis(context, surroundingsOf(request));
  const IntentFeatures intent(analysis);
  const ContextAnalysis builder(analysis);

  QJsonObject cueCounts;
  for (const CueFamily family : allCueFamilies) cueCounts[familyName(family)] = intent.cueCount(family);
  const auto language = intent.dominantLanguage();
  return {
      {"trimmedText"_L1, intent.trimmedText().toString()},
      {"lowercasedText"_L1, intent.lowercasedText()},
      {"characterCount"_L1, text::characterCount(intent.trimmedText())},
      {"wordCount"_L1, intent.wordCount()},
      {"lineCount"_L1, static_cast<qint64>(text::lines(intent.trimmedText()).size())},
      {"hasQuestionMark"_L1, intent.hasQuestionMark()},
      {"hasParagraphBreak"_L1, intent.hasParagraphBreak()},
      {"isCodeApp"_L1, intent.isCodeApp()},
      {"isCommunicationApp"_L1, intent.isCommunicationApp()},
      {"isFinder"_L1, intent.isFinder()},
      {"looksLikeProse"_L1, intent.looksLikeProse()},
      {"looksLikeFilename"_L1, intent.looksLikeFilename()},
      {"isAcronym"_L1, intent.isAcronym()},
      {"dominantLanguage"_L1, language ? QJsonValue(*language) : QJsonValue::Null},
      {"isNonEnglish"_L1, intent.isNonEnglish()},
      {"detectorMatches"_L1, QJsonObject{{"date"_L1, intent.detectorMatches(DetectorType::date)},
                                         {"address"_L1, intent.detectorMatches(DetectorType::address)}}},
      {"cueCount"_L1, cueCounts},
      {"locationPhrase"_L1, builder.locationPhrase()},
      {"contextHaystack"_L1, builder.contextHaystack()},
      {"errorKeywordCount"_L1, builder.errorKeywordCount()},
      {"messagingWordCount"_L1, builder.messagingWordCount()},
      {"replyPhraseCount"_L1, builder.replyPhraseCount()},
      {"codeMarkerCount"_L1, builder.codeMarkerCount()},
      {"filenameSlug"_L1, builder.filenameSlug()},
  };
}

}  // namespace lumeno::probe
