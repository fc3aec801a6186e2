#pragma once

#include <QJsonObject>
#include <QString>

#include "suggest/detect/surroundings.h"

namespace lumeno::probe {

/// Everything the detectors find in `text` without its surrounding white space, with offsets into `text` as
/// given.
[[nodiscard]] QJsonObject detections(const QString& text, const detect::Surroundings& surroundings);

}  // namespace lumeno::probe
