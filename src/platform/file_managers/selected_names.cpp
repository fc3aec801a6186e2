#include "platform/file_managers/selected_names.h"

#include <QDBusArgument>
#include <algorithm>
#include <utility>

namespace lumeno {

using atspi::Client;
using atspi::Reference;
using View = FileManagerRecipe::View;
using Names = std::optional<std::vector<QString>>;

namespace {

constexpr auto selectionInterface = "org.a11y.atspi.Selection";
constexpr auto tableInterface = "org.a11y.atspi.Table";

bool isTooMany(qsizetype count, std::optional<int> most) {
  return most && count > *most;
}

std::optional<int> number(Client& client, const Reference& object, const char* interface, const char* name) {
  const auto value = client.property(object, interface, name);
  return value ? std::optional(value->toInt()) : std::nullopt;
}

/// The text of the one child that has a text; absent when there are more or none.
std::optional<QString> onlyNameAmong(Client& client, const std::vector<Reference>& objects) {
  std::optional<QString> found;
  for (const Reference& object : objects) {
    const auto name = client.name(object);
    if (!name || name->isEmpty()) continue;
    if (found) return std::nullopt;
    found = name;
  }
  return found;
}

/// Icons that are selected, in any order: sorted by their place.
Names namesOfSelectedIcons(Client& client, const Reference& view, int count) {
  std::vector<std::pair<int, QString>> icons;
  for (int i = 0; i < count; ++i) {
    const auto icon = client.callForReference(view, selectionInterface, "GetSelectedChild", {i});
    const auto name = icon ? client.name(*icon) : std::nullopt;
    const auto index =
        icon ? client.call(*icon, "org.a11y.atspi.Accessible", "GetIndexInParent") : std::nullopt;
    if (!name || !index || index->isEmpty()) return std::nullopt;
    icons.emplace_back(index->first().toInt(), *name);
  }
  std::sort(icons.begin(), icons.end());
  std::vector<QString> names;
  for (auto& [index, name] : icons) names.push_back(std::move(name));
  return names;
}

/// Each cell of the grid has one child, the item.
Names namesInSelectedGridCells(Client& client, const Reference& view, int count) {
  std::vector<QString> names;
  for (int i = 0; i < count; ++i) {
    const auto cell = client.callForReference(view, selectionInterface, "GetSelectedChild", {i});
    if (!cell) return std::nullopt;
    const auto items = client.children(*cell);
    const auto name = items.size() == 1 ? client.name(items.front()) : std::nullopt;
    if (!name || name->isEmpty()) return std::nullopt;
    names.push_back(*name);
  }
  return names;
}

Names namesInSelectedRows(Client& client, const Reference& table, std::optional<int> most) {
  const auto answer = client.call(table, tableInterface, "GetSelectedRows");
  if (!answer || answer->isEmpty()) return std::nullopt;
  auto rows = qdbus_cast<QList<int>>(answer->first());
  if (isTooMany(rows.size(), most)) return std::nullopt;
  std::sort(rows.begin(), rows.end());
  std::vector<QString> names;
  for (const int row : std::as_const(rows)) {
    const auto cell = client.callForReference(table, tableInterface, "GetAccessibleAt", {row, 0});
    if (!cell) return std::nullopt;
    // Only the column with the names has an icon beside the text.
    const auto inside = client.children(*cell);
    const auto name = inside.size() > 1 ? onlyNameAmong(client, inside) : std::nullopt;
    if (!name) return std::nullopt;
    names.push_back(*name);
  }
  return names;
}

/// Cells of which the first of every `columns` is an item.
Names namesOfSelectedCells(Client& client, const Reference& view, int columns, std::optional<int> most) {
  if (columns < 1) return std::nullopt;
  const auto count = number(client, view, "org.a11y.atspi.Accessible", "ChildCount");
  if (!count || isTooMany(*count / columns, most)) return std::nullopt;
  const auto cells = client.children(view);
  std::vector<QString> names;
  for (size_t i = 0; i < cells.size(); i += static_cast<size_t>(columns)) {
    const auto states = client.states(cells[i]);
    if (!states) return std::nullopt;
    // What is inside an opened folder looks as what is beside it.
    if ((*states >> atspi::stateExpanded) & 1) return std::nullopt;
    if (!((*states >> atspi::stateSelected) & 1)) continue;
    const auto name = client.name(cells[i]);
    if (!name) return std::nullopt;
    names.push_back(*name);
  }
  return names;
}

}  // namespace

Names readSelectedNames(Client& client, View kind, const Reference& view, std::optional<int> most) {
  switch (kind) {
    case View::iconPane:
    case View::gridView: {
      const auto count = number(client, view, selectionInterface, "NSelectedChildren");
      if (!count || isTooMany(*count, most)) return std::nullopt;
      return kind == View::iconPane ? namesOfSelectedIcons(client, view, *count)
                                    : namesInSelectedGridCells(client, view, *count);
    }
    case View::paneTable:
      return namesInSelectedRows(client, view, most);
    case View::itemTable:
      return namesOfSelectedCells(client, view, 1, most);
    case View::columnedList:
      return namesOfSelectedCells(client, view, number(client, view, tableInterface, "NColumns").value_or(0),
                                  most);
  }
  return std::nullopt;
}

}  // namespace lumeno
