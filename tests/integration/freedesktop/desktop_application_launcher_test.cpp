#include "platform/freedesktop/desktop_application_launcher.h"

#include <gtest/gtest.h>

#include <QUrl>
#include <optional>

#include "support/print_text.h"
#include "support/temporary_desktop.h"
#include "support/wait_until.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

/// A desktop with programs that write down how they were started: their arguments, and one variable.
struct Fixture {
  Fixture() {
    for (const QString& name : {u"editor"_s, u"manager"_s}) {
      desktop.writeProgram(
          name, "printf '%s|' \"$#\" \"$@\" \"$LUMENO_OWN\" > \"$0.part\" && mv \"$0.part\" \"$0.log\"\n");
    }
  }
  void addEntry(const QString& name, const QByteArray& lines) {
    desktop.write(u"share/applications/"_s + name,
                  "[Desktop Entry]\nType=Application\nName=Some\n" + lines + '\n');
  }
  bool openTextEditor() {
    return outcome([this](auto done) { launcher.openTextEditor(done); });
  }
  bool openHomeFolder() {
    return outcome([this](auto done) { launcher.openHomeFolder(done); });
  }
  bool outcome(const std::function<void(std::function<void(bool)>)>& open) {
    std::optional<bool> result;
    open([&](bool opened) { result = opened; });
    EXPECT_FALSE(result) << "answered before the call returned";
    EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
    return result.value_or(false);
  }
  QString started(const QString& program) {
    const QString log = u"bin/"_s + program + u".log"_s;
    waitUntil([&] { return desktop.exists(log); });
    return QString::fromUtf8(desktop.read(log));
  }

  TemporaryDesktop desktop;
  DesktopApplicationLauncher launcher;
};

TEST(DesktopApplicationLauncher, StartsTheEditorWithNothingAndWithoutOurEnvironment) {
  Fixture f;
  f.addEntry(u"a-terminal.desktop"_s, "Exec=editor in terminal\nTerminal=true\nMimeType=text/plain;");
  f.addEntry(u"editor.desktop"_s, "Exec=editor --new %F\nMimeType=text/plain;");
  f.desktop.set("LUMENO_OWN", u"set by us"_s);
  EXPECT_TRUE(f.openTextEditor());
  EXPECT_EQ(f.started(u"editor"_s), u"1|--new||"_s);
}

TEST(DesktopApplicationLauncher, ShowsTheHomeFolderAsThePathOrUrlThatTheManagerWants) {
  for (const bool wantsPath : {false, true}) {
    Fixture f;
    f.desktop.set("HOME", f.desktop.path(u"my home"_s));
    f.addEntry(u"manager.desktop"_s,
               QByteArray("Exec=manager ") + (wantsPath ? "%f" : "%U") + "\nMimeType=inode/directory;");
    QDir().mkpath(f.desktop.path(u"my home"_s));
    EXPECT_TRUE(f.openHomeFolder());
    const QString home = f.desktop.path(u"my home"_s);
    const QString argument = wantsPath ? home : QString::fromLatin1(QUrl::fromLocalFile(home).toEncoded());
    EXPECT_EQ(f.started(u"manager"_s), u"1|%1||"_s.arg(argument));
  }
}

TEST(DesktopApplicationLauncher, SaysWhenThereIsNothingToStart) {
  Fixture f;
  EXPECT_FALSE(f.openTextEditor());
  EXPECT_FALSE(f.openHomeFolder());
  f.addEntry(u"gone.desktop"_s, "Exec=no-such-program %U\nMimeType=text/plain;inode/directory;");
  EXPECT_FALSE(f.openTextEditor());
  f.launcher.openHomeFolder({});
  runFor(std::chrono::milliseconds(200));
}

}  // namespace
}  // namespace lumeno
