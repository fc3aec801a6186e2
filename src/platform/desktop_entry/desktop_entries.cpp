#include "platform/desktop_entry/desktop_entries.h"

#include <QFileInfo>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

void addFirst(QHash<QString, DesktopEntry>& index, const QString& key, const DesktopEntry& entry) {
  if (!key.isEmpty() && !index.contains(key)) index.insert(key, entry);
}

}  // namespace

Launch launchOf(const InstalledEntry& installed) {
  // Whoever starts through "env" or the like is found by class or id.
  const QString program = installed.file.commandFor({}).value(0);
  return {installed.id, installed.file.value(u"StartupWMClass"_s), QFileInfo(program).fileName().toLower()};
}

DesktopEntries DesktopEntries::load(const QStringList& dataFolders, const QString& localeName) {
  DesktopEntries entries;
  forEachInstalledEntry(dataFolders, localeName,
                        [&entries](const InstalledEntry& installed) { entries.add(installed); });
  return entries;
}

void DesktopEntries::add(const InstalledEntry& installed) {
  const DesktopEntryFile& file = installed.file;
  const bool isTerminal = file.list(u"Categories"_s).contains("TerminalEmulator"_L1, Qt::CaseInsensitive);
  const DesktopEntry entry{installed.id, installed.name, isTerminal};
  const Launch launch = launchOf(installed);
  addFirst(byWindowClass_, launch.windowClass.toLower(), entry);
  addFirst(byId_, entry.id.toLower(), entry);
  addFirst(byIdTail_, entry.id.section(u'.', -1).toLower(), entry);
  if (!file.isTrue(u"NoDisplay"_s)) addFirst(byProgram_, launch.program, entry);
}

std::optional<DesktopEntry> DesktopEntries::find(const QString& instanceName,
                                                 const QString& className) const {
  for (const Index* index : {&byWindowClass_, &byId_, &byIdTail_, &byProgram_}) {
    for (const QString& name : {className.toLower(), instanceName.toLower()}) {
      const auto found = index->constFind(name);
      if (found != index->cend()) return *found;
    }
  }
  return std::nullopt;
}

std::optional<DesktopEntry> DesktopEntries::findLaunched(const Launch& launch) const {
  if (!launch.windowClass.isEmpty()) return find(launch.windowClass, launch.windowClass);
  // Programs mostly name their windows after themselves. Where another entry bears the program's name, this
  // one is a further way into the same application.
  const auto bearer = byId_.constFind(launch.program);
  return bearer != byId_.cend() ? *bearer : find(launch.id, launch.id);
}

}  // namespace lumeno
