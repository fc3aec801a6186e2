#include "platform/freedesktop/desktop_application_catalog.h"

#include <QLocale>
#include <QThread>
#include <optional>

#include "support/print_text.h"
#include "support/temporary_desktop.h"
#include "support/wait_until.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

class DesktopApplicationCatalogTest : public testing::Test {
 protected:
  DesktopApplicationCatalogTest() {
    desktop.set("XDG_CURRENT_DESKTOP", u"XFCE"_s);
    desktop.set("XDG_DATA_DIRS", desktop.path(u"share"_s) + u':' + desktop.path(u"far"_s));
  }
  void write(const QString& path, const QByteArray& content) const {
    desktop.write(path, "[Desktop Entry]\nType=Application\n" + content);
  }
  std::vector<InstalledApplication> list() {
    std::optional<std::vector<InstalledApplication>> applications;
    QThread* thread = nullptr;
    const Job job = catalog.list([&](std::vector<InstalledApplication> found) {
      applications = std::move(found);
      thread = QThread::currentThread();
    });
    EXPECT_FALSE(applications) << "answered aside";
    EXPECT_TRUE(waitUntil([&] { return applications.has_value(); }));
    EXPECT_EQ(thread, QThread::currentThread());
    return applications.value_or(std::vector<InstalledApplication>());
  }
  QStringList names() {
    QStringList all;
    for (const auto& application : list()) all += application.name;
    return all;
  }

  TemporaryDesktop desktop;
  DesktopApplicationCatalog catalog;
};

TEST_F(DesktopApplicationCatalogTest, WhatMenusOfferByName) {
  desktop.writeProgram(u"present"_s, "");
  const QString entry = u"share/applications/%1.desktop"_s;
  write(entry.arg(u"z"_s), "Name=alpha\nExec=z\nIcon=/opt/z.png\n");
  write(entry.arg(u"b"_s), "Name=Gamma\nExec=b\n");
  write(entry.arg(u"c"_s), "Name=Beta\nExec=c\nTryExec=present\nOnlyShowIn=GNOME;XFCE;\n");
  write(entry.arg(u"kde/d"_s), "Name=Öl\nExec=d\nIcon=oil\n");
  write(entry.arg(u"hidden"_s), "Name=Hidden\nHidden=true\n");
  write(entry.arg(u"undisplayed"_s), "Name=Undisplayed\nNoDisplay=true\n");
  write(entry.arg(u"elsewhere"_s), "Name=Elsewhere\nOnlyShowIn=KDE;\n");
  write(entry.arg(u"nothere"_s), "Name=Nothere\nNotShowIn=XFCE;\n");
  write(entry.arg(u"absent"_s), "Name=Absent\nTryExec=no-such-program\n");
  write(entry.arg(u"nameless"_s), "Exec=x\n");
  desktop.write(entry.arg(u"link"_s), "[Desktop Entry]\nType=Link\nName=Link\nURL=http://example.com\n");
  desktop.write(entry.arg(u"damaged"_s), "no entry at all");
  const auto applications = list();
  ASSERT_EQ(applications.size(), 4u);
  EXPECT_EQ(applications[0].name, u"alpha"_s);
  EXPECT_EQ(applications[0].iconName, u"/opt/z.png"_s);
  EXPECT_EQ(applications[1].name, u"Beta"_s);
  EXPECT_EQ(applications[2].name, u"Gamma"_s);
  EXPECT_EQ(applications[3].identifier, u"kde-d"_s);
  EXPECT_EQ(applications[3].iconName, u"oil"_s);
}

TEST_F(DesktopApplicationCatalogTest, MoreImportantFoldersReplaceOthers) {
  write(u"data/applications/a.desktop"_s, "Name=Mine\n");
  write(u"share/applications/a.desktop"_s, "Name=Theirs\n");
  write(u"share/applications/b.desktop"_s, "Name=Near\n");
  write(u"far/applications/b.desktop"_s, "Name=Far\n");
  write(u"data/applications/c.desktop"_s, "Name=C\nHidden=true\n");
  write(u"far/applications/c.desktop"_s, "Name=C\n");
  EXPECT_EQ(names(), (QStringList{u"Mine"_s, u"Near"_s}));
}

TEST_F(DesktopApplicationCatalogTest, NamesAreThoseOfTheRunningApplication) {
  const QByteArray locale = QLocale::system().name().toUtf8();
  write(u"share/applications/a.desktop"_s, "Name=Files\nName[" + locale + "]=Dateien\n");
  // Two entries for one window class: the one in the more important folder names the windows.
  write(u"data/applications/code-handler.desktop"_s, "Name=Code\nNoDisplay=true\nStartupWMClass=Code\n");
  write(u"share/applications/code.desktop"_s, "Name=Code Editor\nStartupWMClass=code\n");
  // A further way into an application.
  write(u"share/applications/thunar.desktop"_s, "Name=Thunar\nExec=thunar\n");
  write(u"share/applications/thunar-rename.desktop"_s, "Name=Rename\nExec=/usr/bin/thunar --rename\n");
  EXPECT_EQ(names(), (QStringList{u"Code"_s, u"Dateien"_s, u"Thunar"_s}));
}

TEST_F(DesktopApplicationCatalogTest, ACancelledListIsNotTold) {
  write(u"share/applications/a.desktop"_s, "Name=A\n");
  (void)catalog.list([](const auto&) { ADD_FAILURE() << "told"; });
  EXPECT_EQ(names(), QStringList{u"A"_s});
}

}  // namespace
}  // namespace lumeno
