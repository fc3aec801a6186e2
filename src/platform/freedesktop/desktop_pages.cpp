#include "platform/freedesktop/desktop_pages.h"

#include <QStandardPaths>

#include "platform/desktop_entry/desktop_entry_file.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

enum class Runs { everywhere, onItsDesktop };

struct SettingsPage {
  QLatin1StringView pane;
  QLatin1StringView desktop;
  QLatin1StringView program;
  QLatin1StringView argument;
  Runs runs;
};

constexpr auto accessibility = "Privacy_Accessibility"_L1;
constexpr auto calendars = "Privacy_Calendars"_L1;

// In the order in which another desktop's are tried. (Xfce, MATE and Cinnamon have no page for calendars, and
// GNOME's program refuses to run elsewhere.)
constexpr SettingsPage settingsPages[] = {
    {accessibility, "XFCE"_L1, "xfce4-accessibility-settings"_L1, {}, Runs::everywhere},
    {accessibility, "KDE"_L1, "systemsettings"_L1, "kcm_access"_L1, Runs::everywhere},
    {accessibility, "MATE"_L1, "mate-at-properties"_L1, {}, Runs::everywhere},
    {accessibility, "X-Cinnamon"_L1, "cinnamon-settings"_L1, "universal-access"_L1, Runs::everywhere},
    {accessibility, "GNOME"_L1, "gnome-control-center"_L1, "universal-access"_L1, Runs::onItsDesktop},
    {calendars, "KDE"_L1, "systemsettings"_L1, "kcm_kaccounts"_L1, Runs::everywhere},
    {calendars, "GNOME"_L1, "gnome-control-center"_L1, "online-accounts"_L1, Runs::onItsDesktop},
};

}  // namespace

std::vector<QUrl> mapUrls(const QUrl& url) {
  // The address is the rest, whatever it holds: it may have an ampersand of its own.
  const QByteArray query = url.query(QUrl::FullyEncoded).toLatin1();
  const QByteArray address = QByteArray::fromPercentEncoding(query.mid(query.indexOf('=') + 1));
  const QByteArray encoded = address.toPercentEncoding();
  return {QUrl::fromEncoded("geo:0,0?q=" + encoded),
          QUrl::fromEncoded("https://www.openstreetmap.org/search?query=" + encoded)};
}

QStringList settingsPageCommand(const QUrl& url) {
  const QString pane = url.query();
  const QStringList desktops = currentDesktops();
  for (const bool ofThisDesktop : {true, false}) {
    for (const auto& page : settingsPages) {
      const bool mustBeThisDesktop = ofThisDesktop || page.runs == Runs::onItsDesktop;
      if (page.pane != pane || (mustBeThisDesktop && !desktops.contains(page.desktop))) continue;
      if (QStandardPaths::findExecutable(page.program).isEmpty()) continue;
      QStringList command{page.program};
      if (!page.argument.isEmpty()) command << page.argument;
      return command;
    }
  }
  return {};
}

}  // namespace lumeno
