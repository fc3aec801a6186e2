#include "suggest/detect/date_language.h"

#include <array>

namespace lumeno::detect {

std::span<const DateLanguage* const, dateLanguageCount> dateLanguages() {
  static constexpr std::array<const DateLanguage*, dateLanguageCount> languages = {&dateEnglish, &dateGerman,
                                                                                   &dateFrench, &dateSpanish};
  return languages;
}

}  // namespace lumeno::detect
