#include "platform/file_managers/shown_folder.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QMap>
#include <algorithm>

#include "records/file_selection.h"

namespace lumeno {

using namespace Qt::StringLiterals;
using atspi::Client;
using atspi::Reference;
using Folder = FileManagerRecipe::Folder;

namespace {

constexpr int sessionBusTimeout = 250;  // milliseconds
constexpr int mostWindowsOfOneProcess = 8;

QByteArray homeFolder() {
  return QFile::encodeName(QDir::homePath());
}

QVariantList askOnSessionBus(const QString& service, const QString& path, const QString& interface,
                             const QString& method, const QVariantList& arguments) {
  auto request = QDBusMessage::createMethodCall(service, path, interface, method);
  request.setArguments(arguments);
  request.setAutoStartService(false);
  return QDBusConnection::sessionBus().call(request, QDBus::Block, sessionBusTimeout).arguments();
}

/// The one entry whose text is a location, and which nobody is typing into.
std::optional<ShownFolder> folderByEntry(Client& client, const WindowParts& parts) {
  std::optional<ShownFolder> found;
  for (const Reference& entry : parts.entries) {
    const auto answer = client.call(entry, "org.a11y.atspi.Text", "GetText", {0, -1});
    if (!answer || answer->isEmpty()) continue;
    const auto folder = folderOfLocation(answer->first().toString());
    if (!folder) continue;
    if ((found && folder != found) || client.hasState(entry, atspi::stateFocused)) return std::nullopt;
    found = folder;
  }
  return found;
}

/// From the checked button to the root; behind it may be folders that were visited before.
std::optional<ShownFolder> folderByToggleButtons(Client& client, const WindowParts& parts) {
  std::optional<ShownFolder> found;
  for (const auto& row : parts.buttonRows) {
    const auto current = std::find_if(row.begin(), row.end(), [&](const Reference& button) {
      return client.hasState(button, atspi::stateChecked);
    });
    QStringList names;
    for (auto button = current; button != row.end(); ++button) {
      names.prepend(client.name(*button).value_or(QString()));
    }
    const auto folder = folderOfParts(names);
    // A lone button without a name is one of many others.
    if (!folder || names == QStringList{QString()}) continue;
    if (found) return std::nullopt;
    found = folder;
  }
  return found;
}

/// The folders of all windows; the title tells which of them it is.
std::optional<ShownFolder> folderByLocations(ProcessId process, const QString& title) {
  const QString service = u"org.gnome.Nautilus"_s;
  const QVariantList owner =
      askOnSessionBus(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
                      u"GetConnectionUnixProcessID"_s, {service});
  if (owner.isEmpty() || owner.first().toUInt() != static_cast<uint>(process)) return std::nullopt;
  const QVariantList answer =
      askOnSessionBus(service, u"/org/freedesktop/FileManager1"_s, u"org.freedesktop.DBus.Properties"_s,
                      u"Get"_s, {u"org.freedesktop.FileManager1"_s, u"OpenWindowsWithLocations"_s});
  if (answer.isEmpty()) return std::nullopt;
  const QVariant value = answer.first().value<QDBusVariant>().variant();
  const auto byWindow = qdbus_cast<QMap<QString, QStringList>>(value.value<QDBusArgument>());
  QStringList locations;
  for (const QStringList& tabs : byWindow) {
    for (const QString& tab : tabs) {
      if (!locations.contains(tab)) locations.append(tab);
    }
  }
  std::optional<ShownFolder> found;
  for (const QString& location : std::as_const(locations)) {
    const auto folder = folderOfLocation(location);
    if (!folder) return std::nullopt;
    const bool isCandidate = folder->path.isEmpty() || isTitleOf(title, folder->path, homeFolder());
    if (!isCandidate) continue;
    if (found) return std::nullopt;
    found = folder;
  }
  return found;
}

bool isOpenInDolphin(ProcessId process, const QByteArray& path) {
  const QString service = u"org.kde.dolphin-%1"_s.arg(process);
  const QString url = fileUrl(path).toString(QUrl::FullyEncoded);
  for (int window = 1; window <= mostWindowsOfOneProcess; ++window) {
    const QVariantList answer = askOnSessionBus(service, u"/dolphin/Dolphin_%1"_s.arg(window),
                                                u"org.kde.dolphin.MainWindow"_s, u"isUrlOpen"_s, {url});
    if (answer.isEmpty() || answer.first().metaType() != QMetaType::fromType<bool>()) return false;
    if (answer.first().toBool()) return true;
  }
  return false;
}

/// Paths in the home folder may begin at a button of that name; the file manager confirms which it is.
std::optional<ShownFolder> folderByConfirmedButtons(Client& client, const WindowParts& parts,
                                                    ProcessId process) {
  std::optional<ShownFolder> found;
  for (const auto& row : parts.buttonRows) {
    QStringList names;
    for (const Reference& button : row) {
      const QString name = client.name(button).value_or(QString());
      if (!name.isEmpty()) names.append(name);
    }
    if (names.isEmpty()) continue;
    const bool isFromRoot = names.first() == u"/";
    names.first() = u"/"_s;
    const auto below = folderOfParts(names);
    if (!below) continue;
    const QByteArray path = isFromRoot           ? below->path
                            : below->path == "/" ? homeFolder()
                                                 : homeFolder() + below->path;
    if (!isOpenInDolphin(process, path)) continue;
    if (found) return std::nullopt;
    found = ShownFolder{path};
  }
  return found;
}

}  // namespace

std::optional<ShownFolder> readShownFolder(Client& client, const FileManagerRecipe& recipe,
                                           const WindowParts& parts, ProcessId process,
                                           const QString& title) {
  const auto folder = [&]() -> std::optional<ShownFolder> {
    switch (recipe.folder) {
      case Folder::locationEntry:
        return folderByEntry(client, parts);
      case Folder::toggleButtons:
        return folderByToggleButtons(client, parts);
      case Folder::sessionBusLocations:
        return folderByLocations(process, title);
      case Folder::confirmedButtons:
        return folderByConfirmedButtons(client, parts, process);
    }
    return std::nullopt;
  }();
  // A search shows what is elsewhere under a title of its own.
  if (folder && !folder->path.isEmpty() && !isTitleOf(title, folder->path, homeFolder())) return std::nullopt;
  return folder;
}

}  // namespace lumeno
