#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QTimeZone>

namespace lumeno {

/// Dates and times as a locale writes them, on the clock of a time zone. A value, cheap to make and to keep.
class DateTexts {
 public:
  DateTexts(const QLocale& locale, const QTimeZone& zone);
  /// In the user's present locale (the one for dates) and time zone.
  [[nodiscard]] static DateTexts current();

  /// The full date of the start and the short times of both: "Monday, November 16, 2026 · 3:00 PM – 4:00 PM".
  /// The day of the end is not shown.
  [[nodiscard]] QString range(const QDateTime& start, const QDateTime& end) const;

  /// A medium date and a short time: "Nov 16, 2026 at 3:00 PM".
  [[nodiscard]] QString moment(const QDateTime& moment) const;

 private:
  QByteArray languageTag_;
  QTimeZone zone_;
};

}  // namespace lumeno
