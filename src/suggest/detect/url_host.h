#pragma once

#include <QStringView>

namespace lumeno::detect {

/// What may stand in a host name and what may stand before the "@" of an e-mail address, as far as ASCII
/// goes.
[[nodiscard]] bool isHostUnit(char16_t c);
[[nodiscard]] bool isLocalPartUnit(char16_t c);

/// The end of the run of host characters at `i`. Scripts without blanks are cut off from Latin words beside
/// them. Linear in the run.
[[nodiscard]] qsizetype hostRunEnd(QStringView text, qsizetype i);

/// The end of [userinfo@]host at `start`, behind "://", or `start` when there is no host.
[[nodiscard]] qsizetype authorityEnd(QStringView text, qsizetype start);

}  // namespace lumeno::detect
