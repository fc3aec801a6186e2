#include "platform/freedesktop/desktop_url_opener.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusObjectPath>

#include "platform/desktop_entry/desktop_entry_file.h"
#include "support/fake_bus_service.h"
#include "support/temporary_desktop.h"
#include "support/wait_until.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

/// A desktop with programs that write down how they were started, one argument a line.
struct Fixture {
  Fixture() {
    for (const QString& name : {u"browser"_s, u"second"_s, u"maps"_s, u"dialer"_s}) addProgram(name);
  }
  void addProgram(const QString& name) {
    desktop.writeProgram(name, "printf '%s\\n' \"$@\" > \"$0.part\" && mv \"$0.part\" \"$0.log\"\n");
  }
  void addEntry(const QString& name, const QByteArray& lines, const QString& folder = u"share"_s) {
    desktop.write(folder + u"/applications/"_s + name,
                  "[Desktop Entry]\nType=Application\nName=Some\n" + lines + '\n');
  }
  bool open(const QString& url) {
    std::optional<bool> result;
    opener.open(QUrl(url), [&](bool opened) { result = opened; });
    EXPECT_FALSE(result) << "answered before the call returned";
    EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
    return result.value_or(false);
  }
  /// What a program was started with, once it was; empty when it is not.
  QString started(const QString& program) {
    const QString log = u"bin/"_s + program + u".log"_s;
    waitUntil([&] { return desktop.exists(log); });
    return QString::fromUtf8(desktop.read(log)).trimmed();
  }
  bool wasStarted(const QString& program) { return desktop.exists(u"bin/"_s + program + u".log"_s); }

  TemporaryDesktop desktop;
  DesktopUrlOpener opener;
};

TEST(DesktopUrlOpener, StartsTheHandlerThatTheListsName) {
  const QByteArray https = "x-scheme-handler/https=";
  const struct {
    const char* name;
    std::vector<std::pair<const char*, QByteArray>> lists;
    QString expected;
  } cases[] = {
      {"the user's default",
       {{"config/mimeapps.list", "[Default Applications]\n" + https + "second.desktop;\n"}},
       u"second"_s},
      {"the user's default for this desktop",
       {{"config/mimeapps.list", "[Default Applications]\n" + https + "browser.desktop\n"},
        {"config/gnome-mimeapps.list", "[Default Applications]\n" + https + "second.desktop\n"}},
       u"second"_s},
      {"the first of the defaults that is installed",
       {{"config/mimeapps.list", "[Default Applications]\n" + https +
                                     "gone.desktop;terminal.desktop;uninstalled.desktop;second.desktop\n"}},
       u"second"_s},
      {"the system's default",
       {{"etc/mimeapps.list", "[Default Applications]\n" + https + "second.desktop\n"}},
       u"second"_s},
      {"a default of the data folders",
       {{"share/applications/mimeapps.list", "[Default Applications]\n" + https + "second.desktop\n"}},
       u"second"_s},
      {"an added association",
       {{"config/mimeapps.list", "[Added Associations]\n" + https + "second.desktop;\n"}},
       u"second"_s},
      {"the cache",
       {{"share/applications/mimeinfo.cache", "[MIME Cache]\n" + https + "second.desktop;\n"}},
       u"second"_s},
      {"the cache, but not what the user removed",
       {{"share/applications/mimeinfo.cache", "[MIME Cache]\n" + https + "browser.desktop;second.desktop;\n"},
        {"config/mimeapps.list", "[Removed Associations]\n" + https + "browser.desktop;\n"}},
       u"second"_s},
      {"without a cache, what the entries say", {}, u"browser"_s},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    Fixture f;
    f.desktop.set("XDG_CURRENT_DESKTOP", u"GNOME"_s);
    f.addEntry(u"browser.desktop"_s, "Exec=browser %u\nMimeType=text/html;x-scheme-handler/https;");
    f.addEntry(u"second.desktop"_s, "Exec=second %U");
    f.addEntry(u"terminal.desktop"_s, "Exec=browser %u\nTerminal=true");
    f.addEntry(u"uninstalled.desktop"_s, "Exec=/nowhere/at/all %u");
    for (const auto& [name, content] : test.lists) f.desktop.write(QString::fromLatin1(name), content);
    EXPECT_TRUE(f.open(u"https://example.org/a%20b?c=d&e#f"_s));
    EXPECT_EQ(f.started(test.expected), u"https://example.org/a%20b?c=d&e#f"_s);
    EXPECT_FALSE(f.wasStarted(test.expected == "browser"_L1 ? u"second"_s : u"browser"_s));
  }
}

TEST(DesktopUrlOpener, AnswersFalseWhereNothingCanOpenTheUrl) {
  Fixture f;
  EXPECT_FALSE(f.open(u"tel:+15550107788"_s));
  EXPECT_FALSE(f.open(u"maps://?q=Berlin"_s));
  EXPECT_FALSE(f.open(u"javascript:alert(1)"_s));
  f.addEntry(u"dialer.desktop"_s, "Exec=dialer %u\nMimeType=x-scheme-handler/tel");
  EXPECT_TRUE(f.open(u"tel:+15550107788"_s));
  EXPECT_EQ(f.started(u"dialer"_s), u"tel:+15550107788"_s);
}

