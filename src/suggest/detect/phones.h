#pragma once

#include <QStringView>
#include <functional>
#include <vector>

#include "suggest/detect/detect.h"

namespace lumeno::detect {

/// As `phones`, but it looks no further once `isEnough` says so of a number. Judging a number costs more than
/// all else in a short text.
[[nodiscard]] std::vector<PhoneMatch> phonesUntil(QStringView text, const Surroundings& surroundings,
                                                  const std::function<bool(const PhoneMatch&)>& isEnough);

}  // namespace lumeno::detect
