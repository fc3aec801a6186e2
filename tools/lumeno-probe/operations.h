#pragma once

#include <QJsonObject>

#include "request.h"

/// What the probe can be asked. Each operation reads its fields and gives its answer; it throws
/// `RequestError` when a field is missing or wrong.
namespace lumeno::probe {

[[nodiscard]] QJsonObject suggest(const Request& request);
[[nodiscard]] QJsonObject detectAll(const Request& request);
[[nodiscard]] QJsonObject features(const Request& request);
[[nodiscard]] QJsonObject localTemplate(const Request& request);
[[nodiscard]] QJsonObject prompt(const Request& request);
[[nodiscard]] QJsonObject draftTitle(const Request& request);
[[nodiscard]] QJsonObject planPrompt(const Request& request);
[[nodiscard]] QJsonObject sanitize(const Request& request);
[[nodiscard]] QJsonObject screen(const Request& request);
[[nodiscard]] QJsonObject shortcut(const Request& request);
[[nodiscard]] QJsonObject place(const Request& request);

}  // namespace lumeno::probe
