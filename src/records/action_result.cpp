#include "records/action_result.h"

namespace lumeno {

using namespace Qt::StringLiterals;

QJsonObject toJson(const ActionResult& result) {
  return {
      {"id"_L1, result.id.toString(QUuid::WithoutBraces)},
      {"kind"_L1, rawValue(result.kind)},
      {"title"_L1, result.title},
      {"body"_L1, result.body},
      {"createdAt"_L1, result.createdAt.toUTC().toString(Qt::ISODateWithMs)},
  };
}

std::optional<ActionResult> actionResultFromJson(const QJsonObject& object) {
  for (const auto key : {"id"_L1, "kind"_L1, "title"_L1, "body"_L1, "createdAt"_L1}) {
    if (!object[key].isString()) return std::nullopt;
  }
  const auto id = QUuid::fromString(object["id"_L1].toString());
  const auto kind = intentKindFromRawValue(object["kind"_L1].toString());
  const auto createdAt = QDateTime::fromString(object["createdAt"_L1].toString(), Qt::ISODateWithMs);
  if (id.isNull() || !kind || !createdAt.isValid()) return std::nullopt;
  return ActionResult{id, *kind, object["title"_L1].toString(), object["body"_L1].toString(), createdAt};
}

}  // namespace lumeno
