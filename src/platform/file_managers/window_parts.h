#pragma once

#include <vector>

#include "platform/atspi/atspi_client.h"
#include "platform/file_managers/file_manager_recipe.h"

namespace lumeno {

/// What of a file manager's window matters, as found in one walk through it.
struct WindowParts {
  std::vector<atspi::Reference> views;                    ///< content views of the kind that is looked for
  std::vector<atspi::Reference> entries;                  ///< text entries
  std::vector<std::vector<atspi::Reference>> buttonRows;  ///< buttons that have the same parent, in its order
};

/// Walks through a window. It may take a second; what hides inside pages that are not shown is left out.
/// Check the client for completeness afterwards. Worker only.
[[nodiscard]] WindowParts findWindowParts(atspi::Client& client, const FileManagerRecipe& recipe,
                                          const atspi::Reference& frame);

/// Whether a content view that was found before is still there to be seen. Worker only.
[[nodiscard]] bool isShown(atspi::Client& client, const FileManagerRecipe& recipe,
                           const atspi::Reference& view);

}  // namespace lumeno
