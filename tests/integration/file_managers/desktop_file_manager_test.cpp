#include "platform/file_managers/desktop_file_manager.h"

#include <gtest/gtest.h>

#include <QWindow>

#include "file_manager_fixture.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

TEST_F(FileManagerTest, CajaOverAccessibility) {
  grant();
  open(u"caja"_s, {u"--no-desktop"_s}, u"caja"_s);
  EXPECT_EQ(selectAll(), Files(names));
  EXPECT_EQ(read(FileManager::Read::thorough), Files(names));
  press({u"Home"_s});
  EXPECT_EQ(readUntil(Files({names[0]})), Files({names[0]}));
  press({u"shift+Right"_s});
  EXPECT_EQ(readUntil(Files({names[0], names[1]})), Files({names[0], names[1]}));
  click(60, 80);
  EXPECT_EQ(readUntil(std::vector<QByteArray>()), Files(std::vector<QByteArray>()));

  const auto frame = fileManager.frontWindowFrame();
  ASSERT_TRUE(frame);
  EXPECT_EQ(screens.deviceFrame(workspace.frontmostApplication()->window), frame) << "at a scale of one";

  // The list of places has a selection of its own, and nothing is read of a view with folders inside folders.
  press({u"ctrl+2"_s});
  EXPECT_EQ(readUntil(std::nullopt), std::nullopt);
}

TEST_F(FileManagerTest, PrimingReadsBehindAWindowOfOurs) {
  open(u"caja"_s, {u"--no-desktop"_s}, u"caja"_s);
  EXPECT_EQ(read(FileManager::Read::priming), std::nullopt) << "without trust nothing is read";
  grant();
  EXPECT_EQ(selectAll(), Files(names));
  QWindow ours;
  ours.setGeometry(100, 100, 400, 300);
  ours.show();
  ASSERT_TRUE(waitUntil([&] {
    ours.requestActivate();
    const auto front = workspace.frontmostApplication();
    return front && front->bundleIdentifier == workspace.ownBundleIdentifier();
  }));
  EXPECT_EQ(read(FileManager::Read::thorough), std::nullopt) << "what is in front is no file manager";
  const auto primingFinds = [&](FileManager& manager, const Files& expected) {
    return waitUntil([&] { return read(FileManager::Read::priming, manager) == expected; },
                     std::chrono::seconds(15));
  };
  EXPECT_TRUE(primingFinds(fileManager, names));

  // One that was in front before this program began is found, and one that has gone is not waited for.
  DesktopFileManager later{workspace, screens, accessibility, scheduler};
  EXPECT_TRUE(primingFinds(later, names));
  process_.kill();
  ASSERT_TRUE(process_.waitForFinished());
  EXPECT_TRUE(primingFinds(fileManager, std::nullopt));
}

TEST_F(FileManagerTest, ThunarByDetailsOrByCopy) {
  grant();
  open(u"thunar"_s, {}, u"thunar"_s);
  // The icons cannot be read.
  expectCopy(names, {u"ctrl+a"_s});
  EXPECT_EQ(read(), std::nullopt);

  press({u"ctrl+2"_s});
  EXPECT_EQ(selectAll(), Files(names));
  press({u"Down"_s});
  EXPECT_EQ(readUntil(Files({names[1]})), Files({names[1]}));

  // In the location entry the copy command copies text.
  expectCopy(std::nullopt, {u"ctrl+l"_s, u"ctrl+a"_s});
}

TEST_F(FileManagerTest, PcmanfmQt) {
  grant();
  open(u"pcmanfm-qt"_s, {}, u"pcmanfm-qt"_s);
  EXPECT_EQ(selectAll(announceScreenReader), Files(names));
  press({u"Right"_s, u"shift+Right"_s});
  EXPECT_EQ(readUntil(Files({names[1], names[2]})), Files({names[1], names[2]}));
  expectCopy(Files({names[1], names[2]}));
}

TEST_F(FileManagerTest, CajaReportsByItsExtension) {
  const QString extensions = qEnvironmentVariable("XDG_DATA_HOME") + u"/caja-python/extensions"_s;
  QDir().mkpath(extensions);
  const QString script = u"/lumeno_selection_caja.py"_s;
  ASSERT_TRUE(QFile::copy(QStringLiteral(LUMENO_EXTENSIONS) + script, extensions + script));
  // The name comes late: what is selected by then is told all the same.
  open(u"caja"_s, {u"--no-desktop"_s}, u"caja"_s);
  runFor(std::chrono::milliseconds(1500));
  press({u"ctrl+a"_s});
  runFor(std::chrono::milliseconds(500));
  EXPECT_EQ(read(), std::nullopt) << "without trust there is no other way";
  ASSERT_TRUE(QDBusConnection::sessionBus().registerService(u"org.lumeno.Lumeno"_s));
  EXPECT_EQ(selectAll(), Files(names));
  press({u"Home"_s});
  EXPECT_EQ(readUntil(Files({names[0]})), Files({names[0]}));

  // A stranger's word does not count.
  auto lie = QDBusMessage::createMethodCall(QDBusConnection::sessionBus().baseService(),
                                            u"/org/lumeno/FileSelection"_s, u"org.lumeno.FileSelection"_s,
                                            u"ReportFiles"_s);
  lie.setArguments({QStringList{u"file:///etc/passwd"_s},
                    QVariant::fromValue<qulonglong>(workspace.frontmostApplication()->window)});
  QDBusConnection::sessionBus().send(lie);
  runFor(std::chrono::milliseconds(200));
  EXPECT_NE(read(), Files({"/etc/passwd"}));

  press({u"End"_s});
  EXPECT_EQ(readUntil(Files({names.back()})), Files({names.back()}));
  click(60, 80);
  EXPECT_EQ(readUntil(std::vector<QByteArray>()), Files(std::vector<QByteArray>()));
  QDBusConnection::sessionBus().unregisterService(u"org.lumeno.Lumeno"_s);
}

}  // namespace
}  // namespace lumeno
