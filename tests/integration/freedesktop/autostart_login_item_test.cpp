#include "platform/freedesktop/autostart_login_item.h"

#include <gtest/gtest.h>

#include <QProcess>

#include "platform/desktop_entry/desktop_entry_file.h"
#include "support/temporary_desktop.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

const QString own = u"config/autostart/lumeno.desktop"_s;
const QString ofSystem = u"etc/autostart/lumeno.desktop"_s;

TEST(AutostartLoginItem, ReadsTheStateFromTheEntries) {
  const struct {
    const char* own;
    const char* ofSystem;
    bool expected;
  } cases[] = {
      {nullptr, nullptr, false},
      {"Exec=lumeno", nullptr, true},
      {"Exec=lumeno\nHidden=false", nullptr, true},
      {"Exec=lumeno\nHidden=true", nullptr, false},
      {nullptr, "Exec=lumeno", true},
      {"Hidden=true", "Exec=lumeno", false},
      {"Exec=lumeno", "Hidden=true", true},
      {"Exec=lumeno\nOnlyShowIn=KDE;GNOME;", nullptr, true},
      {"Exec=lumeno\nOnlyShowIn=KDE", nullptr, false},
      {"Exec=lumeno\nNotShowIn=KDE", nullptr, true},
      {"Exec=lumeno\nNotShowIn=KDE;GNOME", nullptr, false},
      {"Exec=lumeno\nTryExec=sh", nullptr, true},
      {"Exec=lumeno\nTryExec=/nowhere/lumeno", nullptr, false},
      {"Exec=lumeno\n[Other]\nHidden=true", nullptr, true},
      {"Exec=lumeno\nX-GNOME-Autostart-enabled=true", nullptr, true},
      {"Exec=lumeno\nX-GNOME-Autostart-enabled=false", nullptr, false},
      {nullptr, "Exec=lumeno\nX-GNOME-Autostart-enabled=false", false},
  };
  for (const auto& test : cases) {
    TemporaryDesktop desktop;
    desktop.set("XDG_CURRENT_DESKTOP", u"ubuntu:GNOME"_s);
    const QByteArray head = "# comment\n[Desktop Entry]\nType=Application\nName=Lumeno\n";
    if (test.own) desktop.write(own, head + test.own + '\n');
    if (test.ofSystem) desktop.write(ofSystem, head + test.ofSystem + '\n');
    EXPECT_EQ(AutostartLoginItem(u"/usr/bin/lumeno"_s).isEnabled(), test.expected)
        << (test.own ? test.own : "-") << " | " << (test.ofSystem ? test.ofSystem : "-");
  }
}

TEST(AutostartLoginItem, RegistersAndUnregisters) {
  for (const bool systemWide : {false, true}) {
    const TemporaryDesktop desktop;
    if (systemWide) desktop.write(ofSystem, "[Desktop Entry]\nType=Application\nExec=lumeno\n");
    AutostartLoginItem item(u"/usr/bin/env"_s);  // a program that is there
    EXPECT_TRUE(item.registerItem());
    EXPECT_TRUE(item.isEnabled());
    EXPECT_TRUE(item.unregisterItem());
    EXPECT_FALSE(item.isEnabled());
    EXPECT_EQ(desktop.exists(own), systemWide) << "our own file stays only to hide the system's";
    EXPECT_TRUE(item.unregisterItem());
    EXPECT_TRUE(item.registerItem());
    EXPECT_TRUE(item.isEnabled());
  }
}

TEST(AutostartLoginItem, WhatADesktopHasSwitchedOffCanBeSwitchedOn) {
  const TemporaryDesktop desktop;
  desktop.write(own, "[Desktop Entry]\nType=Application\nExec=lumeno\nX-GNOME-Autostart-enabled=false\n");
  AutostartLoginItem item(u"/usr/bin/env"_s);
  EXPECT_FALSE(item.isEnabled());
  EXPECT_TRUE(item.registerItem());
  EXPECT_TRUE(item.isEnabled());
}

TEST(AutostartLoginItem, AProgramThatIsGoneDoesNotCount) {
  const TemporaryDesktop desktop;
  AutostartLoginItem item(desktop.path(u"gone/lumeno"_s));
  EXPECT_TRUE(item.registerItem());
  EXPECT_FALSE(item.isEnabled());
}

TEST(AutostartLoginItem, SaysWhenItCannot) {
  TemporaryDesktop desktop;
  desktop.write(u"plain"_s, "x");
  desktop.set("XDG_CONFIG_HOME", desktop.path(u"plain"_s));
  AutostartLoginItem item(u"/usr/bin/lumeno"_s);
  EXPECT_FALSE(item.registerItem());
  EXPECT_FALSE(item.isEnabled());
}

TEST(AutostartLoginItem, TheEntryStartsExactlyTheProgramGiven) {
  const TemporaryDesktop desktop;
  const QString program = u"/opt/my \"apps\"/50%u $HOME `x` back\\slash ü/lumeno"_s;
  ASSERT_TRUE(AutostartLoginItem(program).registerItem());
  const auto entry = DesktopEntryFile::read(desktop.path(own));
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->commandFor({}), QStringList{program});
  // A second opinion, where the checker is installed.
  QProcess checker;
  checker.start(u"desktop-file-validate"_s, {desktop.path(own)});
  if (checker.waitForFinished()) {
    EXPECT_EQ(checker.readAll(), "");
  }
}

}  // namespace
}  // namespace lumeno
