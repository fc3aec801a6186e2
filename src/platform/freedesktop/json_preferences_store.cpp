#include "platform/freedesktop/json_preferences_store.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include "platform/freedesktop/write_file.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

// Far more than all preferences take; a larger file is not ours.
constexpr qint64 maximumFileSize = 4 * 1024 * 1024;

/// Where `path` leads, also when nothing is there yet: a linked file keeps its link.
QString followLinks(QString path) {
  for (int links = 0; links < 40 && QFileInfo(path).isSymLink(); ++links)
    path = QFileInfo(path).symLinkTarget();
  return path;
}

/// A name beside `path` that nothing has yet.
QString nameForDamaged(const QString& path) {
  for (int number = 1;; ++number) {
    const QString name = u"%1.damaged-%2"_s.arg(path).arg(number);
    if (!QFileInfo::exists(name)) return name;
  }
}

/// The object of a file's content; absent when it is damaged.
std::optional<QJsonObject> parse(const QByteArray& content) {
  const auto document = QJsonDocument::fromJson(content);
  if (!document.isObject()) return std::nullopt;
  return document.object();
}

void apply(QJsonObject& object, const QString& key, const QJsonValue& value) {
  if (value.isUndefined()) {
    object.remove(key);
  } else {
    object.insert(key, value);
  }
}

}  // namespace

JsonPreferencesStore::JsonPreferencesStore(QString path) : path_(std::move(path)) {
  values_ = read().value_or(QJsonObject());
}

QJsonValue JsonPreferencesStore::value(const QString& key) const {
  return values_.value(key);
}

void JsonPreferencesStore::setValue(const QString& key, const QJsonValue& value) {
  assign(key, value);
}

void JsonPreferencesStore::remove(const QString& key) {
  assign(key, QJsonValue(QJsonValue::Undefined));
}

void JsonPreferencesStore::assign(const QString& key, const QJsonValue& value) {
  apply(values_, key, value);
  unstored_.insert(key, value);
  auto object = read();
  if (!object) return;
  for (auto it = unstored_.cbegin(); it != unstored_.cend(); ++it) apply(*object, it.key(), it.value());
  if (!writeFileAtomically(followLinks(path_), QJsonDocument(*object).toJson())) {
    tellUnstorable(u"The settings could not be saved in %1. They hold until Lumeno ends."_s.arg(path_));
    return;
  }
  values_ = *object;
  unstored_.clear();
  if (std::exchange(isUnstorable_, false)) problem_.set({});
}

std::optional<QJsonObject> JsonPreferencesStore::read() {
  const QString target = followLinks(path_);
  const QFileInfo info(target);
  // A file that went or was emptied or damaged while we run loses nothing that we know.
  if (!info.exists()) return values_;
  QFile file(target);
  // Anything but a plain file might block.
  if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
    tellUnstorable(u"The settings in %1 could not be read. Changes hold until Lumeno ends."_s.arg(path_));
    return std::nullopt;
  }
  if (file.size() <= maximumFileSize) {
    const QByteArray content = file.readAll();
    if (content.trimmed().isEmpty()) return values_;
    if (auto object = parse(content)) return object;
  }
  const QString aside = nameForDamaged(target);
  if (!QFile::rename(target, aside)) {
    tellUnstorable(u"The settings file %1 is damaged. Changes hold until Lumeno ends."_s.arg(path_));
    return std::nullopt;
  }
  isUnstorable_ = false;
  problem_.set(u"The settings file was damaged. It was set aside as %1."_s.arg(aside));
  return values_;
}

void JsonPreferencesStore::tellUnstorable(const QString& text) {
  isUnstorable_ = true;
  if (text != problem_.get()) problem_.set(text);
}

}  // namespace lumeno
