#include "platform/desktop_entry/desktop_entries.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/x11/x11_known_applications.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

class DesktopEntriesTest : public testing::Test {
 protected:
  void write(const QString& path, const QByteArray& content) {
    const QString full = folder_.filePath(path);
    QDir().mkpath(full.section(u'/', 0, -2));
    QFile file(full);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Desktop Entry]\nType=Application\n" + content);
  }
  DesktopEntries load(const QString& locale = u"de_DE"_s) const {
    return DesktopEntries::load({folder_.filePath(u"home"_s), folder_.filePath(u"system"_s)}, locale);
  }
  static QString idOf(const DesktopEntries& entries, const QString& instance, const QString& className) {
    const auto entry = entries.find(instance, className);
    return entry ? entry->id : u"none"_s;
  }

  QTemporaryDir folder_;
};

TEST_F(DesktopEntriesTest, FindsByClassIdTailAndProgram) {
  write(u"system/applications/org.gnome.TextEditor.desktop"_s,
        "Name=Text Editor\nExec=gnome-text-editor %U\n");
  write(u"system/applications/writer.desktop"_s,
        "Name=Writer\nStartupWMClass=office-writer\nExec=office --writer\n");
  write(u"system/applications/kde/kate.desktop"_s, "Name=Kate\nExec=\"/opt/my apps/kate\" -b\n");
  const auto entries = load();
  EXPECT_EQ(idOf(entries, u"x"_s, u"org.gnome.TextEditor"_s), u"org.gnome.TextEditor"_s);
  EXPECT_EQ(idOf(entries, u"texteditor"_s, u"TextEditor"_s), u"org.gnome.TextEditor"_s);
  EXPECT_EQ(idOf(entries, u"gnome-text-editor"_s, u"Gnome-text-editor"_s), u"org.gnome.TextEditor"_s);
  EXPECT_EQ(idOf(entries, u"office"_s, u"Office-Writer"_s), u"writer"_s);
  EXPECT_EQ(idOf(entries, u"kate"_s, u"Kate"_s), u"kde-kate"_s);
  EXPECT_EQ(idOf(entries, u"other"_s, u"Other"_s), u"none"_s);
}

TEST_F(DesktopEntriesTest, NamesAreLocalizedAndActionsDoNotCount) {
  write(
      u"system/applications/a.desktop"_s,
      "Name=Files\nName[de]=Dateien\nName[de_AT]=Akten\nX-Note=a\n\n[Desktop Action new]\nName=New Window\n");
  EXPECT_EQ(load().find(u"a"_s, u"A"_s)->name, u"Dateien"_s);
  EXPECT_EQ(load(u"de_AT"_s).find(u"a"_s, u"A"_s)->name, u"Akten"_s);
  EXPECT_EQ(load(u"fr_FR"_s).find(u"a"_s, u"A"_s)->name, u"Files"_s);
}

TEST_F(DesktopEntriesTest, TheUsersEntriesComeFirst) {
  write(u"system/applications/a.desktop"_s, "Name=Old\n");
  write(u"home/applications/a.desktop"_s, "Name=Mine\nCategories=System;TerminalEmulator;\n");
  write(u"system/applications/b.desktop"_s, "Name=B\nCategories=Utility;\n");
  write(u"home/applications/b.desktop"_s, "Name=B\nHidden=true\n");
  const auto entries = load();
  EXPECT_EQ(entries.find(u"a"_s, u"A"_s)->name, u"Mine"_s);
  EXPECT_TRUE(entries.find(u"a"_s, u"A"_s)->isTerminal);
  EXPECT_FALSE(entries.find(u"b"_s, u"B"_s));
}

TEST(X11KnownApplications, IdentifiersThatRulesName) {
  EXPECT_EQ(knownBundleIdentifier(u"Chromium"_s), u"com.google.Chrome"_s);
  EXPECT_EQ(knownBundleIdentifier(u"firefox-esr"_s), u"org.mozilla.firefox"_s);
  EXPECT_EQ(knownBundleIdentifier(u"Code"_s), u"com.microsoft.VSCode"_s);
  EXPECT_FALSE(knownBundleIdentifier(u"thunderbird"_s));
  EXPECT_TRUE(isKnownTerminal(u"XTerm"_s));
  EXPECT_FALSE(isKnownTerminal(u"Mousepad"_s));
}

}  // namespace
}  // namespace lumeno
