#include "capture/application_rules.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace lumeno {

namespace {

constexpr std::array electronAppPrefixes = {
    "com.microsoft.VSCode"_L1, "com.todesktop"_L1,     "com.tinyspeck.slackmacgap"_L1,
    "com.hnc.Discord"_L1,      "com.figma.Desktop"_L1, "notion.id"_L1,
    "com.electron"_L1,         "com.github.atom"_L1,   "com.spotify.client"_L1,
};

constexpr std::array browserPrefixes = {
    "com.google.Chrome"_L1,          "com.brave.Browser"_L1,   "com.microsoft.edgemac"_L1,
    "company.thebrowser.Browser"_L1, "org.mozilla.firefox"_L1,
};

bool identifierBegins(const std::optional<RunningApplication>& application, QLatin1StringView prefix) {
  return application && application->bundleIdentifier && application->bundleIdentifier->startsWith(prefix);
}

}  // namespace

bool isMail(const std::optional<RunningApplication>& application) {
  return identifierBegins(application, "com.apple.mail"_L1);
}

bool isClipboardFirst(const std::optional<RunningApplication>& application) {
  const auto matches = [&](QLatin1StringView prefix) { return identifierBegins(application, prefix); };
  return std::ranges::any_of(electronAppPrefixes, matches) || std::ranges::any_of(browserPrefixes, matches);
}

QString sourceLabel(const std::optional<RunningApplication>& application) {
  if (!application || !application->localizedName) return u"the active app"_s;
  return *application->localizedName;
}

}  // namespace lumeno
