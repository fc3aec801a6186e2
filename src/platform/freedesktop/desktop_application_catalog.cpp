#include "platform/freedesktop/desktop_application_catalog.h"

#include <QCollator>
#include <QCoreApplication>
#include <QLocale>
#include <algorithm>
#include <memory>
#include <tuple>

#include "base/aside.h"
#include "platform/desktop_entry/desktop_entries.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

struct Offered {
  InstalledApplication application;
  Launch launch;
};

bool isOffered(const DesktopEntryFile& file) {
  return !file.isTrue(u"NoDisplay"_s) && file.isInstalled() && file.isForThisDesktop();
}

std::vector<InstalledApplication> read(const QStringList& folders, const QLocale& locale) {
  DesktopEntries entries;
  std::vector<Offered> offered;
  forEachInstalledEntry(folders, locale.name(), [&](const InstalledEntry& entry) {
    entries.add(entry);
    if (!isOffered(entry.file)) return;
    offered.push_back({{entry.id, entry.name, entry.file.value(u"Icon"_s)}, launchOf(entry)});
  });
  std::vector<InstalledApplication> applications;
  for (Offered& each : offered) {
    if (const auto known = entries.findLaunched(each.launch)) each.application.name = known->name;
    applications.push_back(std::move(each.application));
  }
  QCollator collator(locale);
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  // The directory's order means nothing: equal names stand in the order of their identifiers.
  std::sort(applications.begin(), applications.end(), [&](const auto& a, const auto& b) {
    const int order = collator.compare(a.name, b.name);
    return order != 0 ? order < 0 : std::tie(a.name, a.identifier) < std::tie(b.name, b.identifier);
  });
  const auto again = std::unique(applications.begin(), applications.end(),
                                 [](const auto& a, const auto& b) { return a.name == b.name; });
  applications.erase(again, applications.end());
  return applications;
}

}  // namespace

Job DesktopApplicationCatalog::list(std::function<void(std::vector<InstalledApplication>)> done) {
  return runAside(
      *QThreadPool::globalInstance(),
      [folders = applicationDataFolders(), locale = QLocale::system()] { return read(folders, locale); },
      std::move(done));
}

}  // namespace lumeno
