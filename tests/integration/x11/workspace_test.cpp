#include "platform/x11/x11_workspace.h"

#include <QDir>
#include <QFile>
#include <QWindow>

#include "desktop_fixture.h"
#include "support/manual_scheduler.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

class WorkspaceTest : public DesktopTest {
 protected:
  QString frontId() {
    return workspace.frontmostApplication()
        .value_or(RunningApplication())
        .bundleIdentifier.value_or(QString());
  }
  bool waitForId(const QString& id) {
    return waitFor([&] { return frontId() == id; });
  }
  static void writeEntry(const QString& id, const QByteArray& content) {
    const QString folder = qEnvironmentVariable("XDG_DATA_HOME") + "/applications"_L1;
    QDir().mkpath(folder);
    QFile file(folder + u'/' + id + ".desktop"_L1);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Desktop Entry]\nType=Application\n" + content);
  }
  const bool entriesWritten = [] {
    writeEntry(u"com.example.Notes"_s, "Name=Sample Notes\nStartupWMClass=sample-notes\n");
    writeEntry(u"sampleterm"_s, "Name=Sample Terminal\nCategories=System;TerminalEmulator;\n");
    return true;
  }();
  X11Workspace workspace{*connection, ownWindows, scheduler};
};

TEST_F(WorkspaceTest, NamesTheApplicationOfTheActiveWindow) {
  const auto notes = stranger.window(QByteArrayLiteral("sample-notes\0Sample-notes\0"));
  ASSERT_TRUE(waitForId(u"com.example.Notes"_s));
  auto front = workspace.frontmostApplication();
  EXPECT_EQ(front->localizedName, u"Sample Notes"_s);
  EXPECT_EQ(front->window, notes);
  EXPECT_EQ(front->processIdentifier, QCoreApplication::applicationPid())
      << "by the connection, no property set";
  EXPECT_FALSE(front->isTerminal);

  stranger.window(QByteArrayLiteral("sampleterm\0Sampleterm\0"));
  ASSERT_TRUE(waitForId(u"sampleterm"_s));
  EXPECT_TRUE(workspace.frontmostApplication()->isTerminal);

  stranger.window(QByteArrayLiteral("chromium\0Chromium\0"));
  ASSERT_TRUE(waitForId(u"com.google.Chrome"_s));

  stranger.window(QByteArrayLiteral("mystery\0Mystery\0"));
  ASSERT_TRUE(waitForId(u"Mystery"_s));
  EXPECT_EQ(workspace.frontmostApplication()->localizedName, u"Mystery"_s);

  const auto nameless = stranger.window({});
  ASSERT_TRUE(waitFor([&] { return workspace.frontmostApplication()->window == nameless; }));
  EXPECT_TRUE(workspace.frontmostApplication()->bundleIdentifier.has_value());
}

TEST_F(WorkspaceTest, KnowsWhatIsInstalledLater) {
  ManualScheduler clock;
  X11Workspace observed(*connection, ownWindows, clock);
  const auto name = [&] {
    const auto front = observed.frontmostApplication();
    return front ? front->localizedName.value_or(QString()) : QString();
  };
  const auto show = [&] { return stranger.window(QByteArrayLiteral("latecomer\0Latecomer\0")); };
  stranger.window(QByteArrayLiteral("sample-notes\0Sample-notes\0"));
  ASSERT_TRUE(waitFor([&] { return name() == u"Sample Notes"_s; })) << "the entries have been read";
  auto window = show();
  ASSERT_TRUE(waitFor([&] { return name() == u"Latecomer"_s; }));
  writeEntry(u"latecomer"_s, "Name=Late Comer\n");
  stranger.destroy(window);
  ASSERT_TRUE(waitFor([&] { return name() == u"Sample Notes"_s; }));
  window = show();
  ASSERT_TRUE(waitFor([&] { return observed.frontmostApplication()->window == window; }));
  runFor(200);
  EXPECT_EQ(name(), u"Latecomer"_s) << "read again once a minute at most";
  stranger.destroy(window);
  ASSERT_TRUE(waitFor([&] { return name() == u"Sample Notes"_s; }));
  clock.advance(60'000);
  show();
  EXPECT_TRUE(waitFor([&] { return name() == u"Late Comer"_s; }));
}

TEST_F(WorkspaceTest, TellsOfEachSwitchOnce) {
  const auto first = stranger.window(QByteArrayLiteral("one\0One\0"));
  ASSERT_TRUE(waitForId(u"One"_s));
  runFor(200);  // the installed applications have been read by now
  std::vector<uint64_t> windows;
  const auto subscription = workspace.onActivation(
      [&](const auto& application) { windows.push_back(application ? application->window : 0); });
  const auto second = stranger.window(QByteArrayLiteral("one\0One\0"), 400);
  ASSERT_TRUE(waitFor([&] { return windows == std::vector<uint64_t>{second}; }))
      << "another window of the same";
  stranger.destroy(second);
  ASSERT_TRUE(waitFor([&] { return windows.size() == 2; }));
  EXPECT_EQ(windows[1], first) << "without a gap in between";
}

TEST_F(WorkspaceTest, ALastWindowThatIsGoneCountsForHalfASecond) {
  const auto window = stranger.window(QByteArrayLiteral("one\0One\0"));
  ASSERT_TRUE(waitForId(u"One"_s));
  QElapsedTimer clock;
  clock.start();
  stranger.destroy(window);
  ASSERT_TRUE(waitFor([&] { return !workspace.frontmostApplication(); }));
  EXPECT_GE(clock.elapsed(), 450);
}

TEST_F(WorkspaceTest, OwnWindowsAreThisProgram) {
  const auto other = stranger.window(QByteArrayLiteral("one\0One\0"));
  ASSERT_TRUE(waitForId(u"One"_s));
  QWindow window;
  // As the panel: the window manager knows nothing of it, so no window is active while it has the keyboard.
  window.setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
  window.setGeometry(100, 100, 200, 150);
  window.show();
  runFor(100);
  EXPECT_EQ(frontId(), u"One"_s);
  window.requestActivate();
  ASSERT_TRUE(waitForId(u"org.lumeno.Lumeno"_s));
  EXPECT_EQ(workspace.frontmostApplication()->bundleIdentifier, workspace.ownBundleIdentifier());
  runFor(700);
  EXPECT_EQ(frontId(), u"org.lumeno.Lumeno"_s);
  xcb_set_input_focus(stranger.xcb(), XCB_INPUT_FOCUS_PARENT, other, XCB_CURRENT_TIME);
  stranger.sync();
  EXPECT_TRUE(waitForId(u"One"_s));
}

}  // namespace
}  // namespace lumeno
