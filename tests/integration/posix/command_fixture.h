#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <locale.h>
#include <signal.h>
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QUuid>
#include <algorithm>
#include <optional>

#include "platform/posix/posix_command_shell.h"
#include "support/wait_until.h"

namespace lumeno {

using namespace std::chrono_literals;

/// A shell without start-up files and a folder for its commands. In the end nothing that was started may run.
class CommandFixture : public testing::Test {
 protected:
  void SetUp() override {
    setlocale(LC_MESSAGES, "C");  // the system's words are compared
    // As in the program.
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    close(nothing);
    qputenv("ZDOTDIR", home_.path().toUtf8());
    mark_ = QUuid::createUuid().toByteArray();
    qputenv("LUMENO_TEST_MARK", mark_);
  }
  void TearDown() override { expectNothingRuns(); }

  /// A limit that a command surely reaches with its first words behind it, on a busy machine too.
  std::chrono::milliseconds shortLimit() {
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(run(QStringLiteral("true")).exitCode, 0);
    return std::max<std::chrono::milliseconds>(400ms, 10 * std::chrono::milliseconds(timer.elapsed()));
  }

  CommandEnd run(const QString& command, std::chrono::milliseconds limit = 60s) {
    return runIn(shell, folder(), command, limit);
  }

  CommandEnd runIn(PosixCommandShell& shell, const QByteArray& folder, const QString& command,
                   std::chrono::milliseconds limit = 60s) {
    std::optional<CommandEnd> end;
    const Job job = shell.run(command, folder, limit, [&](CommandEnd value) {
      EXPECT_FALSE(end) << "answered twice";
      end = std::move(value);
    });
    EXPECT_FALSE(end) << "answered before the call returned";
    EXPECT_TRUE(waitUntil([&] { return end.has_value(); }, limit + 20s));
    return end.value_or(CommandEnd{});
  }

  [[nodiscard]] QByteArray folder() const { return QFile::encodeName(folder_.path()); }
  [[nodiscard]] bool exists(const QString& name) const { return QFile::exists(folder_.filePath(name)); }
  [[nodiscard]] QByteArray content(const QString& name) const {
    QFile file(folder_.filePath(name));
    return file.open(QFile::ReadOnly) ? file.readAll().trimmed() : QByteArray();
  }

  void expectNothingRuns() const {
    if (waitUntil([this] { return runningProcesses().empty(); })) return;
    for (const auto& [process, name] : runningProcesses()) {
      ADD_FAILURE() << name.toStdString() << " still runs";
      kill(process, SIGKILL);
    }
  }

  PosixCommandShell shell{QStringLiteral(LUMENO_SUPERVISOR)};

 private:
  /// What carries this test's mark in its environment: commands and supervisors.
  [[nodiscard]] std::vector<std::pair<pid_t, QByteArray>> runningProcesses() const {
    std::vector<std::pair<pid_t, QByteArray>> found;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
      const pid_t process = name.toInt();
      if (process <= 0 || process == getpid()) continue;
      const auto read = [&name](const QString& file) {
        QFile opened(QStringLiteral("/proc/%1/%2").arg(name, file));
        return opened.open(QFile::ReadOnly) ? opened.readAll() : QByteArray();
      };
      if (read(QStringLiteral("environ")).contains(mark_)) {
        found.emplace_back(process, read(QStringLiteral("cmdline")).replace('\0', ' '));
      }
    }
    return found;
  }

  QTemporaryDir folder_;
  QTemporaryDir home_;
  QByteArray mark_;
};

}  // namespace lumeno
