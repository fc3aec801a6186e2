#include "platform/file_managers/file_manager_recipe.h"

#include <QHash>

namespace lumeno {

using namespace Qt::StringLiterals;

std::optional<FileManagerRecipe> recipeFor(const QString& applicationId) {
  using View = FileManagerRecipe::View;
  using Folder = FileManagerRecipe::Folder;
  static const QHash<QString, FileManagerRecipe> recipes = {
      {u"caja"_s, {View::iconPane, Folder::locationEntry}},
      {u"nemo"_s, {View::iconPane, Folder::toggleButtons}},
      {u"thunar"_s, {View::paneTable, Folder::locationEntry}},
      {u"pcmanfm-qt"_s, {View::columnedList, Folder::toggleButtons}},
      {u"dolphin"_s, {View::itemTable, Folder::confirmedButtons}},
      {u"org.kde.dolphin"_s, {View::itemTable, Folder::confirmedButtons}},
      {u"org.gnome.nautilus"_s, {View::gridView, Folder::sessionBusLocations}},
  };
  const auto found = recipes.constFind(applicationId);
  return found == recipes.cend() ? std::nullopt : std::optional(*found);
}

}  // namespace lumeno
