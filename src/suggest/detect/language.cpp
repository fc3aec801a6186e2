#include <cld2/public/encodings.h>
#include <cstdio>
#include <cld2/public/compact_lang_det.h>
#include "suggest/detect/detect.h"

namespace lumeno::detect {

std::optional<Language> dominantLanguage(QStringView text) {
  const QByteArray bytes = text.first(qMin<qsizetype>(text.size(), 500)).toString().toUtf8();
  bool reliable = false;
  CLD2::Language languages[3];
  int percents[3];
  double scores[3];
  int textBytes = 0;
  const CLD2::CLDHints hints{nullptr, nullptr, CLD2::UNKNOWN_ENCODING, CLD2::UNKNOWN_LANGUAGE};
  const CLD2::Language language =
      CLD2::ExtDetectLanguageSummary(bytes.constData(), bytes.size(), true, &hints, 0x4000, languages,
                                     percents, scores, nullptr, &textBytes, &reliable);
  if (language == CLD2::UNKNOWN_LANGUAGE) return std::nullopt;
  return Language{QString::fromLatin1(CLD2::LanguageCode(language)), percents[0] / 100.0};
}

}  // namespace lumeno::detect
