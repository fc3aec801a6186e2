#pragma once

#include <xcb/xcb.h>

namespace lumeno {

/// The toolkit's own connection to the X server; null when it shows its windows otherwise. Requests for one
/// of its windows go through it, so that the server sees them in order with what the toolkit asks for;
/// whoever sends one flushes it.
[[nodiscard]] xcb_connection_t* toolkitConnection();

}  // namespace lumeno
