// How commands are stopped, and what becomes of them when nobody listens any more.

#include <QProcess>

#include "command_fixture.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using Kind = CommandEnd::Kind;

using CommandStop = CommandFixture;

TEST_F(CommandStop, HappensAtTheLimitHoweverTheCommandHides) {
  const char* const commands[] = {
      "sleep 120",
      "sleep 120 & sleep 120; wait",
      "trap '' TERM; while :; do sleep 0.1; done",
      "kill -STOP $$",
      "setsid sleep 120 & wait",
      "setsid sh -c \"trap '' TERM; sleep 120; sleep 120\" & exec sleep 120",
      // A daemon: its parents end, it has let go of the streams.
      "sh -c 'setsid sh -c \"sleep 120 >/dev/null 2>&1 </dev/null &\" &'; sleep 120",
      "/usr/bin/python3 -c 'import os,time\nwhile True: os.fork() and os._exit(0)\n' & sleep 120",
      "while :; do sleep 0.01 & done",
      "while :; do echo more >&2; done",
  };
  for (const char* command : commands) {
    SCOPED_TRACE(command);
    // The answer is waited for much less long than any of them would take by itself.
    const CommandEnd end = run(u"echo before; "_s + QString::fromUtf8(command), shortLimit());
    EXPECT_EQ(end.kind, Kind::timedOut);
    EXPECT_TRUE(end.standardOutput.startsWith("before\n")) << end.standardOutput.left(100).toStdString();
    EXPECT_GT(end.exitCode, 0);
    expectNothingRuns();
  }
}

TEST_F(CommandStop, LetsTheCommandTidyUp) {
  const CommandEnd end =
      run(u"trap 'sleep 0.3; echo tidied; exit 0' TERM; while :; do sleep 0.1; done"_s, shortLimit());
  EXPECT_EQ(end.kind, Kind::timedOut);
  EXPECT_EQ(end.standardOutput, "tidied\n");
  EXPECT_EQ(end.exitCode, 128 + SIGTERM) << "a stopped command has not succeeded";
}

TEST_F(CommandStop, HappensWhenTheOutputWouldNotFitIntoMemory) {
  PosixCommandShell small(QStringLiteral(LUMENO_SUPERVISOR),
                          {.availableMemory = [] { return uint64_t{64} << 20; }});
  for (const QString& command : {u"yes"_s, u"yes & exit 0"_s, u"yes | tee /dev/stderr"_s,
                                 u"trap 'echo tidied' TERM; yes & while :; do sleep 0.1; done"_s}) {
    SCOPED_TRACE(command.toStdString());
    const CommandEnd end = runIn(small, folder(), command);
    EXPECT_EQ(end.kind, Kind::tookTooMuch);
    EXPECT_GT(end.exitCode, 0);
    const qsizetype captured = end.standardOutput.size() + end.standardError.size();
    EXPECT_GT(captured, 4 << 20);
    EXPECT_LT(captured, 16 << 20);
    EXPECT_TRUE(end.standardOutput.startsWith("y\ny\n"));
    expectNothingRuns();
  }
  const CommandEnd end = runIn(small, folder(), u"head -c 3000000 /dev/zero"_s);
  EXPECT_EQ(end.kind, Kind::exited);
  EXPECT_EQ(end.standardOutput.size(), 3'000'000);
}

TEST_F(CommandStop, FollowsWhenSomebodyEndsOrPausesTheSupervisor) {
  for (const int signal : {SIGKILL, SIGTERM, SIGSTOP}) {
    SCOPED_TRACE(signal);
    const bool isPaused = signal == SIGSTOP;
    std::optional<CommandEnd> end;
    QFile::remove(QFile::decodeName(folder() + "/supervisor"));
    const Job job =
        shell.run(u"printf start >&2; sleep 120 & echo $PPID > part; mv part supervisor; sleep 120"_s,
                  folder(), isPaused ? std::max<std::chrono::milliseconds>(1s, shortLimit()) : 60s,
                  [&](CommandEnd value) { end = std::move(value); });
    ASSERT_TRUE(waitUntil([&] { return exists(u"supervisor"_s); }));
    const pid_t supervisor = content(u"supervisor"_s).toInt();
    ASSERT_GT(supervisor, 1);
    kill(supervisor, signal);
    ASSERT_TRUE(waitUntil([&] { return end.has_value(); }));
    EXPECT_GT(end->exitCode, 128);
    EXPECT_EQ(end->kind, isPaused ? Kind::timedOut : Kind::stopped);
    EXPECT_EQ(end->problem.isEmpty(), isPaused);
    EXPECT_EQ(end->standardError, "start");
    if (isPaused) kill(supervisor, SIGCONT);
    expectNothingRuns();
  }
}

TEST_F(CommandStop, IsNotCausedByDroppingTheAnswer) {
  // More than the pipes hold, on both: somebody has to go on reading.
  const QString command =
      u"sleep 0.5; head -c 3000000 /dev/zero && head -c 3000000 /dev/zero >&2 && touch written"_s;
  const auto unexpected = [](const CommandEnd&) { ADD_FAILURE() << "answered"; };
  { const Job dropped = shell.run(command, folder(), 60s, unexpected); }
  EXPECT_TRUE(waitUntil([&] { return exists(u"written"_s); }));
  QFile::remove(QFile::decodeName(folder() + "/written"));

  auto second = std::make_unique<PosixCommandShell>(QStringLiteral(LUMENO_SUPERVISOR));
  const Job job = second->run(command, folder(), 60s, unexpected);
  second.reset();
  EXPECT_TRUE(waitUntil([&] { return exists(u"written"_s); }));
}

TEST_F(CommandStop, IsNeitherCausedNorPreventedByTheProgramsEnd) {
  const auto killOwner = [this](const QString& command, int limit) {
    QFile::remove(QFile::decodeName(folder() + "/begun"));
    QProcess owner;
    owner.setProcessChannelMode(QProcess::ForwardedChannels);
    owner.setChildProcessModifier([] { setsid(); });
    owner.start(QStringLiteral(LUMENO_COMMAND_OWNER),
                {QStringLiteral(LUMENO_SUPERVISOR), QFile::decodeName(folder()), QString::number(limit),
                 u"touch begun; "_s + command});
    ASSERT_TRUE(waitUntil([&] { return exists(u"begun"_s); }));
    kill(-static_cast<pid_t>(owner.processId()), SIGKILL);  // and everything in its group
    ASSERT_TRUE(waitUntil([&] { return owner.state() == QProcess::NotRunning; }));
  };
  killOwner(u"sleep 0.5; head -c 3000000 /dev/zero && touch written"_s, 60'000);
  EXPECT_TRUE(waitUntil([&] { return exists(u"written"_s); }));
  expectNothingRuns();
  killOwner(u"trap '' TERM; yes"_s,
            static_cast<int>(std::max<std::chrono::milliseconds>(1s, shortLimit()).count()));
  expectNothingRuns();
}

}  // namespace
}  // namespace lumeno
