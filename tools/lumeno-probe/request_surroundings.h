#pragma once

#include "request.h"
#include "suggest/detect/surroundings.h"

namespace lumeno::probe {

/// The surroundings that a request injects with "now", "timeZone" and "locale"; what it leaves out is the
/// real present, UTC and US English.
[[nodiscard]] detect::Surroundings surroundingsOf(const Request& request);

}  // namespace lumeno::probe
