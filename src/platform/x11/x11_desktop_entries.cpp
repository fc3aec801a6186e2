#include "platform/x11/x11_desktop_entries.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include "platform/desktop_entry/desktop_entry_file.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

// The program's base name. Whoever starts through "env" or the like is found by class or id.
QString program(const DesktopEntryFile& file) {
  return QFileInfo(file.commandFor({}).value(0)).fileName().toLower();
}

void addFirst(QHash<QString, DesktopEntry>& index, const QString& key, const DesktopEntry& entry) {
  if (!key.isEmpty() && !index.contains(key)) index.insert(key, entry);
}

}  // namespace

QStringList X11DesktopEntries::dataFolders() {
  QString home = qEnvironmentVariable("XDG_DATA_HOME");
  if (home.isEmpty()) home = QDir::homePath() + "/.local/share"_L1;
  QString system = qEnvironmentVariable("XDG_DATA_DIRS");
  if (system.isEmpty()) system = u"/usr/local/share:/usr/share"_s;
  return QStringList(home) + system.split(u':', Qt::SkipEmptyParts);
}

X11DesktopEntries X11DesktopEntries::load(const QStringList& dataFolders, const QString& localeName) {
  X11DesktopEntries entries;
  QSet<QString> seen;
  for (const QString& folder : dataFolders) {
    const QDir applications(folder + "/applications"_L1);
    QDirIterator files(applications.path(), {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      const QString path = files.next();
      QString id = applications.relativeFilePath(path).chopped(qsizetype(8));
      id.replace(u'/', u'-');
      // An entry in a more important folder replaces the others, also when it only hides them.
      if (seen.contains(id)) continue;
      seen.insert(id);
      const auto file = DesktopEntryFile::read(path);
      if (!file || file->value(u"Type"_s) != "Application"_L1 || file->isTrue(u"Hidden"_s)) continue;
      const QString name = file->localizedValue(u"Name"_s, localeName);
      if (name.isEmpty()) continue;
      const bool isTerminal =
          file->list(u"Categories"_s).contains("TerminalEmulator"_L1, Qt::CaseInsensitive);
      const DesktopEntry entry{id, name, isTerminal};
      addFirst(entries.byWindowClass_, file->value(u"StartupWMClass"_s).toLower(), entry);
      addFirst(entries.byId_, id.toLower(), entry);
      addFirst(entries.byIdTail_, id.section(u'.', -1).toLower(), entry);
      if (!file->isTrue(u"NoDisplay"_s)) addFirst(entries.byProgram_, program(*file), entry);
    }
  }
  return entries;
}

std::optional<DesktopEntry> X11DesktopEntries::find(const QString& instanceName,
                                                    const QString& className) const {
  for (const Index* index : {&byWindowClass_, &byId_, &byIdTail_, &byProgram_}) {
    for (const QString& name : {className.toLower(), instanceName.toLower()}) {
      const auto found = index->constFind(name);
      if (found != index->cend()) return *found;
    }
  }
  return std::nullopt;
}

}  // namespace lumeno
