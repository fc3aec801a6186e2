#include "files/file_action_service.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include "file_action_fixture.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

class FileActionServiceTest : public testing::FileActionTest {
 protected:
  using Answer = std::variant<CommandPlan, QString>;

  Answer planned(const QString& modelAnswer) {
    ai->elements = {modelAnswer};
    return planned(service());
  }
  Answer planned(const FileActionService& planner) {
    std::optional<Answer> answer;
    const Job job = planner.plan(u"zip them"_s, selection, [&](Answer given) { answer = std::move(given); });
    EXPECT_FALSE(answer);
    letModelAnswer();
    EXPECT_TRUE(waitUntil([&] { return answer.has_value(); }));
    return answer.value_or(Answer());
  }

  FileActionOutcome outcomeOf(const CommandEnd& end) {
    shell.end = end;
    std::optional<FileActionOutcome> outcome;
    const Job job = service().run({u"zip"_s, u"zip a"_s, fileUrl("/d/\xFF \xC3\xBC"), {}},
                                  [&](FileActionOutcome given) { outcome = std::move(given); });
    scheduler.advance(0);
    EXPECT_TRUE(waitUntil([&] { return outcome.has_value(); }));
    return outcome.value_or(FileActionOutcome());
  }
};

TEST_F(FileActionServiceTest, PlansTheCleanedCommandInTheItemsFolder) {
  const Answer answer = planned(u"```zsh\nzip a.zip a.txt b.txt\n```"_s);
  ASSERT_TRUE(std::holds_alternative<CommandPlan>(answer));
  EXPECT_EQ(std::get<CommandPlan>(answer).command,
            (FileCommand{u"zip them"_s, u"zip a.zip a.txt b.txt"_s, fileUrl("/tmp/two words"), {}}));
  ASSERT_EQ(ai->made.size(), 1u);
  EXPECT_EQ(ai->made[0], (std::pair{AIBackend::ollama, u"qwen"_s}));
  ASSERT_EQ(ai->prompts.size(), 1u);
  EXPECT_TRUE(ai->prompts[0].contains(u"set to:\n/tmp/two words\n"_s));
  EXPECT_TRUE(ai->prompts[0].endsWith(u"User request: zip them"_s));
}

TEST_F(FileActionServiceTest, TellsWhyThereIsNoPlan) {
  EXPECT_EQ(planned(u"```\n```"_s),
            Answer(u"The model didn't return a command. Try rephrasing the request."_s));
  ai->failure = AIFailure{std::nullopt, u"Connection refused"_s};
  EXPECT_EQ(planned(service()), Answer(u"Connection refused"_s));
  ai->failure = AIFailure::of(AIServiceError::empty);
  EXPECT_EQ(planned(service()), Answer(u"The model returned an empty response."_s));
  ai->available = false;
  EXPECT_EQ(
      planned(service()),
      Answer(u"The AI backend isn't available. Start Ollama or enable Apple Intelligence in the menu."_s));
  EXPECT_EQ(ai->prompts.size(), 3u);  // one that is not available is not asked
}

TEST_F(FileActionServiceTest, BlocksOrCautions) {
  const auto blocked = std::get<CommandPlan>(planned(u"sudo rm a.txt"_s));
  EXPECT_EQ(blocked.command.blockedReason,
            u"This command was blocked because it runs with administrator privileges (sudo)."_s);
  EXPECT_TRUE(blocked.cautions.empty());

  const QTemporaryDir folder;
  QFile kept(folder.filePath(u"kept.txt"_s));
  ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
  selection = {{fileUrl(kept.fileName().toUtf8())}, {}, {}};
  const QString command = u"ls > kept.txt"_s;
  const auto expected = cautions(command, {folder.path(), QDir::homePath(),
                                           [](const QString& path) { return QFileInfo::exists(path); }});
  EXPECT_FALSE(expected.empty());
  EXPECT_EQ(std::get<CommandPlan>(planned(command)).cautions, expected);
}

/// A clock on which the time for the cautions is over before they can be told.
class HurriedScheduler final : public Scheduler {
 public:
  Job after(std::chrono::milliseconds delay, std::function<void()> action) override {
    EXPECT_EQ(delay, std::chrono::milliseconds(500));
    const auto isWanted = std::make_shared<bool>(true);
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [isWanted, action = std::move(action)] {
          if (*isWanted) action();
        },
        Qt::QueuedConnection);
    return Job([isWanted] { *isWanted = false; });
  }
  Job every(std::chrono::milliseconds, std::function<void()>) override { return {}; }
};

