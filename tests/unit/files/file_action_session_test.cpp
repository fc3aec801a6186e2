#include "files/file_action_session.h"

#include "file_action_fixture.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using Stage = FileActionSession::Stage;

class FileActionSessionTest : public testing::FileActionTest {
 protected:
  FileActionSessionTest() { ai->elements = {u"ls > a.txt"_s}; }

  template <typename Expected>
  [[nodiscard]] bool isIn() const {
    return std::holds_alternative<Expected>(session->stage.get());
  }
  template <typename Expected>
  [[nodiscard]] bool comesTo() {
    return waitUntil([this] { return isIn<Expected>(); });
  }

  void submit(const QString& request) {
    session->instruction.set(request);
    session->submit();
  }
  void reachPreview(const QString& command) {
    ai->elements = {command};
    submit(u"do it"_s);
    letModelAnswer();
    ASSERT_TRUE(comesTo<Stage::Preview>());
  }
  /// Lets everything that could still come, come.
  void letAllCome() {
    scheduler.advance(1000);
    runFor(std::chrono::milliseconds(50));
    scheduler.advance(1000);
  }

  std::unique_ptr<FileActionSession> session = std::make_unique<FileActionSession>(selection, service());
};

TEST_F(FileActionSessionTest, GoesFromRequestToResult) {
  EXPECT_TRUE(isIn<Stage::Input>());
  submit(u"  list them \n"_s);
  EXPECT_TRUE(isIn<Stage::Planning>());
  letModelAnswer();
  ASSERT_TRUE(comesTo<Stage::Preview>());
  const FileCommand command{u"list them"_s, u"ls > a.txt"_s, fileUrl("/tmp/two words"), {}};
  EXPECT_EQ(std::get<Stage::Preview>(session->stage.get()).command, command);
  EXPECT_EQ(session->instruction.get(), u"  list them \n"_s);

  shell.end.standardOutput = "a.txt\n";
  session->confirm();
  EXPECT_EQ(session->stage.get(), (FileActionSession::StageValue{Stage::Running{command}}));
  scheduler.advance(0);
  ASSERT_TRUE(comesTo<Stage::Result>());
  EXPECT_EQ(std::get<Stage::Result>(session->stage.get()).outcome.stdoutText, u"a.txt\n"_s);
  EXPECT_TRUE(session->cautions().empty());

  session->submit();
  EXPECT_TRUE(isIn<Stage::Planning>());
}

TEST_F(FileActionSessionTest, BlankRequestsChangeNothing) {
  for (const QString& blank : {u""_s, u" \n\t\u00A0"_s}) {
    submit(blank);
    letAllCome();
    EXPECT_TRUE(isIn<Stage::Input>());
  }
  EXPECT_TRUE(ai->made.empty());
  // Nor do they in another stage.
  reachPreview(u"ls"_s);
  submit(u" "_s);
  EXPECT_TRUE(isIn<Stage::Preview>());
}

TEST_F(FileActionSessionTest, FailedPlansAreErrors) {
  ai->available = false;
  submit(u"x"_s);
  scheduler.advance(0);
  EXPECT_EQ(
      session->stage.get(),
      FileActionSession::StageValue{Stage::Error{
          u"The AI backend isn't available. Start Ollama or enable Apple Intelligence in the menu."_s}});
  session->edit();
  EXPECT_TRUE(isIn<Stage::Input>());
  EXPECT_EQ(session->instruction.get(), u"x"_s);
}

TEST_F(FileActionSessionTest, OnlyTheLatestOfTwoPlansIsShown) {
  submit(u"first"_s);
  scheduler.advance(ai->elementTime / 2);
  submit(u"second"_s);
  letAllCome();
  ASSERT_TRUE(comesTo<Stage::Preview>());
  EXPECT_EQ(std::get<Stage::Preview>(session->stage.get()).command.instruction, u"second"_s);
  letAllCome();
  EXPECT_EQ(std::get<Stage::Preview>(session->stage.get()).command.instruction, u"second"_s);
}

TEST_F(FileActionSessionTest, WhatWasLeftDoesNotComeBack) {
  const auto leaving = {&FileActionSession::reset, &FileActionSession::edit, &FileActionSession::abandon};
  for (const auto leave : leaving) {
    // While the model is asked, and while its answer is worked on.
    for (const bool isAnswered : {false, true}) {
      submit(u"x"_s);
      if (isAnswered) letModelAnswer();
      (session.get()->*leave)();
      const auto left = session->stage.get();
      EXPECT_EQ(std::holds_alternative<Stage::Planning>(left), leave == &FileActionSession::abandon);
      EXPECT_EQ(session->instruction.get(), leave == &FileActionSession::reset ? QString() : u"x"_s);
      letAllCome();
      EXPECT_EQ(session->stage.get(), left);
    }
    reachPreview(u"ls"_s);
    session->confirm();
    (session.get()->*leave)();
    const auto left = session->stage.get();
    letAllCome();
    EXPECT_EQ(session->stage.get(), left);
  }
}

TEST_F(FileActionSessionTest, OnlyAnUnblockedPreviewCanBeConfirmed) {
  const auto confirmInVain = [this] {
    const auto stage = session->stage.get();
    const auto runs = shell.commands.size();
    session->confirm();
    EXPECT_EQ(session->stage.get(), stage);
    EXPECT_EQ(shell.commands.size(), runs);
  };
  confirmInVain();
  submit(u"x"_s);
  confirmInVain();
  reachPreview(u"sudo ls"_s);
  EXPECT_TRUE(std::get<Stage::Preview>(session->stage.get()).command.blockedReason);
  confirmInVain();
  reachPreview(u"ls"_s);
  session->confirm();
  EXPECT_EQ(shell.commands.size(), 1u);
  confirmInVain();
  scheduler.advance(0);
  ASSERT_TRUE(comesTo<Stage::Result>());
  confirmInVain();
  ai->failure = AIFailure::of(AIServiceError::unavailable);
  submit(u"x"_s);
  letModelAnswer();
  ASSERT_TRUE(isIn<Stage::Error>());
  confirmInVain();
}

TEST_F(FileActionSessionTest, ObserversMayActAtOnce) {
  // An observer that leaves the planning as soon as it begins, and one that drops the session.
  auto subscription = session->stage.subscribe([this](const auto& stage) {
    if (std::holds_alternative<Stage::Planning>(stage)) session->reset();
  });
  submit(u"x"_s);
  letAllCome();
  EXPECT_TRUE(isIn<Stage::Input>());
  subscription.reset();

  subscription = session->stage.subscribe([this](const auto& stage) {
    if (std::holds_alternative<Stage::Preview>(stage)) session.reset();
  });
  submit(u"x"_s);
  letModelAnswer();
  EXPECT_TRUE(waitUntil([this] { return !session; }));
}

}  // namespace
}  // namespace lumeno
