#include "platform/freedesktop/mime_handlers.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QStandardPaths>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

/// The entries that one list file names for a type in one of its groups.
QStringList named(const QString& path, QLatin1StringView group, const QString& mimeType) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  bool inGroup = false;
  while (!file.atEnd()) {
    const QString line = QString::fromUtf8(file.readLine()).trimmed();
    if (line.startsWith(u'[')) {
      inGroup = QStringView(line).sliced(1).chopped(1) == group;
    } else if (inGroup && line.section(u'=', 0, 0).trimmed() == mimeType) {
      return line.section(u'=', 1).split(u';', Qt::SkipEmptyParts);
    }
  }
  return {};
}

/// The folders whose lists count, most important first. Applications are installed in those of the data
/// locations.
QStringList applicationFolders() {
  QStringList folders;
  for (const auto& folder : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
    folders << folder + "/applications"_L1;
  }
  return folders;
}
QStringList listFolders() {
  return QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation) + applicationFolders();
}

/// The list files of a folder, most important first.
QStringList listFiles(const QString& folder) {
  QStringList files;
  for (const auto& desktop : currentDesktops())
    files << folder + u'/' + desktop.toLower() + "-mimeapps.list"_L1;
  return files << folder + "/mimeapps.list"_L1;
}

/// The entries in a folder that say themselves that they open the type.
QStringList claiming(const QString& folder, const QString& mimeType) {
  const QString cache = folder + "/mimeinfo.cache"_L1;
  if (QFile::exists(cache)) return named(cache, "MIME Cache"_L1, mimeType);
  QStringList ids;
  for (const auto& id : QDir(folder).entryList({u"*.desktop"_s}, QDir::Files, QDir::Name)) {
    const auto entry = DesktopEntryFile::read(folder + u'/' + id);
    if (entry && entry->list(u"MimeType"_s).contains(mimeType)) ids << id;
  }
  return ids;
}

/// The file of an entry. A dash in the id may stand for a folder.
QString locate(QString id) {
  for (;;) {
    const QString path = QStandardPaths::locate(QStandardPaths::GenericDataLocation, "applications/"_L1 + id);
    const auto dash = id.indexOf(u'-');
    if (!path.isEmpty() || dash < 0) return path;
    id[dash] = u'/';
  }
}

std::optional<DesktopEntryFile> usableEntry(const QString& id) {
  auto entry = DesktopEntryFile::read(locate(id));
  if (!entry || !entry->isInstalled() || entry->isTrue(u"Terminal"_s)) return std::nullopt;
  const QString program = entry->commandFor({}).value(0);
  if (program.isEmpty() || QStandardPaths::findExecutable(program).isEmpty()) return std::nullopt;
  return entry;
}

std::optional<DesktopEntryFile> firstUsable(const QStringList& ids, const QSet<QString>& removed) {
  for (const auto& id : ids) {
    if (removed.contains(id)) continue;
    if (auto entry = usableEntry(id)) return entry;
  }
  return std::nullopt;
}

}  // namespace

std::optional<DesktopEntryFile> defaultHandler(const QString& mimeType) {
  const QStringList folders = listFolders();
  for (const auto& folder : folders) {
    for (const auto& list : listFiles(folder)) {
      if (auto entry = firstUsable(named(list, "Default Applications"_L1, mimeType), {})) return entry;
    }
  }
  const QStringList withApplications = applicationFolders();
  QSet<QString> removed;
  for (const auto& folder : folders) {
    for (const auto& list : listFiles(folder)) {
      if (auto entry = firstUsable(named(list, "Added Associations"_L1, mimeType), removed)) return entry;
      for (const auto& id : named(list, "Removed Associations"_L1, mimeType)) removed.insert(id);
    }
    if (!withApplications.contains(folder)) continue;
    if (auto entry = firstUsable(claiming(folder, mimeType), removed)) return entry;
  }
  return std::nullopt;
}

}  // namespace lumeno