TEST_F(FileActionServiceTest, LateCautionsDoNotHoldUpThePlan) {
  ai->elements = {u"ls > kept.txt"_s};
  HurriedScheduler hurried;
  const auto plan = std::get<CommandPlan>(planned(service(hurried)));
  EXPECT_EQ(plan.command.command, u"ls > kept.txt"_s);
  ASSERT_EQ(plan.cautions.size(), 1u);
  EXPECT_EQ(plan.cautions[0], (Caution{u"What this command touches could not be checked in time."_s, 0, 0}));
}

TEST_F(FileActionServiceTest, InAFolderWhoseNameIsNoTextNothingIsChecked) {
  selection = {{fileUrl("/tmp/\xFF/a.txt")}, {}, {}};
  const auto plan = std::get<CommandPlan>(planned(u"ls > kept.txt"_s));
  ASSERT_EQ(plan.cautions.size(), 1u);
  EXPECT_EQ(plan.cautions[0], (Caution{u"What this command touches could not be checked."_s, 0, 0}));
}

TEST_F(FileActionServiceTest, OutcomeTellsHowTheCommandEnded) {
  using Kind = CommandEnd::Kind;
  struct Case {
    CommandEnd end;
    FileActionOutcome outcome;
  };
  const Case cases[] = {
      {{Kind::exited, "h\xC3\xA9\n", "w\n", 3, {}}, {u"zip a"_s, u"hé\n"_s, u"w\n"_s, 3, false}},
      {{Kind::exited, "ok\xC3", "w", 0, {}}, {u"zip a"_s, {}, u"w"_s, 0, false}},
      {{Kind::exited, "ok", "\xFF", 1, {}}, {u"zip a"_s, u"ok"_s, {}, 1, false}},
      {{Kind::exited, QByteArray("a\0b", 3), "\xEF\xBB\xBF", 0, {}},
       {u"zip a"_s, QString::fromUtf16(u"a\0b", 3), u"\uFEFF"_s, 0, false}},
      {{Kind::notStarted, {}, {}, 0, u"No such file or directory"_s},
       {u"zip a"_s, {}, u"Couldn’t start the command: No such file or directory"_s, -1, false}},
      {{Kind::timedOut, "part", "lost", 143, {}},
       {u"zip a"_s, u"part"_s, u"Command timed out after 60s and was stopped."_s, 143, true}},
      {{Kind::timedOut, {}, {}, 0, {}},
       {u"zip a"_s, {}, u"Command timed out after 60s and was stopped."_s, 143, true}},
      {{Kind::stopped, "part", "lost", 0, u"Somebody ended it."_s},
       {u"zip a"_s, u"part"_s, u"Somebody ended it."_s, 143, true}},
      {{Kind::tookTooMuch, "y\n", "lost", 137, {}},
       {u"zip a"_s, u"y\n"_s, u"Command was stopped: it wrote more output than memory can hold."_s, 137,
        true}},
  };
  for (const Case& c : cases) EXPECT_EQ(outcomeOf(c.end), c.outcome) << c.outcome.stderrText.toStdString();
  EXPECT_EQ(shell.commands[0].command, u"zip a"_s);
  EXPECT_EQ(shell.commands[0].workingDirectory, "/d/\xFF \xC3\xBC");
  EXPECT_EQ(shell.commands[0].limit, std::chrono::seconds(60));
}

TEST_F(FileActionServiceTest, NothingIsToldOnceTheHandleHasGone) {
  ai->elements = {u"ls"_s};
  int answers = 0;
  // Dropped while the model is asked, and while the answer is worked on.
  for (const bool isAnswered : {false, true}) {
    Job job = service().plan(u"x"_s, selection, [&](const auto&) { ++answers; });
    if (isAnswered) letModelAnswer();
    job.cancel();
    letModelAnswer();
  }
  for (const bool hasEnded : {false, true}) {
    Job job = service().run({}, [&](const auto&) { ++answers; });
    if (hasEnded) scheduler.advance(0);
    job.cancel();
    scheduler.advance(0);
  }
  runFor(std::chrono::milliseconds(50));
  EXPECT_EQ(answers, 0);
  EXPECT_EQ(scheduler.pendingCount(), 0u);
}

}  // namespace
}  // namespace lumeno
