#include <array>

#include "fuzz_text.h"
#include "suggest/detect/detect.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace lumeno;
  static const std::array locales{QLocale(QLocale::English, QLocale::UnitedStates),
                                  QLocale(QLocale::German, QLocale::Germany), QLocale::c()};
  for (const QString& text : fuzz::texts(data, size)) {
    const detect::Surroundings surroundings{{}, QTimeZone::utc(), locales[size % locales.size()]};
    const std::vector<detect::PhoneMatch> matches = detect::phones(text, surroundings);
    fuzz::requireSoundMatches(text, matches);
    for (const detect::PhoneMatch& match : matches) {
      fuzz::require(text.mid(match.start, match.length).contains(match.number));
    }
    fuzz::requireSoundMatches(text, detect::directMatches(text, surroundings));
  }
  return 0;
}
