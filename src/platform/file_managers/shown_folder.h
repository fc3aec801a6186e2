#pragma once

#include <QString>
#include <optional>

#include "platform/atspi/atspi_client.h"
#include "platform/file_managers/file_manager_recipe.h"
#include "platform/file_managers/folder_names.h"
#include "platform/file_managers/window_parts.h"

namespace lumeno {

/// The folder that a file manager's window shows, where that can be told for certain; absent otherwise.
/// `title` is the window's. Worker only.
[[nodiscard]] std::optional<ShownFolder> readShownFolder(atspi::Client& client,
                                                         const FileManagerRecipe& recipe,
                                                         const WindowParts& parts, ProcessId process,
                                                         const QString& title);

}  // namespace lumeno
