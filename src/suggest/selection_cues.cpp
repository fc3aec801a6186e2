#include "suggest/selection_cues.h"

#include "suggest/cue_scans.h"
#include "suggest/filename_slug.h"

namespace lumeno {

using namespace Qt::StringLiterals;

bool SelectionCues::isFinder() const {
  return analysis_.lowercasedApp() == "finder"_L1;
}

bool SelectionCues::isNonEnglish() const {
  const auto& language = analysis_.dominantLanguage();
  return language && *language != "en"_L1;
}

bool SelectionCues::detectorMatches(DetectorType type) const {
  switch (type) {
    case DetectorType::date:
      return analysis_.hasDate();
    case DetectorType::address:
      return analysis_.hasAddress();
  }
  return false;
}

bool IntentFeatures::isAcronym() const {
  return scan::isAcronym(scan::Units(trimmedText()));
}

QString ContextAnalysis::locationPhrase() const {
  const QString& app = context().sourceApp;
  const QString& window = context().windowTitle;
  return (app.isEmpty() ? u"the active app"_s : app) + ", "_L1 +
         (window.isEmpty() ? u"focused window"_s : window);
}

QString ContextAnalysis::contextHaystack() const {
  return analysis_.lowercasedText() + u' ' + analysis_.lowercasedApp() + u' ' +
         analysis_.lowercasedWindowTitle();
}

QString ContextAnalysis::filenameSlug() const {
  return lumeno::filenameSlug(trimmedText());
}

}  // namespace lumeno
