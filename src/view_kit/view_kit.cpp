#include "view_kit/view_kit.h"

#include <QQmlContext>

#include "view_kit/accent_dot.h"
#include "view_kit/surface_provider.h"
#include "view_kit/symbol_provider.h"

// Outside every namespace, as the macro demands.
static void initializeResources() {
  Q_INIT_RESOURCE(view_kit);
}

namespace lumeno {

using namespace Qt::StringLiterals;

void initializeViewKitResources() {
  initializeResources();
}

void ViewKit::releaseUnused() {
  engine_.collectGarbage();
  engine_.trimComponentCache();
}

ViewKit::ViewKit(Theme& theme) : theme_(theme) {
  initializeViewKitResources();
  qmlRegisterType<AccentDot>("Lumeno.ViewKit", 1, 0, "AccentDot");
  engine_.addImageProvider(u"symbol"_s, new SymbolProvider);
  engine_.addImageProvider(u"surface"_s, new SurfaceProvider);
  engine_.rootContext()->setContextProperty(u"theme"_s, &theme);
}

}  // namespace lumeno
