#include "platform/x11/x11_desktop_entries.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

using Fields = QHash<QString, QString>;

QString unescaped(const QString& value) {
  if (!value.contains(u'\\')) return value;
  QString result;
  for (qsizetype i = 0; i < value.size(); ++i) {
    if (value[i] != u'\\' || i + 1 == value.size()) {
      result += value[i];
      continue;
    }
    switch (value[++i].unicode()) {
      case u's':
        result += u' ';
        break;
      case u'n':
        result += u'\n';
        break;
      case u't':
        result += u'\t';
        break;
      case u'r':
        break;
      default:
        result += value[i];
    }
  }
  return result;
}

// The keys of the main group only: actions have groups of their own, with names of their own.
Fields readFields(const QString& path) {
  Fields fields;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return fields;
  bool isInGroup = false;
  while (!file.atEnd()) {
    const QString line = QString::fromUtf8(file.readLine()).trimmed();
    if (line.startsWith(u'[')) {
      if (isInGroup) break;
      isInGroup = line == "[Desktop Entry]"_L1;
    } else if (const auto equals = line.indexOf(u'='); isInGroup && equals > 0 && !line.startsWith(u'#')) {
      fields.insert(line.left(equals).trimmed(), unescaped(line.mid(equals + 1).trimmed()));
    }
  }
  return fields;
}

QString localizedName(const Fields& fields, const QString& localeName) {
  const QString language = localeName.section(u'_', 0, 0);
  for (const QString& locale : {localeName, language}) {
    const auto found = fields.constFind("Name["_L1 + locale + "]"_L1);
    if (found != fields.cend()) return *found;
  }
  return fields.value(u"Name"_s);
}

// The program's base name. Whoever starts through "env" or the like is found by class or id.
QString program(const QString& exec) {
  const QString command = exec.startsWith(u'"') ? exec.section(u'"', 1, 1) : exec.section(u' ', 0, 0);
  return QFileInfo(command).fileName().toLower();
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
      const Fields fields = readFields(path);
      const QString name = localizedName(fields, localeName);
      if (name.isEmpty() || fields.value(u"Type"_s) != "Application"_L1) continue;
      if (fields.value(u"Hidden"_s) == "true"_L1) continue;
      const bool isTerminal =
          fields.value(u"Categories"_s).split(u';').contains("TerminalEmulator"_L1, Qt::CaseInsensitive);
      const DesktopEntry entry{id, name, isTerminal};
      addFirst(entries.byWindowClass_, fields.value(u"StartupWMClass"_s).toLower(), entry);
      addFirst(entries.byId_, id.toLower(), entry);
      addFirst(entries.byIdTail_, id.section(u'.', -1).toLower(), entry);
      if (fields.value(u"NoDisplay"_s) != "true"_L1) {
        addFirst(entries.byProgram_, program(fields.value(u"Exec"_s)), entry);
      }
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
