#include "platform/x11/x11_known_applications.h"

#include <QHash>
#include <QSet>

namespace lumeno {

using namespace Qt::StringLiterals;

std::optional<QString> knownBundleIdentifier(const QString& classOrId) {
  // Keys in lower case: window classes and desktop-entry ids, as distributions, vendors and Flatpak have
  // them.
  static const QHash<QString, QString> identifiers = {
      {u"google-chrome"_s, u"com.google.Chrome"_s},
      {u"google-chrome-beta"_s, u"com.google.Chrome.beta"_s},
      {u"google-chrome-unstable"_s, u"com.google.Chrome.dev"_s},
      {u"com.google.chrome"_s, u"com.google.Chrome"_s},
      {u"chromium"_s, u"com.google.Chrome"_s},
      {u"chromium-browser"_s, u"com.google.Chrome"_s},
      {u"org.chromium.chromium"_s, u"com.google.Chrome"_s},
      {u"brave-browser"_s, u"com.brave.Browser"_s},
      {u"com.brave.browser"_s, u"com.brave.Browser"_s},
      {u"microsoft-edge"_s, u"com.microsoft.edgemac"_s},
      {u"com.microsoft.edge"_s, u"com.microsoft.edgemac"_s},
      {u"firefox"_s, u"org.mozilla.firefox"_s},
      {u"firefox-esr"_s, u"org.mozilla.firefox"_s},
      {u"org.mozilla.firefox"_s, u"org.mozilla.firefox"_s},
      {u"code"_s, u"com.microsoft.VSCode"_s},
      {u"code - oss"_s, u"com.microsoft.VSCode"_s},
      {u"code-oss"_s, u"com.microsoft.VSCode"_s},
      {u"codium"_s, u"com.microsoft.VSCode"_s},
      {u"vscodium"_s, u"com.microsoft.VSCode"_s},
      {u"com.visualstudio.code"_s, u"com.microsoft.VSCode"_s},
      {u"com.vscodium.codium"_s, u"com.microsoft.VSCode"_s},
      {u"slack"_s, u"com.tinyspeck.slackmacgap"_s},
      {u"com.slack.slack"_s, u"com.tinyspeck.slackmacgap"_s},
      {u"discord"_s, u"com.hnc.Discord"_s},
      {u"com.discordapp.discord"_s, u"com.hnc.Discord"_s},
      {u"figma-linux"_s, u"com.figma.Desktop"_s},
      {u"io.github.figma_linux.figma_linux"_s, u"com.figma.Desktop"_s},
      {u"notion"_s, u"notion.id"_s},
      {u"notion-app"_s, u"notion.id"_s},
      {u"atom"_s, u"com.github.atom"_s},
      {u"io.atom.atom"_s, u"com.github.atom"_s},
      {u"spotify"_s, u"com.spotify.client"_s},
      {u"com.spotify.client"_s, u"com.spotify.client"_s},
      {u"org.gnome.nautilus"_s, u"com.apple.finder"_s},
      {u"nautilus"_s, u"com.apple.finder"_s},
      {u"nemo"_s, u"com.apple.finder"_s},
      {u"caja"_s, u"com.apple.finder"_s},
      {u"thunar"_s, u"com.apple.finder"_s},
      {u"org.kde.dolphin"_s, u"com.apple.finder"_s},
      {u"dolphin"_s, u"com.apple.finder"_s},
      {u"pcmanfm"_s, u"com.apple.finder"_s},
      {u"pcmanfm-qt"_s, u"com.apple.finder"_s},
  };
  const auto found = identifiers.constFind(classOrId.toLower());
  return found == identifiers.cend() ? std::nullopt : std::optional(*found);
}

bool isKnownTerminal(const QString& className) {
  static const QSet<QString> terminals = {
      u"xterm"_s,
      u"uxterm"_s,
      u"koi8rxterm"_s,
      u"lxterm"_s,
      u"urxvt"_s,
      u"rxvt"_s,
      u"mrxvt"_s,
      u"aterm"_s,
      u"eterm"_s,
      u"st"_s,
      u"st-256color"_s,
      u"kitty"_s,
      u"alacritty"_s,
      u"foot"_s,
      u"ghostty"_s,
      u"com.mitchellh.ghostty"_s,
      u"wezterm"_s,
      u"wezterm-gui"_s,
      u"org.wezfurlong.wezterm"_s,
      u"rio"_s,
      u"contour"_s,
      u"hyper"_s,
      u"tabby"_s,
      u"warp"_s,
      u"dev.warp.warp"_s,
      u"cool-retro-term"_s,
      u"terminology"_s,
      u"konsole"_s,
      u"yakuake"_s,
      u"gnome-terminal"_s,
      u"gnome-terminal-server"_s,
      u"org.gnome.terminal"_s,
      u"kgx"_s,
      u"org.gnome.console"_s,
      u"org.gnome.ptyxis"_s,
      u"ptyxis"_s,
      u"xfce4-terminal"_s,
      u"mate-terminal"_s,
      u"lxterminal"_s,
      u"qterminal"_s,
      u"deepin-terminal"_s,
      u"io.elementary.terminal"_s,
      u"terminator"_s,
      u"tilix"_s,
      u"com.gexperts.tilix"_s,
      u"guake"_s,
      u"tilda"_s,
      u"terminix"_s,
      u"sakura"_s,
      u"roxterm"_s,
      u"termite"_s,
      u"pterm"_s,
      u"mlterm"_s,
      u"black box"_s,
      u"com.raggesilver.blackbox"_s,
  };
  return terminals.contains(className.toLower());
}

}  // namespace lumeno
