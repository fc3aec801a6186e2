#include "view_kit/theme.h"

#include <gtest/gtest.h>

#include <QGuiApplication>

#include "support/fake_appearance.h"
#include "support/fake_login_item.h"
#include "support/fake_preferences.h"

using namespace Qt::StringLiterals;

namespace lumeno {
namespace {

QColor laidOver(const QColor& layer, const QColor& base) {
  const float a = layer.alphaF();
  return QColor::fromRgbF(layer.redF() * a + base.redF() * (1 - a),
                          layer.greenF() * a + base.greenF() * (1 - a),
                          layer.blueF() * a + base.blueF() * (1 - a));
}

TEST(PaletteTest, TextCanBeReadInEveryLook) {
  for (const bool dark : {false, true}) {
    for (const Backdrop backdrop : {Backdrop::opaque, Backdrop::translucent, Backdrop::blurred}) {
      for (const GlassIntensity intensity : {GlassIntensity::regular, GlassIntensity::clear}) {
        for (const AccentTheme accent : allAccentThemes) {
          const Palette p = paletteFor({.dark = dark,
                                           .backdrop = backdrop,
                                           .intensity = intensity,
                                           .accent = accent,
                                           .desktopAccent = {}});
          SCOPED_TRACE(testing::Message()
                       << "dark " << dark << " backdrop " << static_cast<int>(backdrop) << " intensity "
                       << static_cast<int>(intensity) << " accent " << static_cast<int>(accent));
          // Over the worst that can stand behind: the opposite of the scheme.
          const QColor behind = dark ? Qt::white : Qt::black;
          const QColor card = laidOver(p.card, behind);
          const QColor chip = laidOver(p.glass, card);
          EXPECT_GE(contrast(p.label, chip), 4.5);
          EXPECT_GE(contrast(p.secondary, chip), 4.5);
          EXPECT_GE(contrast(p.tertiary, card), accent == AccentTheme::system ? 4.5 : 4.0);
          EXPECT_GE(contrast(p.tertiary, chip), 3.0);
          EXPECT_GE(contrast(p.onAccent, p.accentFill), 4.5);
          EXPECT_GE(contrast(p.accentLine, p.cardFade), 3.0);
        }
      }
    }
  }
}

TEST(PaletteTest, OnlyAnAccentOfOurOwnTintsTheCard) {
  const QColor plain(0xF5, 0xF5, 0xF9);
  const auto card = [](AccentTheme accent) {
    return paletteFor({.backdrop = Backdrop::opaque, .accent = accent, .desktopAccent = 0xFFE01B24}).card;
  };
  EXPECT_EQ(card(AccentTheme::system).rgb(), plain.rgb());
  // A tenth of the way to the theme's line colour.
  EXPECT_NEAR(card(AccentTheme::pink).green(), 0xF5 + (0x2C - 0xF5) * 0.10, 1);
}

TEST(AccentTest, EveryDesktopAccentBecomesUsable) {
  const QColor lightCard(0xF5, 0xF5, 0xF9);
  const QColor darkCard(0x25, 0x26, 0x2C);
  for (int red = 0; red <= 255; red += 51) {
    for (int green = 0; green <= 255; green += 51) {
      for (int blue = 0; blue <= 255; blue += 51) {
        for (const bool dark : {false, true}) {
          const QColor& card = dark ? darkCard : lightCard;
          const AccentColors colors = accentColors(AccentTheme::system, qRgb(red, green, blue), dark, card);
          SCOPED_TRACE(testing::Message() << red << "," << green << "," << blue << " dark " << dark);
          EXPECT_GE(contrast(colors.fill, colors.onFill), 4.5);
          EXPECT_GE(contrast(colors.line, card), 3.0);
        }
      }
    }
  }
}

TEST(AccentTest, KeepsADesktopAccentThatIsGoodAndPrefersWhiteText) {
  const QColor card(0xF5, 0xF5, 0xF9);
  const QRgb good = qRgb(0x81, 0x3D, 0x9C);
  EXPECT_EQ(accentColors(AccentTheme::system, good, false, card).fill.rgb(), good);
  EXPECT_EQ(accentColors(AccentTheme::system, good, false, card).line.rgb(), good);
  // A usual desktop blue is a little too light for white: it gets darker, and stays blue.
  const AccentColors blue = accentColors(AccentTheme::system, qRgb(0x35, 0x84, 0xE4), false, card);
  EXPECT_EQ(blue.onFill, QColor(Qt::white));
  EXPECT_NEAR(blue.fill.hslHue(), QColor(0x35, 0x84, 0xE4).hslHue(), 3);
  // White on yellow would need a brown.
  EXPECT_NE(accentColors(AccentTheme::system, qRgb(0xF6, 0xD3, 0x2D), false, card).onFill, QColor(Qt::white));
}

class ThemeTest : public testing::Test {
 protected:
  FakePreferences preferences;
  FakeLoginItem loginItem;
  SettingsStore settings{preferences, loginItem};
  FakeAppearance appearance;
  Theme theme{settings, appearance};
};

TEST_F(ThemeTest, FollowsDesktopSettingsAndWindowSystem) {
  int changes = 0;
  QObject::connect(&theme, &Theme::colorsChanged, &theme, [&changes] { ++changes; });
  const Palette light = theme.colors();
  appearance.set({.dark = true, .accent = {}});
  EXPECT_EQ(changes, 1);
  EXPECT_NE(theme.colors(), light);
  appearance.set({.dark = true, .accent = {}});
  EXPECT_EQ(changes, 1) << "nothing has changed";

  theme.setBackdrop(Backdrop::blurred);
  EXPECT_NEAR(theme.colors().card.alphaF(), 0.88, 0.01);
  settings.glassIntensity.set(GlassIntensity::clear);
  EXPECT_NEAR(theme.colors().card.alphaF(), 0.78, 0.01);
  EXPECT_EQ(theme.colors().secondary, theme.colors().label);
  settings.accentTheme.set(AccentTheme::orange);
  EXPECT_EQ(theme.colors().accentFill.rgb(), 0xFFF59A2E);

  appearance.set({.dark = true, .highContrast = true, .accent = {}});
  EXPECT_EQ(theme.colors().card.alpha(), 255);
  EXPECT_TRUE(theme.isOpaque());
  appearance.set({.dark = true, .accent = {}});
  EXPECT_FALSE(theme.isOpaque());

  appearance.set({.reduceMotion = true, .accent = {}});
  EXPECT_TRUE(theme.reduceMotion());
}

TEST(MetricsTest, TextFollowsTheSystemFontAndKeepsItsFloors) {
  struct Case {
    double points;
    int callout, subheadline, caption, caption2;
  };
  for (const Case c : {Case{10, 13, 12, 11, 11}, Case{10.5, 14, 13, 12, 11}, Case{11, 15, 14, 13, 12},
                       Case{6, 13, 12, 11, 11}, Case{21, 28, 26, 24, 22}}) {
    QFont font = QGuiApplication::font();
    font.setPointSizeF(c.points);
    const Metrics m = metricsFor(font);
    SCOPED_TRACE(c.points);
    EXPECT_EQ(m.callout, c.callout);
    EXPECT_EQ(m.subheadline, c.subheadline);
    EXPECT_EQ(m.caption, c.caption);
    EXPECT_EQ(m.caption2, c.caption2);
    EXPECT_GE(m.textLine, m.callout * 1.4);
  }
}

}  // namespace
}  // namespace lumeno
