#include "hud/placement/placement.h"
#include "operations.h"

namespace lumeno::probe {

using namespace Qt::StringLiterals;

namespace {

std::vector<Screen> readScreens(const Request& request) {
  std::vector<Screen> screens;
  for (const QJsonValue value : request.array("screens"_L1)) {
    if (!value.isObject()) throw RequestError{u"field \"screens\" is not a list of objects"_s};
    const Request screen(value.toObject());
    screens.push_back({screen.rect("frame"_L1), screen.rect("visibleFrame"_L1)});
  }
  return screens;
}

std::optional<Rect> readAnchor(const Request& request) {
  return request.isNull("anchor"_L1) ? std::nullopt : std::optional(request.rect("anchor"_L1));
}

}  // namespace

QJsonObject place(const Request& request) {
  const auto result = placement::place(readScreens(request), request.point("mouse"_L1), readAnchor(request),
                                       request.boolean("preferBelow"_L1),
                                       {request.number("width"_L1), request.number("height"_L1)});
  if (!result) return {{"frame"_L1, QJsonValue::Null}};
  const Rect& frame = result->frame;
  return {{"frame"_L1, QJsonArray{frame.x, frame.y, frame.width, frame.height}},
          {"isFlippedBelow"_L1, result->isFlippedBelow}};
}

}  // namespace lumeno::probe
