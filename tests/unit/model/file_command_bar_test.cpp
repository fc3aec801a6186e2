#include <gtest/gtest.h>

#include "support/wait_until.h"
#include "unit/model/app_model_fixture.h"

namespace lumeno {
namespace {

const RunningApplication files{u"com.apple.finder"_s, u"Files"_s, 9, 90, false};
constexpr Rect window{50, 60, 700, 400};
constexpr Rect bottomEdge{50, 459, 700, 1};
constexpr int twoPolls = 1300;

std::vector<QUrl> urls(std::initializer_list<const char*> paths) {
  std::vector<QUrl> list;
  for (const char* path : paths) list.push_back(fileUrl(path));
  return list;
}

class FileCommandBarTest : public AppModelTest {
 protected:
  FileCommandBarTest() {
    settings.hasCompletedOnboarding.set(true);
    fileManager.frame = window;
    workspace.activate(files);
  }
  void selectFiles(std::initializer_list<const char*> paths) {
    fileManager.selected = urls(paths);
    scheduler.advance(twoPolls);
  }
  [[nodiscard]] std::shared_ptr<FileActionSession> session() const { return model->fileSession.get(); }
  [[nodiscard]] bool isOpen() const { return session() != nullptr && panel.shown.has_value(); }
};

TEST_F(FileCommandBarTest, SelectedItemsOpenItBelowTheWindowWithoutTheKeyboard) {
  selectFiles({"/home/a/one.png", "/home/a/two.png"});
  ASSERT_TRUE(isOpen());
  EXPECT_EQ(session()->selection.itemNames(), QStringList({u"one.png"_s, u"two.png"_s}));
  EXPECT_EQ(panel.shown, (FakeHUDPresenter::Shown{bottomEdge, true, true, false}));
  EXPECT_EQ(model->menuBarSymbol(), u"folder.badge.gearshape"_s);
}

TEST_F(FileCommandBarTest, TheSameItemsKeepItAndOthersOpenItAfresh) {
  selectFiles({"/home/a/one", "/home/a/two"});
  const auto first = session();
  first->instruction.set(u"zip"_s);
  model->handleFileSelection(FileSelection{urls({"/home/a/one", "/home/a/two"}), u"Finder"_s, {}});
  EXPECT_EQ(session(), first);
  selectFiles({"/home/a/two", "/home/a/one"});
  ASSERT_TRUE(isOpen());
  EXPECT_NE(session(), first);
  EXPECT_EQ(session()->instruction.get(), QString());
  selectFiles({});
  EXPECT_FALSE(isOpen());
  EXPECT_FALSE(panel.shown);
}

TEST_F(FileCommandBarTest, TextSelectedElsewhereClosesItAndBlankTextDoesNot) {
  selectFiles({"/home/a/one"});
  model->handleSelection(std::nullopt);
  model->handleSelection(Selection{u"  "_s, u"Files"_s, place});
  EXPECT_TRUE(isOpen());
  model->handleSelection(Selection{u"serendipity"_s, u"Notes"_s, place});
  EXPECT_FALSE(session());
  EXPECT_FALSE(panel.shown) << "the card of nothing in the meantime";
  scheduler.advance(settle);
  EXPECT_TRUE(panel.shown);
  EXPECT_TRUE(model->selection.get());
  EXPECT_TRUE(model->isHintCollapsed.get());
}

TEST_F(FileCommandBarTest, FollowsItsSwitchAndTheWelcome) {
  struct Switch {
    std::function<void(bool)> set;
  };
  for (const Switch& flag : {Switch{[this](bool on) { settings.fileActionsEnabled.set(on); }},
                             Switch{[this](bool on) { settings.hasCompletedOnboarding.set(on); }}}) {
    selectFiles({"/home/a/one"});
    ASSERT_TRUE(isOpen());
    flag.set(false);
    EXPECT_FALSE(session());
    EXPECT_FALSE(panel.shown);
    const size_t reads = fileManager.reads.size();
    scheduler.advance(twoPolls);
    EXPECT_EQ(fileManager.reads.size(), reads) << "still polling";
    flag.set(true);
    scheduler.advance(twoPolls);
    EXPECT_TRUE(isOpen());
  }
}

TEST_F(FileCommandBarTest, SummonPrefersFilesAndTakesTheKeyboard) {
  fileManager.selected = urls({"/home/a/one"});
  model->summon();
  EXPECT_TRUE(model->isCapturing.get());
  scheduler.advance(50);
  ASSERT_TRUE(isOpen());
  EXPECT_FALSE(model->isCapturing.get());
  EXPECT_EQ(panel.shown, (FakeHUDPresenter::Shown{bottomEdge, true, true, true}));
  const auto opened = session();
  scheduler.advance(twoPolls);
  EXPECT_EQ(session(), opened) << "a poll announced what the summon had found";
}

TEST_F(FileCommandBarTest, SummonReadsTextWhereThereAreNoFilesToActOn) {
  element->text = u"serendipity"_s;
  model->summon();
  scheduler.advance(50);
  EXPECT_FALSE(session());
  EXPECT_EQ(model->selection.get()->text, u"serendipity"_s);

  model->dismiss();
  settings.fileActionsEnabled.set(false);
  fileManager.selected = urls({"/home/a/one"});
  fileManager.reads.clear();
  model->summon();
  scheduler.advance(50);
  EXPECT_FALSE(session());
  EXPECT_TRUE(fileManager.reads.empty());
  EXPECT_EQ(model->selection.get()->text, u"serendipity"_s);
}

TEST_F(FileCommandBarTest, ClosingDropsThePlanAndLeavesARunningCommandAlone) {
  ai->elements = {u"ls -l"_s};
  selectFiles({"/home/a/one"});
  const auto planned = session();
  planned->instruction.set(u"list"_s);
  planned->submit();
  model->dismiss();
  scheduler.advance(1000);
  EXPECT_TRUE(std::holds_alternative<FileActionSession::Stage::Planning>(planned->stage.get()));

  shell.answerTime = std::chrono::milliseconds(500);
  model->handleFileSelection(FileSelection{urls({"/home/a/one"}), u"Finder"_s, {}});
  const auto running = session();
  running->instruction.set(u"list"_s);
  running->submit();
  scheduler.advance(ai->elementTime);
  ASSERT_TRUE(waitUntil([&] {  // a worker looks at the command, against a deadline: the clock stands still
    return std::holds_alternative<FileActionSession::Stage::Preview>(running->stage.get());
  }));
  running->confirm();
  ASSERT_EQ(shell.commands.size(), 1U);
  model->dismiss();
  scheduler.advance(1000);
  EXPECT_TRUE(std::holds_alternative<FileActionSession::Stage::Running>(running->stage.get()));
  EXPECT_FALSE(model->fileSession.get());
}

}  // namespace
}  // namespace lumeno
