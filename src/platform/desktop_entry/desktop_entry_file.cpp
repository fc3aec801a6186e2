#include "platform/desktop_entry/desktop_entry_file.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

QString unescaped(const QString& text) {
  if (!text.contains(u'\\')) return text;
  QString result;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] != u'\\' || i + 1 == text.size()) {
      result += text[i];
      continue;
    }
    switch (text[++i].unicode()) {
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
        result += u'\r';
        break;
      case u'\\':
        result += u'\\';
        break;
      default:
        result += u'\\';
        result += text[i];
    }
  }
  return result;
}

/// Splits a command line by the quoting rules of the Exec key.
std::optional<QStringList> splitExec(const QString& line) {
  QStringList arguments;
  QString current;
  bool inside = false;
  bool quoted = false;
  for (qsizetype i = 0; i < line.size(); ++i) {
    const QChar c = line[i];
    if (quoted) {
      if (c == u'"') {
        quoted = false;
      } else if (c == u'\\' && i + 1 < line.size()) {
        current += line[++i];
      } else {
        current += c;
      }
    } else if (c == u'"') {
      quoted = inside = true;
    } else if (c == u' ' || c == u'\t') {
      if (inside) arguments << std::exchange(current, {});
      inside = false;
    } else {
      current += c;
      inside = true;
    }
  }
  if (quoted) return std::nullopt;
  if (inside) arguments << current;
  return arguments;
}

/// The path of a local file's URL; any other URL as it is.
QString asFile(const QString& url) {
  const QUrl parsed(url);
  return parsed.isLocalFile() ? parsed.toLocalFile() : url;
}

bool intersects(const QStringList& a, const QStringList& b) {
  for (const auto& item : a) {
    if (b.contains(item)) return true;
  }
  return false;
}

}  // namespace

QStringList currentDesktops() {
  return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
}

std::optional<DesktopEntryFile> DesktopEntryFile::read(const QString& path) {
  QFile file(path);
  if (path.isEmpty() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  DesktopEntryFile entry;
  entry.path_ = path;
  bool inMainGroup = false;
  while (!file.atEnd()) {
    const QString line = QString::fromUtf8(file.readLine()).trimmed();
    if (line.startsWith(u'[')) {
      // What follows the main group are mostly the actions, in all languages.
      if (inMainGroup) break;
      inMainGroup = line == "[Desktop Entry]"_L1;
      continue;
    }
    const qsizetype equals = line.indexOf(u'=');
    if (!inMainGroup || line.startsWith(u'#') || equals <= 0) continue;
    entry.values_.insert(line.first(equals).trimmed(), line.sliced(equals + 1).trimmed());
  }
  if (!inMainGroup) return std::nullopt;
  return entry;
}

QString DesktopEntryFile::value(const QString& key) const {
  return unescaped(values_.value(key));
}

QString DesktopEntryFile::localizedValue(const QString& key, const QString& localeName) const {
  for (const QString& locale : {localeName, localeName.section(u'_', 0, 0)}) {
    const auto found = values_.constFind(key + u'[' + locale + u']');
    if (found != values_.cend()) return unescaped(*found);
  }
  return value(key);
}

QStringList DesktopEntryFile::list(const QString& key) const {
  return value(key).split(u';', Qt::SkipEmptyParts);
}

bool DesktopEntryFile::isInstalled() const {
  const QString tryExec = value(u"TryExec"_s);
  return !isTrue(u"Hidden"_s) && (tryExec.isEmpty() || !QStandardPaths::findExecutable(tryExec).isEmpty());
}

bool DesktopEntryFile::isForThisDesktop() const {
  const QStringList desktops = currentDesktops();
  const QStringList only = list(u"OnlyShowIn"_s);
  return (only.isEmpty() || intersects(only, desktops)) && !intersects(list(u"NotShowIn"_s), desktops);
}

QStringList DesktopEntryFile::commandFor(const QString& url) const {
  const auto arguments = splitExec(value(u"Exec"_s));
  if (!arguments) return {};
  QStringList command;
  bool hasUrl = false;
  for (const QString& argument : *arguments) {
    if (argument == "%i"_L1) {
      const QString icon = value(u"Icon"_s);
      if (!icon.isEmpty()) command << u"--icon"_s << icon;
      continue;
    }
    QString filled;
    for (qsizetype i = 0; i < argument.size(); ++i) {
      if (argument[i] != u'%' || i + 1 == argument.size()) {
        filled += argument[i];
        continue;
      }
      switch (argument[++i].unicode()) {
        case u'u':
        case u'U':
          filled += url;
          hasUrl = true;
          break;
        case u'f':
        case u'F':
          filled += asFile(url);
          hasUrl = true;
          break;
        case u'c':
          filled += value(u"Name"_s);
          break;
        case u'k':
          filled += path_;
          break;
        case u'%':
          filled += u'%';
          break;
        default:  // codes that no longer mean anything
          break;
      }
    }
    if (!filled.isEmpty() || argument.isEmpty()) command << filled;
  }
  // An entry that names no place for it is given the URL all the same.
  if (!hasUrl && !command.isEmpty() && !url.isEmpty()) command << url;
  return command;
}

QString quotedForExec(const QString& argument) {
  QString quoted = u"\""_s;
  for (const QChar c : argument) {
    if (c == u'"' || c == u'`' || c == u'$' || c == u'\\') quoted += u'\\';
    if (c == u'%') quoted += u'%';
    quoted += c;
  }
  quoted += u'"';
  // The value as a whole is escaped once more as any string of such a file.
  return quoted.replace(u"\\"_s, u"\\\\"_s);
}

}  // namespace lumeno
