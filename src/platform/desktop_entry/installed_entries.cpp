#include "platform/desktop_entry/installed_entries.h"

#include <QDir>
#include <QDirIterator>
#include <QSet>

namespace lumeno {

using namespace Qt::StringLiterals;

QStringList applicationDataFolders() {
  QString home = qEnvironmentVariable("XDG_DATA_HOME");
  if (home.isEmpty()) home = QDir::homePath() + "/.local/share"_L1;
  QString system = qEnvironmentVariable("XDG_DATA_DIRS");
  if (system.isEmpty()) system = u"/usr/local/share:/usr/share"_s;
  return QStringList(home) + system.split(u':', Qt::SkipEmptyParts);
}

void forEachInstalledEntry(const QStringList& dataFolders, const QString& localeName,
                           const std::function<void(const InstalledEntry&)>& visit) {
  QSet<QString> seen;
  for (const QString& folder : dataFolders) {
    const QDir applications(folder + "/applications"_L1);
    QDirIterator files(applications.path(), {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      const QString path = files.next();
      QString id = applications.relativeFilePath(path).chopped(qsizetype(8));
      id.replace(u'/', u'-');
      if (seen.contains(id)) continue;
      seen.insert(id);
      const auto file = DesktopEntryFile::read(path);
      if (!file || file->value(u"Type"_s) != "Application"_L1 || file->isTrue(u"Hidden"_s)) continue;
      const QString name = file->localizedValue(u"Name"_s, localeName);
      if (!name.isEmpty()) visit({id, name, *file});
    }
  }
}

}  // namespace lumeno
