#pragma once

namespace lumeno {

/// Makes the embedded symbols and QML files available; may be called again.
void initializeHudResources();

}  // namespace lumeno
