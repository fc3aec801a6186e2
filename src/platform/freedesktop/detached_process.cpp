#include "platform/freedesktop/detached_process.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

/// Tokens of our own start: a program that used them would take our place.
constexpr QLatin1StringView startupTokens[] = {"DESKTOP_STARTUP_ID"_L1, "XDG_ACTIVATION_TOKEN"_L1};

QProcessEnvironment environmentAtStart() {
  // The kernel keeps the block that the process began with.
  QFile file(u"/proc/self/environ"_s);
  if (!file.open(QIODevice::ReadOnly)) return QProcessEnvironment::systemEnvironment();
  QProcessEnvironment environment;
  for (const QByteArray& entry : file.readAll().split('\0')) {
    const auto equals = entry.indexOf('=');
    if (equals <= 0) continue;
    environment.insert(QString::fromLocal8Bit(entry.first(equals)),
                       QString::fromLocal8Bit(entry.sliced(equals + 1)));
  }
  for (const auto token : startupTokens) environment.remove(token);
  return environment;
}

}  // namespace

bool startDetached(const QStringList& command) {
  const QString program = QStandardPaths::findExecutable(command.value(0));
  if (program.isEmpty()) return false;
  QProcess process;
  process.setProgram(program);
  process.setArguments(command.sliced(1));
  process.setProcessEnvironment(environmentAtStart());
  process.setWorkingDirectory(QDir::homePath());
  process.setStandardInputFile(QProcess::nullDevice());
  process.setStandardOutputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  return process.startDetached();
}

}  // namespace lumeno
