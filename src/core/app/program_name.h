#pragma once

#include <QLatin1StringView>

namespace lumeno {

/// Under what name and path the program is found on the session bus. The name is also that of its desktop
/// entry.
inline constexpr QLatin1StringView busName{"org.lumeno.Lumeno"};
inline constexpr QLatin1StringView busPath{"/org/lumeno/Lumeno"};

}  // namespace lumeno
