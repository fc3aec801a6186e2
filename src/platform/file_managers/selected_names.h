#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "platform/atspi/atspi_client.h"
#include "platform/file_managers/file_manager_recipe.h"

namespace lumeno {

/// The names of the selected items as the view shows them, in its order. Absent when they cannot be told or
/// when more than `most` objects would have to be asked. Check the client for completeness afterwards. Worker
/// only.
[[nodiscard]] std::optional<std::vector<QString>> readSelectedNames(atspi::Client& client,
                                                                    FileManagerRecipe::View kind,
                                                                    const atspi::Reference& view,
                                                                    std::optional<int> most);

}  // namespace lumeno
