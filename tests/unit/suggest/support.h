#pragma once

#include <QString>
#include <ostream>

#include "records/intent_kind.h"
#include "records/selected_context.h"
#include "suggest/detect/surroundings.h"

namespace lumeno {

// Found by GoogleTest when it prints values.
inline void PrintTo(IntentKind kind, std::ostream* out) {
  *out << rawValue(kind).toStdString();
}

namespace testing {

inline SelectedContext selection(const QString& text, const QString& app = {}, const QString& window = {}) {
  return {{}, text, app, window};
}

/// A fixed moment in a fixed place: Wednesday, 1 May 2024, ten in the morning, UTC, US English.
inline detect::Surroundings fixedSurroundings() {
  return {QDateTime(QDate(2024, 5, 1), QTime(10, 0), Qt::UTC), QTimeZone::utc(),
          QLocale(QLocale::English, QLocale::UnitedStates)};
}

inline QString words(int count) {
  return QStringLiteral("word ").repeated(count).trimmed();
}

}  // namespace testing
}  // namespace lumeno
