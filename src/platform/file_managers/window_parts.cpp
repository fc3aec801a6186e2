#include "platform/file_managers/window_parts.h"

#include <algorithm>
#include <array>
#include <deque>

namespace lumeno {

using atspi::Reference;
using View = FileManagerRecipe::View;
using Folder = FileManagerRecipe::Folder;

namespace {

constexpr int mostObjectsWalked = 1500;

/// Menus and lists hold many objects, none of which matters.
bool isLeftOut(uint32_t role) {
  static constexpr std::array roles{atspi::roleMenu,      atspi::roleMenuBar,   atspi::roleMenuItem,
                                    atspi::rolePopupMenu, atspi::roleScrollBar, atspi::roleStatusBar,
                                    atspi::roleComboBox,  atspi::roleTable,     atspi::roleList,
                                    atspi::roleTree,      atspi::roleTreeTable, atspi::roleTableCell};
  return std::find(roles.begin(), roles.end(), role) != roles.end();
}

bool isRowButton(const FileManagerRecipe& recipe, uint32_t role) {
  switch (recipe.folder) {
    case Folder::toggleButtons:
      return role == atspi::roleToggleButton || role == atspi::roleCheckBox;
    case Folder::confirmedButtons:
      return role == atspi::rolePushButton;
    case Folder::locationEntry:
    case Folder::sessionBusLocations:
      break;
  }
  return false;
}

bool isView(atspi::Client& client, View view, const Reference& object, uint32_t role, uint32_t parentRole) {
  switch (view) {
    case View::iconPane:
      return role == atspi::roleLayeredPane;
    case View::gridView:
      return role == atspi::roleTable && client.name(object) == u"GtkGridView";
    case View::paneTable:
      return role == atspi::roleTable && parentRole == atspi::roleDirectoryPane;
    case View::itemTable:
      return role == atspi::roleTable && parentRole == atspi::roleFiller;
    case View::columnedList:
      return role == atspi::roleList && parentRole == atspi::roleFiller;
  }
  return false;
}

}  // namespace

WindowParts findWindowParts(atspi::Client& client, const FileManagerRecipe& recipe, const Reference& frame) {
  WindowParts parts;
  struct Step {
    Reference object;
    uint32_t role;
  };
  std::deque<Step> queue{{frame, atspi::roleFrame}};
  for (int walked = 0; walked < mostObjectsWalked && !queue.empty(); ++walked) {
    const Step parent = queue.front();
    queue.pop_front();
    std::vector<Reference> buttons;
    for (const Reference& object : client.children(parent.object)) {
      const auto role = client.role(object);
      if (client.isIncomplete()) return parts;
      if (!role) continue;
      if (isView(client, recipe.view, object, *role, parent.role)) {
        if (isShown(client, recipe, object)) parts.views.push_back(object);
        continue;
      }
      if (*role == atspi::roleText) parts.entries.push_back(object);
      if (isRowButton(recipe, *role)) buttons.push_back(object);
      const bool isHiddenPage = *role == atspi::rolePageTab && !client.hasState(object, atspi::stateShowing);
      if (!isLeftOut(*role) && !isHiddenPage) queue.push_back({object, *role});
    }
    if (!buttons.empty()) parts.buttonRows.push_back(std::move(buttons));
  }
  return parts;
}

bool isShown(atspi::Client& client, const FileManagerRecipe& recipe, const Reference& view) {
  const auto states = client.states(view);
  // GTK 4 does not say of what is inside a window whether it is shown.
  return states && (recipe.view == View::gridView || (*states >> atspi::stateShowing) & 1);
}

}  // namespace lumeno
