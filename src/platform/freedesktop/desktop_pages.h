#pragma once

#include <QStringList>
#include <QUrl>
#include <vector>

namespace lumeno {

/// What stands on this desktop for the URLs that belong to no installed handler.

/// "maps://?q=ADDRESS" as the URLs that map applications and browsers understand, best first.
[[nodiscard]] std::vector<QUrl> mapUrls(const QUrl& url);

/// The command that opens the desktop's own page for an "x-apple.systempreferences:" URL; empty where it has
/// none.
[[nodiscard]] QStringList settingsPageCommand(const QUrl& url);

}  // namespace lumeno
