#include <QTimeZone>

#include "fuzz_text.h"
#include "suggest/detect/detect.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace lumeno;
  const auto surroundings = [](const char* zone, const char* locale) {
    const QDateTime now(QDate(2026, 10, 24), QTime(23, 30), Qt::UTC);
    return detect::Surroundings{now, QTimeZone(zone), QLocale(QLatin1String(locale))};
  };
  static const std::vector<detect::Surroundings> all = {surroundings("Europe/Berlin", "de_DE"),
                                                        surroundings("America/New_York", "en_US")};
  for (const QString& text : fuzz::texts(data, size)) {
    for (const detect::Surroundings& around : all) {
      const std::vector<detect::DateMatch> matches = detect::dates(text, around);
      fuzz::requireSoundMatches(text, matches);
      for (const detect::DateMatch& match : matches) {
        fuzz::require(match.date.isValid() && match.date.timeZone() == around.timeZone &&
                      match.durationSeconds >= 0);
      }
      const auto first = detect::firstDate(text, around);
      fuzz::require(first.has_value() == !matches.empty());
      if (first) fuzz::require(first->start == matches.front().start && first->date == matches.front().date);
    }
  }
  return 0;
}
