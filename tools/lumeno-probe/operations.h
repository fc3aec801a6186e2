#pragma once

#include <QJsonObject>

#include "request.h"

/// What the probe can be asked: the value of "op", its fields, and the fields of the answer. Each operation
/// throws `RequestError` when a field is missing or wrong. An "id" comes back with the answer.
///
/// Of an operation on a selection the fields are "text", "app" and "window" (its title), of one that reads
/// dates "now" (ISO 8601), "timeZone" and "locale". Only "text" must be there; without the others there is no
/// application, no title, and it is now, in UTC and en_US.
namespace lumeno::probe {

/// "suggest": a selection, what reads dates, "disabled": [kind…] → "suggestions", "scores", "detections".
[[nodiscard]] QJsonObject suggest(const Request& request);
/// "detect": "text", what reads dates → "language", "dates", "addresses", "direct".
[[nodiscard]] QJsonObject detectAll(const Request& request);
/// "features": a selection, what reads dates → all that the rules know of it.
[[nodiscard]] QJsonObject features(const Request& request);
/// "template": a selection, "kind" → "text", the answer without a model.
[[nodiscard]] QJsonObject localTemplate(const Request& request);
/// "prompt": a selection, "kind", "title", "preview" → "prompt", as the model gets it.
[[nodiscard]] QJsonObject prompt(const Request& request);
/// "draftTitle": "text" → "title" of the event.
[[nodiscard]] QJsonObject draftTitle(const Request& request);
/// "planPrompt": "instruction", "paths": [absolute…] → "prompt", "workingDirectory".
[[nodiscard]] QJsonObject planPrompt(const Request& request);
/// "sanitize": "output" of a model → "command".
[[nodiscard]] QJsonObject sanitize(const Request& request);
/// "screen": "command" → "blockedReason", null when it may run.
[[nodiscard]] QJsonObject screen(const Request& request);
/// "shortcut": the fields of a stored shortcut → "display".
[[nodiscard]] QJsonObject shortcut(const Request& request);
/// "place": "screens": [{"frame", "visibleFrame"}…], "anchor" or null, "mouse": [x, y], "preferBelow",
/// "width", "height" → "frame", "isFlippedBelow". Frames and anchors are [x, y, width, height].
[[nodiscard]] QJsonObject place(const Request& request);

}  // namespace lumeno::probe
