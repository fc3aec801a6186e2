#include "view_kit/symbol_provider.h"

#include "view_kit/icon_renderer.h"

namespace lumeno {

using namespace Qt::StringLiterals;

SymbolProvider::SymbolProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage SymbolProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
  const QStringList parts = id.split(u'/');
  if (parts.size() != 3 || requestedSize.isEmpty()) return {};
  const SymbolWeight weight = parts[1] == "bold"_L1       ? SymbolWeight::bold
                              : parts[1] == "semibold"_L1 ? SymbolWeight::semibold
                                                          : SymbolWeight::regular;
  if (size) *size = requestedSize;
  return symbolImage(parts[0], QColor(u'#' + parts[2]), requestedSize, weight);
}

}  // namespace lumeno
