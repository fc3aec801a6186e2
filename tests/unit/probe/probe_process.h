#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <vector>

namespace lumeno::testing {

/// What the probe prints for `input`, line by line; empty when it does not end well.
inline std::vector<QByteArray> probeLines(const QByteArray& input) {
  QProcess probe;
  probe.start(QStringLiteral(LUMENO_PROBE), {});
  probe.write(input);
  probe.closeWriteChannel();
  if (!probe.waitForFinished(60'000) || probe.exitStatus() != QProcess::NormalExit || probe.exitCode() != 0)
    return {};
  std::vector<QByteArray> lines;
  for (const QByteArray& line : probe.readAllStandardOutput().split('\n')) lines.push_back(line);
  lines.pop_back();  // what follows the last line break
  return lines;
}

inline QJsonObject ask(const QJsonObject& request) {
  const auto lines = probeLines(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
  return lines.size() == 1 ? QJsonDocument::fromJson(lines[0]).object() : QJsonObject();
}

}  // namespace lumeno::testing