TEST(DesktopUrlOpener, AddressesGoToTheMapApplicationOrAMapPage) {
  // An address may hold anything, also what separates the parts of a query.
  const QString address = u"maps://?q=AT%26T%20Plaza,%20M%C3%BCnchen%20+1=a&b"_s;
  const QString encoded = u"AT%26T%20Plaza%2C%20M%C3%BCnchen%20%2B1%3Da%26b"_s;
  Fixture f;
  f.addEntry(u"kde/browser.desktop"_s, "Exec=browser %u");
  f.desktop.write(u"config/mimeapps.list"_s,
                  "[Default Applications]\nx-scheme-handler/https=kde-browser.desktop\n");
  EXPECT_TRUE(f.open(address));
  EXPECT_EQ(f.started(u"browser"_s), u"https://www.openstreetmap.org/search?query="_s + encoded);
  f.addEntry(u"maps.desktop"_s, "Exec=maps %u\nMimeType=x-scheme-handler/geo;", u"data"_s);
  EXPECT_TRUE(f.open(address));
  EXPECT_EQ(f.started(u"maps"_s), u"geo:0,0?q="_s + encoded);
}

TEST(DesktopUrlOpener, SettingsPanesAreTheDesktopsOwnPages) {
  const QString accessibility =
      u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_s;
  const QString calendars = u"x-apple.systempreferences:com.apple.preference.security?Privacy_Calendars"_s;
  Fixture f;
  f.desktop.set("PATH", f.desktop.path(u"bin"_s));
  EXPECT_FALSE(f.open(accessibility));
  f.desktop.set("PATH", f.desktop.path(u"bin"_s) + u":/usr/bin:/bin"_s);
  f.addProgram(u"gnome-control-center"_s);
  f.addProgram(u"xfce4-accessibility-settings"_s);
  f.desktop.set("XDG_CURRENT_DESKTOP", u"ubuntu:GNOME"_s);
  EXPECT_TRUE(f.open(accessibility));
  EXPECT_EQ(f.started(u"gnome-control-center"_s), u"universal-access"_s);
  QFile::remove(f.desktop.path(u"bin/gnome-control-center.log"_s));
  EXPECT_TRUE(f.open(calendars));
  EXPECT_EQ(f.started(u"gnome-control-center"_s), u"online-accounts"_s);
  EXPECT_FALSE(f.wasStarted(u"xfce4-accessibility-settings"_s));
  f.desktop.set("XDG_CURRENT_DESKTOP", u"XFCE"_s);
  EXPECT_FALSE(f.open(calendars)) << "GNOME's page does not open on another desktop";
}

TEST(DesktopUrlOpener, WithoutAHandlerThePortalDecides) {
  for (const uint response : {0u, 1u, 2u}) {
    Fixture f;
    FakeBusService* portal = nullptr;
    FakeBusService service(u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
                           [&](const QDBusMessage& call) -> std::optional<QVariantList> {
                             const auto options = qdbus_cast<QVariantMap>(call.arguments().at(2));
                             const QString path = u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(
                                 call.service().mid(1).replace(u'.', u'_'),
                                 options[u"handle_token"_s].toString());
                             QTimer::singleShot(20, portal, [=] {
                               portal->emitSignal(path, u"org.freedesktop.portal.Request"_s, u"Response"_s,
                                                  {response, QVariantMap()});
                             });
                             return QVariantList{QVariant::fromValue(QDBusObjectPath(path))};
                           });
    portal = &service;
    EXPECT_EQ(f.open(u"tel:+15550107788"_s), response != 2);
    ASSERT_EQ(service.calls.size(), 1u);
    EXPECT_EQ(service.calls[0].member(), u"OpenURI"_s);
    EXPECT_EQ(service.calls[0].arguments().at(1).toString(), u"tel:+15550107788"_s);
  }
}

TEST(DesktopEntryFile, FillsInFieldCodes) {
  const struct {
    QByteArray exec;
    QStringList expected;
  } cases[] = {
      {"app %u", {u"app"_s, u"URL"_s}},
      {"app", {u"app"_s, u"URL"_s}},
      {"app --open=%U --name %c %i %% %k %m",
       {u"app"_s, u"--open=URL"_s, u"--name"_s, u"A B"_s, u"--icon"_s, u"pic"_s, u"%"_s, u"PATH"_s}},
      {"\"/opt/my app/run\" \"a \\\\\"b\\\\\" \\\\$c\" \"\" %u",
       {u"/opt/my app/run"_s, u"a \"b\" $c"_s, u""_s, u"URL"_s}},
      {"app \"open", {}},
      {"", {}},
  };
  for (const auto& test : cases) {
    const TemporaryDesktop desktop;
    desktop.write(u"e.desktop"_s, "[Desktop Entry]\nName=A B\nIcon=pic\nExec=" + test.exec + "\n");
    const auto entry = DesktopEntryFile::read(desktop.path(u"e.desktop"_s));
    ASSERT_TRUE(entry);
    QStringList expected = test.expected;
    expected.replaceInStrings(u"PATH"_s, desktop.path(u"e.desktop"_s));
    EXPECT_EQ(entry->commandFor(u"URL"_s), expected) << test.exec.toStdString();
  }
}

}  // namespace
}  // namespace lumeno
