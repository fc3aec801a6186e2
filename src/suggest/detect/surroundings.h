#pragma once

#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

namespace lumeno::detect {

/// What detection depends on besides the text: the moment, the time zone in which relative words are
/// resolved, and the user's locale (its territory decides national phone numbers, its order the meaning of
/// 3/4/2026).
struct Surroundings {
  QDateTime now;
  QTimeZone timeZone;
  QLocale locale;

  /// The real present in the user's zone and locale.
  [[nodiscard]] static Surroundings current() {
    return {QDateTime::currentDateTimeUtc(), QTimeZone::systemTimeZone(), QLocale::system()};
  }
};

}  // namespace lumeno::detect
