#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QtEndian>
#include <utility>
#include <vector>

/// The (English, translated) pairs of a compiled GNU message catalogue; none when the file cannot be read.
inline std::vector<std::pair<QString, QString>> readMessageCatalogue(const QString& path) {
  std::vector<std::pair<QString, QString>> messages;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return messages;
  const QByteArray data = file.readAll();
  const auto number = [&](quint32 offset) {
    return offset + 4 <= static_cast<quint32>(data.size())
               ? qFromLittleEndian<quint32>(data.constData() + offset)
               : 0U;
  };
  constexpr quint32 magic = 0x950412de;
  if (number(0) != magic) return messages;
  const quint32 count = number(8);
  const auto text = [&](quint32 table, quint32 index) {
    const QByteArray bytes = data.mid(number(table + index * 8 + 4), number(table + index * 8));
    // Of plural forms only the first.
    return QString::fromUtf8(bytes.constData());
  };
  for (quint32 i = 0; i < count; ++i) messages.emplace_back(text(number(12), i), text(number(16), i));
  return messages;
}
