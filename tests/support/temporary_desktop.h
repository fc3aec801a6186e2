#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>

namespace lumeno {

/// A home and system folders of a test's own, named by the environment as long as this lives.
class TemporaryDesktop {
 public:
  TemporaryDesktop() {
    set("HOME", path(QStringLiteral("home")));
    set("XDG_CONFIG_HOME", path(QStringLiteral("config")));
    set("XDG_CONFIG_DIRS", path(QStringLiteral("etc")));
    set("XDG_DATA_HOME", path(QStringLiteral("data")));
    set("XDG_DATA_DIRS", path(QStringLiteral("share")));
    set("XDG_CURRENT_DESKTOP", QString());
    // Programs of the test come first, the few it calls itself stay.
    set("PATH", path(QStringLiteral("bin")) + QStringLiteral(":/usr/bin:/bin"));
    for (const char* folder : {"home", "config", "etc", "data", "share", "bin"}) {
      QDir(folder_.path()).mkdir(QString::fromLatin1(folder));
    }
  }
  ~TemporaryDesktop() {
    for (auto it = before_.cbegin(); it != before_.cend(); ++it) {
      if (it->isNull()) {
        qunsetenv(it.key().constData());
      } else {
        qputenv(it.key().constData(), *it);
      }
    }
  }
  TemporaryDesktop(const TemporaryDesktop&) = delete;
  TemporaryDesktop& operator=(const TemporaryDesktop&) = delete;

  void set(const char* variable, const QString& value) {
    if (!before_.contains(variable)) before_.insert(variable, qgetenv(variable));
    qputenv(variable, value.toUtf8());
  }

  [[nodiscard]] QString path(const QString& name) const { return folder_.filePath(name); }

  void write(const QString& name, const QByteArray& content) const {
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    EXPECT_TRUE(file.open(QFile::WriteOnly)) << name.toStdString();
    file.write(content);
  }
  /// A program in the PATH: a shell script.
  void writeProgram(const QString& name, const QByteArray& script) const {
    write(QStringLiteral("bin/") + name, "#!/bin/sh\n" + script);
    QFile::setPermissions(path(QStringLiteral("bin/") + name),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  /// Null when there is no such file.
  [[nodiscard]] QByteArray read(const QString& name) const {
    QFile file(path(name));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
  }
  [[nodiscard]] bool exists(const QString& name) const { return QFile::exists(path(name)); }

 private:
  QTemporaryDir folder_;
  QHash<QByteArray, QByteArray> before_;
};

}  // namespace lumeno
