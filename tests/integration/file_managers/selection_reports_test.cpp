#include "platform/file_managers/selection_reports.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QProcess>

#include "records/file_selection.h"
#include "support/wait_until.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

using Files = std::optional<std::vector<QByteArray>>;

/// A file manager's own connection to the bus.
class Reporter {
 public:
  explicit Reporter(const QString& name)
      : name_(name), bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)) {}
  ~Reporter() { QDBusConnection::disconnectFromBus(name_); }

  void report(const QStringList& uris, qulonglong window) {
    auto message = QDBusMessage::createMethodCall(QDBusConnection::sessionBus().baseService(),
                                                  u"/org/lumeno/FileSelection"_s,
                                                  u"org.lumeno.FileSelection"_s, u"ReportFiles"_s);
    message.setArguments({uris, QVariant::fromValue(window)});
    ASSERT_TRUE(bus_.send(message));
  }
  /// Returns when all that was sent has reached the bus.
  void flush() { ASSERT_TRUE(bus_.interface()->isServiceRegistered(u"org.freedesktop.DBus"_s)); }
  [[nodiscard]] QString address() const { return bus_.baseService(); }

 private:
  QString name_;
  QDBusConnection bus_;
};

class SelectionReportsTest : public testing::Test {
 protected:
  [[nodiscard]] Files known(ProcessId process, uint64_t window) const {
    const auto urls = reports.selection(process, window);
    if (!urls) return std::nullopt;
    std::vector<QByteArray> paths;
    for (const QUrl& url : *urls) paths.push_back(localPath(url));
    return paths;
  }
  /// What is known once it is as expected, or when it never becomes so.
  [[nodiscard]] Files knownInTheEnd(ProcessId process, uint64_t window, const Files& expected) const {
    (void)waitUntil([&] { return known(process, window) == expected; });
    return known(process, window);
  }

  const ProcessId ownProcess = getpid();
  SelectionReports reports;
};

TEST_F(SelectionReportsTest, WhatIsReportedIsKnown) {
  Reporter reporter(u"a file manager"_s);
  const Files before{{"/d/before"}};
  const Files nothing{std::vector<QByteArray>()};
  const struct {
    const char* what;
    QStringList uris;
    qulonglong window;
    Files expected;        ///< for window 5
    Files expectedBeside;  ///< for window 6
  } cases[] = {
      {"in their order", {u"file:///d/b%FF"_s, u"file:///d/a"_s}, 5, {{"/d/b\xFF", "/d/a"}}, before},
      {"nothing", {}, 5, nothing, before},
      {"one that is not local", {u"file:///d/a"_s, u"trash:///b"_s}, 5, nothing, before},
      {"of several folders", {u"file:///d/a"_s, u"file:///d/c/a"_s}, 5, nothing, before},
      {"too many", QStringList(100'001, u"file:///d/a"_s), 5, std::nullopt, before},
      {"no window", {u"file:///d/a"_s}, 0, std::nullopt, std::nullopt},
  };
  for (const auto& c : cases) {
    for (const qulonglong window : {6, 5}) reporter.report({u"file:///d/before"_s}, window);
    EXPECT_EQ(knownInTheEnd(ownProcess, 5, before), before) << c.what;
    EXPECT_EQ(known(ownProcess, 6), before) << c.what;
    reporter.report(c.uris, c.window);
    EXPECT_EQ(knownInTheEnd(ownProcess, 5, c.expected), c.expected) << c.what;
    EXPECT_EQ(known(ownProcess, 6), c.expectedBeside) << c.what;
  }
}

TEST_F(SelectionReportsTest, EachProcessSpeaksForItself) {
  Reporter reporter(u"a file manager"_s);
  QProcess other;
  other.setStandardErrorFile(QProcess::nullDevice());
  other.start(u"gdbus"_s,
              {u"call"_s, u"--session"_s, u"--dest"_s, QDBusConnection::sessionBus().baseService(),
               u"--object-path"_s, u"/org/lumeno/FileSelection"_s, u"--method"_s,
               u"org.lumeno.FileSelection.ReportFiles"_s, u"['file:///d/theirs']"_s, u"7"_s});
  ASSERT_TRUE(other.waitForStarted());
  const auto process = static_cast<ProcessId>(other.processId());
  const Files theirs{{"/d/theirs"}};
  EXPECT_EQ(knownInTheEnd(process, 7, theirs), theirs);
  EXPECT_EQ(known(ownProcess, 7), std::nullopt);
  reporter.report({u"file:///d/ours"_s}, 8);
  const Files ours{{"/d/ours"}};
  EXPECT_EQ(knownInTheEnd(ownProcess, 8, ours), ours);
  for (const auto& [uris, window] :
       {std::pair(QStringList(), 0), {QStringList(100'001, u"file:///d/a"_s), 7}}) {
    reporter.report(uris, static_cast<qulonglong>(window));
    reporter.report({u"file:///d/ours"_s}, 9);
    EXPECT_EQ(knownInTheEnd(ownProcess, 9, ours), ours);
    EXPECT_EQ(known(process, 7), theirs);
  }
  EXPECT_EQ(known(ownProcess, 8), std::nullopt);
  other.kill();
  other.waitForFinished();
}

TEST_F(SelectionReportsTest, OneWhoseProcessCannotBeToldMakesTheWindowUnknown) {
  Reporter reporter(u"a file manager"_s);
  reporter.report({u"file:///d/a"_s}, 5);
  const Files expected{{"/d/a"}};
  ASSERT_EQ(knownInTheEnd(ownProcess, 5, expected), expected);
  QString address;
  {
    Reporter brief(u"gone again"_s);
    brief.report({u"file:///d/b"_s}, 5);
    brief.flush();
    address = brief.address();
  }
  // Blocks, so that the report is looked at only when its sender has gone.
  while (QDBusConnection::sessionBus().interface()->isServiceRegistered(address)) usleep(1000);
  EXPECT_EQ(knownInTheEnd(ownProcess, 5, std::nullopt), std::nullopt);
}

}  // namespace
}  // namespace lumeno
