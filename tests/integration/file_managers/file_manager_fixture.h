#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "base/qt_scheduler.h"
#include "capture/clipboard_selection_capture.h"
#include "platform/atspi/atspi_accessibility.h"
#include "platform/file_managers/desktop_file_manager.h"
#include "platform/x11/own_windows.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_input.h"
#include "platform/x11/x11_keystroke_sender.h"
#include "platform/x11/x11_pasteboard.h"
#include "platform/x11/x11_screens.h"
#include "platform/x11/x11_selection_buffer.h"
#include "platform/x11/x11_workspace.h"
#include "records/file_selection.h"
#include "support/wait_until.h"

namespace lumeno {

using Files = std::optional<std::vector<QByteArray>>;

/// A folder with names of every kind, shown in a real file manager.
class FileManagerTest : public testing::Test {
 protected:
  /// In the order in which file managers sort them.
  const std::vector<QByteArray> names{"%20.txt",  "back\\slash", "bad\xFF.txt",      "line\nfeed",
                                      "quo\"te'", "trail ",      "\xC3\xBCn\xC3\xAF"};

  FileManagerTest() {
    makeFolder("selected here");
    for (const QByteArray& name : names) makeFile(name);
  }
  ~FileManagerTest() override {
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished();
  }

  void makeFolder(const QByteArray& name) {
    folder = QFile::encodeName(folders_.path()) + '/' + name;
    QDir().mkpath(QFile::decodeName(folder));
  }
  void makeFile(const QByteArray& name) const {
    // Not through the toolkit, which cannot name every file.
    FILE* const file = fopen((folder + '/' + name).constData(), "w");
    ASSERT_NE(file, nullptr);
    fputs("some text\n", file);
    fclose(file);
  }

