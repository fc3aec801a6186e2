#pragma once

#include "ai/ai_service.h"
#include "platform/language_model.h"

namespace lumeno {

/// The one place that knows which service stands behind which backend. `onDeviceModel` (null where the system
/// has none) must outlive the services made and their jobs.
[[nodiscard]] AIServiceFactory aiServiceFactory(LanguageModel* onDeviceModel);

}  // namespace lumeno
