#include "ai/ollama_records.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace lumeno::ollama {

using namespace Qt::StringLiterals;

QByteArray generateRequest(const QString& model, const QString& prompt, Delivery delivery) {
  const QJsonObject request{
      {"model"_L1, model}, {"prompt"_L1, prompt}, {"stream"_L1, delivery == Delivery::streamed}};
  return QJsonDocument(request).toJson(QJsonDocument::Compact);
}

std::optional<GenerateResponse> parseGenerateResponse(const QByteArray& json) {
  const QJsonObject object = QJsonDocument::fromJson(json).object();
  const QJsonValue response = object["response"_L1];
  const QJsonValue done = object["done"_L1];
  if (!response.isString()) return std::nullopt;
  if (!done.isBool() && !done.isUndefined() && !done.isNull()) return std::nullopt;
  return GenerateResponse{response.toString(), done.toBool()};
}

std::optional<QStringList> parseTagsResponse(const QByteArray& json) {
  const QJsonValue models = QJsonDocument::fromJson(json).object()["models"_L1];
  if (!models.isArray()) return std::nullopt;
  QStringList names;
  const QJsonArray array = models.toArray();
  for (const QJsonValue& entry : array) {
    const QJsonValue name = entry.toObject()["name"_L1];
    if (!name.isString()) return std::nullopt;
    names += name.toString();
  }
  return names;
}

}  // namespace lumeno::ollama
