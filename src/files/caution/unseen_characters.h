#pragma once

#include <QStringView>
#include <optional>

#include "files/caution/shell_script.h"

namespace lumeno {

/// The first characters of `text` that hide something. Joiners inside emoji and between letters of the
/// scripts that need them hide nothing.
[[nodiscard]] std::optional<shell::Span> unseenCharacters(QStringView text);

}  // namespace lumeno
