#pragma once

#include <QVariantList>

namespace lumeno {

/// What a picker of the AI backend offers, in the order of the cases: maps with "label" and "symbol".
[[nodiscard]] QVariantList backendOptions();

}  // namespace lumeno
