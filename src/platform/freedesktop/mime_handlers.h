#pragma once

#include <QString>
#include <optional>

#include "platform/desktop_entry/desktop_entry_file.h"

namespace lumeno {

/// The entry that is to open a type ("x-scheme-handler/https"), by the MIME Applications Associations rules:
/// the user's choice for this desktop, the user's, the system's, and then whatever is associated with it.
/// Entries that are not installed or need a terminal are passed over. Reads files, on any thread.
[[nodiscard]] std::optional<DesktopEntryFile> defaultHandler(const QString& mimeType);

}  // namespace lumeno