  /// Starts the program on the folder and waits for its window.
  void open(const QString& program, const QStringList& arguments, const QString& applicationId) {
    process_.setStandardOutputFile(QProcess::nullDevice());
    process_.setStandardErrorFile(QProcess::nullDevice());
    process_.start(program, arguments + QStringList{QFile::decodeName(folder)});
    ASSERT_TRUE(waitUntil([&] {
      const auto front = workspace.frontmostApplication();
      return front && front->bundleIdentifier == fileManagerBundleIdentifier &&
             front->applicationId == applicationId;
    })) << program.toStdString()
        << " has not come to the front";
  }
  void grant() {
    accessibility.requestTrust();
    ASSERT_TRUE(waitUntil([&] { return accessibility.isTrusted(); }));
  }
  /// Without a whole desktop around them programs of Qt 5 appear on the accessibility bus only when a screen
  /// reader is announced while they run.
  static void announceScreenReader() {
    for (const bool isEnabled : {false, true}) {
      auto request = QDBusMessage::createMethodCall(
          QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
          QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
      request.setArguments({QStringLiteral("org.a11y.Status"), QStringLiteral("ScreenReaderEnabled"),
                            QVariant::fromValue(QDBusVariant(isEnabled))});
      ASSERT_EQ(QDBusConnection::sessionBus().call(request).type(), QDBusMessage::ReplyMessage);
      runFor(std::chrono::milliseconds(300));
    }
  }

  static void press(const QStringList& keys) { run(QStringList{QStringLiteral("key")} + keys); }
  /// Clicks at a place in the window in front, in pixels from its right lower corner.
  void click(int left, int up) {
    const auto frame = screens.deviceFrame(workspace.frontmostApplication()->window).value_or(Rect());
    run({QStringLiteral("mousemove"), QString::number(frame.maxX() - left),
         QString::number(frame.maxY() - up), QStringLiteral("click"), QStringLiteral("1")});
  }

  Files read(FileManager::Read kind = FileManager::Read::quick) { return read(kind, fileManager); }
  Files read(FileManager::Read kind, FileManager& manager) {
    Files files;
    bool isAnswered = false;
    const Job job = manager.readSelection(kind, [&](std::optional<std::vector<QUrl>> urls) {
      files = names_(urls);
      isAnswered = true;
    });
    EXPECT_FALSE(isAnswered) << "before the call has returned";
    EXPECT_TRUE(waitUntil([&] { return isAnswered; }));
    return files;
  }
  /// What is read in the end; file managers need a moment after a key. The last answer if it never comes.
  Files readUntil(const Files& expected, std::chrono::milliseconds deadline = std::chrono::seconds(30)) {
    Files files;
    (void)waitUntil(
        [&] {
          files = read();
          return files == expected;
        },
        deadline);
    return files;
  }
  /// Selects everything, as soon as the file manager has loaded it; before every attempt something can be
  /// done.
  Files selectAll(const std::function<void()>& prepare = [] {}) {
    Files files;
    (void)waitUntil(
        [&] {
          prepare();
          press({QStringLiteral("ctrl+a")});
          files = readUntil(names, std::chrono::seconds(2));
          return files == names;
        },
        std::chrono::seconds(30));
    return files;
  }
  /// Expects that these files are copied in the end and the clipboard is as before, with the keys pressed
  /// before every attempt: while a file manager still loads, or takes note of a selection, its copy command
  /// does something else, and what it copies too late stays on the clipboard.
  void expectCopy(const Files& expected, const QStringList& keys = {}) {
    Files files;
    QString text;
    EXPECT_TRUE(waitUntil(
        [&] {
          pasteboard.setString(QStringLiteral("kept"));
          if (!keys.isEmpty()) press(keys);
          files = copy();
          text = clipboardText();
          return files == expected && text == QStringLiteral("kept");
        },
        std::chrono::seconds(30)))
        << testing::PrintToString(files) << " copied, on the clipboard: " << text.toStdString();
  }
  QString clipboardText() {
    QString text;
    bool isAnswered = false;
    const Job job = pasteboard.readString([&](const std::optional<QString>& found) {
      text = found.value_or(QStringLiteral("(none)"));
      isAnswered = true;
    });
    EXPECT_TRUE(waitUntil([&] { return isAnswered; }));
    return text;
  }
  Files copy() {
    Files files;
    bool isAnswered = false;
    const Job job = capture.captureFiles(workspace.frontmostApplication()->window,
                                         [&](std::optional<std::vector<QUrl>> urls) {
                                           files = names_(urls);
                                           isAnswered = true;
                                         });
    EXPECT_TRUE(waitUntil([&] { return isAnswered; }));
    return files;
  }

  QtScheduler scheduler;
  std::unique_ptr<X11Connection> connection = X11Connection::open();
  OwnWindows ownWindows{*connection};
  X11Screens screens{*connection};
  X11Input input{*connection, ownWindows, scheduler};
  X11Workspace workspace{*connection, ownWindows, scheduler};
  X11KeystrokeSender keystrokes{*connection, workspace, input, scheduler};
  X11Pasteboard pasteboard{*connection, scheduler};
  X11SelectionBuffer buffer{*connection, scheduler, input, workspace};
  QTemporaryDir folders_;
  AtspiAccessibility accessibility{workspace, screens,   input,
                                   buffer,    scheduler, folders_.filePath(QStringLiteral("granted"))};
  ClipboardSelectionCapture capture{pasteboard, keystrokes, buffer, scheduler};
  DesktopFileManager fileManager{workspace, screens, accessibility, scheduler};
  QByteArray folder;
  QProcess process_;

 private:
  static void run(const QStringList& arguments) {
    ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), arguments), 0);
  }
  /// The names of files in the folder; others keep their whole path.
  Files names_(const std::optional<std::vector<QUrl>>& urls) const {
    if (!urls) return std::nullopt;
    std::vector<QByteArray> found;
    for (const QUrl& url : *urls) {
      const QByteArray path = localPath(url);
      found.push_back(path.startsWith(folder + '/') ? path.mid(folder.size() + 1) : path);
    }
    return found;
  }
};

}  // namespace lumeno
