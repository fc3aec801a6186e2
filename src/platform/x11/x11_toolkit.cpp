#include "platform/x11/x11_toolkit.h"

#include <QGuiApplication>

namespace lumeno {

xcb_connection_t* toolkitConnection() {
  const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
  if (!application) return nullptr;
  const auto* native = application->nativeInterface<QNativeInterface::QX11Application>();
  return native ? native->connection() : nullptr;
}

}  // namespace lumeno
