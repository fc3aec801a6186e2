#include "hud/hud_resources.h"

#include <QtGlobal>

// Outside every namespace, as the macro demands.
static void initializeResources() {
  Q_INIT_RESOURCE(hud);
}

namespace lumeno {

void initializeHudResources() {
  initializeResources();
}

}  // namespace lumeno
