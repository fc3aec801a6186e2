#include "platform/file_managers/name_matching.h"

#include <dirent.h>

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStringDecoder>
#include <memory>

namespace lumeno {

namespace {

constexpr qint64 mostTitleBytes = 256 * 1024;  // of one desktop entry
constexpr int mostDesktopEntries = 500;

/// The length of the valid UTF-8 character at `at`; 0 when there is none.
qsizetype characterLength(const QByteArray& bytes, qsizetype at) {
  const auto byte = static_cast<uint8_t>(bytes[at]);
  const qsizetype length = byte < 0x80   ? 1
                           : byte < 0xc2 ? 0
                           : byte < 0xe0 ? 2
                           : byte < 0xf0 ? 3
                           : byte < 0xf5 ? 4
                                         : 0;
  if (length < 2) return length;
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString decoded = decoder(bytes.mid(at, length));
  return decoder.hasError() || decoded.isEmpty() ? 0 : length;
}

bool isText(const QByteArray& name) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString decoded = decoder(name);
  return !decoder.hasError();
}

/// Whether `shown` may be this name, which is not text: some put a remark in brackets behind it.
bool mayBeShownAs(const QByteArray& name, const QString& shown) {
  const QString rendered = shownName(name);
  if (shown == rendered) return true;
  return shown.startsWith(rendered) && shown.endsWith(u')') &&
         QStringView(shown).mid(rendered.size()).startsWith(u" (");
}

/// Every `Name=` and `Name[language]=` of a desktop entry, whatever the language is.
void addTitles(const QByteArray& path, std::vector<QString>& titles) {
  QFile file(QFile::decodeName(path));
  // To open a pipe would be to wait for somebody who writes into it.
  if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) return;
  for (const QByteArray& line : file.read(mostTitleBytes).split('\n')) {
    if (!line.startsWith("Name")) continue;
    const qsizetype equals = line.indexOf('=');
    if (equals > 0) titles.push_back(QString::fromUtf8(line.mid(equals + 1)).trimmed());
  }
}

}  // namespace

QString shownName(const QByteArray& name) {
  QString shown;
  for (qsizetype at = 0; at < name.size();) {
    const qsizetype length = characterLength(name, at);
    shown += length > 0 ? QString::fromUtf8(name.mid(at, length)) : QString(QChar::ReplacementCharacter);
    at += std::max<qsizetype>(length, 1);
  }
  return shown;
}

std::optional<FolderListing> listFolder(const QByteArray& path) {
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(path.constData()), closedir);
  if (!folder) return std::nullopt;
  FolderListing listing;
  int desktopEntries = 0;
  while (const dirent* entry = readdir(folder.get())) {
    const QByteArray name(entry->d_name);
    if (name == "." || name == "..") continue;
    listing.names.push_back(name);
    if (!name.endsWith(".desktop") && !name.endsWith(".directory")) continue;
    // With so many, what they show cannot be told.
    if (++desktopEntries > mostDesktopEntries) return std::nullopt;
    addTitles(path + '/' + name, listing.titles);
  }
  return listing;
}

std::optional<std::vector<QByteArray>> matchNames(const std::vector<QString>& shown,
                                                  const FolderListing& folder) {
  struct Match {
    QByteArray name;
    int count = 0;
    bool isTaken = false;
  };
  QHash<QString, Match> matches;
  std::vector<QString> withReplacement;
  for (const QString& name : shown) {
    matches.insert(name, {});
    if (name.contains(QChar::ReplacementCharacter)) withReplacement.push_back(name);
  }
  const auto note = [&matches](const QString& name, const QByteArray& onDisk) {
    const auto match = matches.find(name);
    if (match == matches.end()) return;
    match->name = onDisk;
    ++match->count;
  };
  for (const QByteArray& name : folder.names) {
    if (isText(name)) {
      note(QString::fromUtf8(name), name);
    } else {
      for (const QString& candidate : withReplacement) {
        if (mayBeShownAs(name, candidate)) note(candidate, name);
      }
    }
  }
  // An entry of the desktop with that title looks the same.
  for (const QString& title : folder.titles) note(title, {});

  std::vector<QByteArray> found;
  for (const QString& name : shown) {
    Match& match = matches[name];
    if (match.count != 1 || match.name.isEmpty() || match.isTaken) return std::nullopt;
    match.isTaken = true;
    found.push_back(match.name);
  }
  return found;
}

}  // namespace lumeno
