// What is told of commands that end by themselves or cannot be started.

#include <sys/resource.h>
#include <sys/stat.h>

#include "command_fixture.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using Kind = CommandEnd::Kind;

using CommandAnswers = CommandFixture;

TEST_F(CommandAnswers, TellStatusAndBothStreams) {
  const int leaked = fcntl(STDERR_FILENO, F_DUPFD, 50);  // open also in programs that are started
  sigset_t blocked, before;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR1);
  pthread_sigmask(SIG_BLOCK, &blocked, &before);
  signal(SIGPIPE, SIG_IGN);
  const struct {
    const char* command;
    const char* output;
    const char* errorPart;
    int exitCode;
  } cases[] = {
      {"echo hello", "hello\n", "", 0},
      {"ls missing", "", "missing", 2},
      {"exit 3", "", "", 3},
      {"kill -KILL $$", "", "", 128 + SIGKILL},
      {"cat; echo end", "end\n", "", 0},  // standard input is empty
      {"mkdir 'a b' && cd \"a b\" && print -r -- ${PWD:t} | tr a-z A-Z", "A B\n", "", 0},
      {"[[ -o login ]] && print -r -- \"two  blanks\" $0", "two  blanks /bin/zsh\n", "", 0},
      {"ls /proc/self/fd | tr '\\n' ' '", "0 1 2 3 ", "", 0},  // 3 is the folder that ls reads
      // Signals 32 and 33 are the C library's own.
      {"grep -hE '^Sig(Blk|Ign)' /proc/self/status | tr -d '\\t' | sed 's/180000000$/000000000/'",
       "SigBlk:0000000000000000\nSigIgn:0000000000000000\n", "", 0},
      {"ps -o sid=,pgid= -p $$ | read -r session group; (( session == $$ && group == $$ ))", "", "", 0},
      {"print -u2 é", "", "é", 0},
  };
  for (const auto& [command, output, errorPart, exitCode] : cases) {
    SCOPED_TRACE(command);
    const CommandEnd end = run(QString::fromUtf8(command));
    EXPECT_EQ(end.kind, Kind::exited);
    EXPECT_EQ(end.standardOutput.toStdString(), output);
    EXPECT_TRUE(end.standardError.contains(errorPart)) << end.standardError.toStdString();
    EXPECT_EQ(end.standardError.isEmpty(), *errorPart == '\0') << end.standardError.toStdString();
    EXPECT_EQ(end.exitCode, exitCode);
    EXPECT_EQ(end.problem, QString());
  }
  signal(SIGPIPE, SIG_DFL);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  close(leaked);
}

TEST_F(CommandAnswers, CommandsRunInTheirFolder) {
  for (const char* name : {"two  blanks", "gr\xc3\xbc\xc3\x9f", "not\xff\xfeutf8", "-n", "$HOME"}) {
    const QByteArray path = folder() + '/' + name;
    ASSERT_EQ(mkdir(path.constData(), 0700), 0);
    EXPECT_EQ(runIn(shell, path, u"/bin/pwd"_s).standardOutput.toStdString(), path.toStdString() + '\n');
    rmdir(path.constData());
  }
}

TEST_F(CommandAnswers, KeepEverythingThatBothStreamsCarry) {
  const CommandEnd end = run(u"head -c 8000000 /dev/zero & head -c 7000000 /dev/zero >&2; wait; echo end"_s);
  EXPECT_TRUE(end.standardOutput == QByteArray(8'000'000, '\0') + "end\n");
  EXPECT_TRUE(end.standardError == QByteArray(7'000'000, '\0'));
}

TEST_F(CommandAnswers, SayWhyACommandDidNotStart) {
  const QByteArray file = folder() + "/file";
  EXPECT_TRUE(QFile(QFile::decodeName(file)).open(QFile::WriteOnly));
  const QString supervisor = QStringLiteral(LUMENO_SUPERVISOR);
  PosixCommandShell noShell(supervisor, {.shell = "/gone/zsh"});
  PosixCommandShell noRight(supervisor, {.shell = file});
  PosixCommandShell noSupervisor(u"/gone/lumeno-supervisor"_s);
  const QString echo = u"echo hello"_s;
  const struct {
    PosixCommandShell& shell;
    QByteArray folder;
    QString command;
    QStringList parts;
  } cases[] = {
      {shell, "/gone\xff", echo, {u"The folder “/gone"_s, u"No such file or directory"_s}},
      {shell, file, echo, {u"The folder"_s, QFile::decodeName(file), u"Not a directory"_s}},
      {noShell, folder(), echo, {u"“/gone/zsh”"_s, u"No such file or directory"_s}},
      {noRight, folder(), echo, {QFile::decodeName(file), u"Permission denied"_s}},
      {noSupervisor, folder(), echo, {u"“/gone/lumeno-supervisor”"_s, u"No such file or directory"_s}},
      {shell, folder(), u"echo "_s + QString(300'000, u'x'), {u"Argument list too long"_s}},
      {shell, folder(), u"rm x"_s + QChar(0) + u"y"_s, {u"characters"_s}},
      {shell, folder(), u"rm "_s + QChar(0xd800), {u"characters"_s}},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.parts.join(u' ').toStdString());
    const CommandEnd end = runIn(test.shell, test.folder, test.command);
    EXPECT_EQ(end.kind, Kind::notStarted);
    EXPECT_EQ(end.exitCode, -1);
    EXPECT_TRUE(end.standardOutput.isEmpty() && end.standardError.isEmpty());
    for (const QString& part : test.parts)
      EXPECT_TRUE(end.problem.contains(part)) << end.problem.toStdString();
  }
}

TEST_F(CommandAnswers, SayThatDescriptorsOrProcessesHaveRunOut) {
  rlimit before{};
  getrlimit(RLIMIT_NOFILE, &before);
  const rlimit none{3, before.rlim_max};
  setrlimit(RLIMIT_NOFILE, &none);
  const CommandEnd end = run(u"echo hello"_s);
  setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(end.kind, Kind::notStarted);
  EXPECT_EQ(end.problem, u"No process can be started: Too many open files"_s);
}

TEST_F(CommandAnswers, DoNotWaitLongForAProgramThatTheCommandOpened) {
  // It outlives the limit too, since the shell ended before, and may still write to its streams.
  const CommandEnd end =
      run(u"(sleep 4; echo late && echo late >&2 && touch written) & echo started"_s, 1500ms);
  EXPECT_FALSE(exists(u"written"_s));
  EXPECT_EQ(end.kind, Kind::exited);
  EXPECT_EQ(end.standardOutput, "started\n");
  EXPECT_EQ(end.exitCode, 0);
  EXPECT_TRUE(waitUntil([&] { return exists(u"written"_s); }));
}

TEST_F(CommandAnswers, CommandsThatEndAtTheirLimitHaveOneAnswer) {
  constexpr int count = 16;
  std::vector<Job> jobs;
  std::vector<CommandEnd> ends;
  for (int i = 0; i < count; ++i) {
    jobs.push_back(shell.run(u"sleep 0.4"_s, folder(), 400ms + i * 5ms,
                             [&](CommandEnd end) { ends.push_back(std::move(end)); }));
  }
  EXPECT_TRUE(waitUntil([&] { return ends.size() == count; }));
  for (const CommandEnd& end : ends) {
    EXPECT_TRUE(end.kind == Kind::exited || end.kind == Kind::timedOut);
    EXPECT_EQ(end.exitCode == 0, end.kind == Kind::exited);
  }
}

}  // namespace
}  // namespace lumeno
