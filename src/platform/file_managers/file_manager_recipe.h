#pragma once

#include <QString>
#include <optional>

namespace lumeno {

/// How a file manager shows its content over accessibility: where the selection, the names and the folder are
/// found. Other views of the same file manager are not read.
struct FileManagerRecipe {
  enum class View {
    iconPane,      ///< a layered pane that knows its selected children, which are the items
    gridView,      ///< GTK 4's grid, which knows its selected cells; the items are inside
    paneTable,     ///< a table in a directory pane, which knows its selected rows; names in the first column
    itemTable,     ///< a table of cells, each an item that knows whether it is selected
    columnedList,  ///< a list of cells, several for each item, the first one with its name
  };
  enum class Folder {
    locationEntry,        ///< the text of an entry, kept up to date while it is hidden behind buttons
    toggleButtons,        ///< a row of buttons for the parts of a path, the last part first; one is checked
    sessionBusLocations,  ///< the file manager tells the folders of all its windows on the session bus
    confirmedButtons,     ///< a row of buttons, the first part first; the session bus confirms the folder
  };
  View view;
  Folder folder;
};

/// Absent for applications whose selection cannot be told this way.
[[nodiscard]] std::optional<FileManagerRecipe> recipeFor(const QString& applicationId);

}  // namespace lumeno
