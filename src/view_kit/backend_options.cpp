#include "view_kit/backend_options.h"

#include <QVariantMap>

#include "core/settings/settings_enums.h"

namespace lumeno {

using namespace Qt::StringLiterals;

QVariantList backendOptions() {
  QVariantList options;
  for (const AIBackend backend : allAIBackends) {
    options.append(QVariantMap{{u"label"_s, displayLabel(backend)}, {u"symbol"_s, symbolName(backend)}});
  }
  return options;
}

}  // namespace lumeno
