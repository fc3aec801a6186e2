#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QUuid>
#include <optional>

#include "records/intent_kind.h"

namespace lumeno {

/// A finished result as shown in the result card. Never stored on disk.
struct ActionResult {
  QUuid id;  ///< a new one for every result
  IntentKind kind = IntentKind::unknown;
  QString title;
  QString body;
  QDateTime createdAt;
  bool operator==(const ActionResult&) const = default;
};

/// Keys "id", "kind", "title", "body", "createdAt" (ISO 8601 with milliseconds, UTC).
[[nodiscard]] QJsonObject toJson(const ActionResult& result);
/// Absent when a key is missing or mistyped.
[[nodiscard]] std::optional<ActionResult> actionResultFromJson(const QJsonObject& object);

}  // namespace lumeno
