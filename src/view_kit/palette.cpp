#include "view_kit/palette.h"

#include <array>

#include "records/intent_kind.h"

namespace lumeno {

namespace {

QColor rgba(int red, int green, int blue, double alpha) {
  QColor color(red, green, blue);
  color.setAlphaF(static_cast<float>(alpha));
  return color;
}
QColor white(double alpha) {
  return rgba(255, 255, 255, alpha);
}
QColor black(double alpha) {
  return rgba(0, 0, 0, alpha);
}
QColor opaque(QRgb rgb) {
  return QColor(rgb);
}
QColor at(QColor color, double alpha) {
  color.setAlphaF(static_cast<float>(alpha));
  return color;
}

/// `layer` laid over `base`, both of which may be translucent.
QColor over(const QColor& base, const QColor& layer) {
  const float a = layer.alphaF();
  const float b = base.alphaF() * (1 - a);
  const auto channel = [=](float below, float above) { return (below * b + above * a) / (a + b); };
  return QColor::fromRgbF(channel(base.redF(), layer.redF()), channel(base.greenF(), layer.greenF()),
                          channel(base.blueF(), layer.blueF()), a + b);
}

// In the order of `Tint`.
constexpr std::array<QRgb, 12> lightTints = {0xFFCF2438, 0xFF0A7684, 0xFF4F4AD0, 0xFF00806A,
                                             0xFFB95500, 0xFF1F62DB, 0xFF8A3BC6, 0xFF23803A,
                                             0xFF0A74A6, 0xFFC4286C, 0xFFA37000, 0xFF45464E};
constexpr std::array<QRgb, 12> darkTints = {0xFFFF7B80, 0xFF54C6D2, 0xFFA6A5FF, 0xFF5CDCBD,
                                            0xFFFFA24A, 0xFF7DB0FF, 0xFFD29BFA, 0xFF67D681,
                                            0xFF62CAF7, 0xFFFF8ABA, 0xFFF4CC4F, 0xFFCBCCD4};

QVariantMap tints(bool dark) {
  QVariantMap map;
  const auto& colors = dark ? darkTints : lightTints;
  for (size_t i = 0; i < colors.size(); ++i) map.insert(tintName(static_cast<Tint>(i)), QColor(colors[i]));
  return map;
}

Palette scheme(bool dark) {
  Palette p;
  p.label = opaque(dark ? 0xFFF5F5F8 : 0xFF17181C);
  p.secondary = opaque(dark ? 0xFFCFD0D8 : 0xFF45464E);
  p.tertiary = opaque(dark ? 0xFFB4B5BF : 0xFF5A5B65);
  p.quaternary = dark ? white(0.14) : rgba(20, 22, 31, 0.1);
  p.card = opaque(dark ? 0xFF25262C : 0xFFF5F5F9);
  p.cardEdge = dark ? black(0.55) : rgba(16, 18, 32, 0.17);
  p.cardRim = white(dark ? 0.13 : 0.85);
  p.cardRimTop = white(dark ? 0.20 : 1);
  p.shadowNear = dark ? black(0.40) : rgba(14, 16, 34, 0.12);
  p.shadowFar = dark ? black(0.45) : rgba(14, 16, 34, 0.20);
  p.glass = white(dark ? 0.08 : 0.70);
  p.glassHover = white(dark ? 0.13 : 0.98);
  p.glassPressed = dark ? white(0.055) : rgba(20, 22, 38, 0.075);
  p.glassEdge = dark ? white(0.09) : rgba(16, 18, 32, 0.09);
  p.glassEdgeHover = dark ? white(0.20) : rgba(16, 18, 32, 0.17);
  p.scrollThumb = dark ? white(0.34) : rgba(20, 22, 38, 0.34);
  p.switchTrack = dark ? white(0.22) : rgba(20, 22, 38, 0.26);
  p.switchEdge = dark ? white(0.30) : rgba(16, 18, 32, 0.30);
  p.switchKnob = opaque(dark ? 0xFFF4F4F7 : 0xFFFFFFFF);
  p.window = opaque(dark ? 0xFF1B1C20 : 0xFFF3F3F6);
  p.windowSecondary = p.secondary;
  p.windowTertiary = p.tertiary;
  p.titleArea = opaque(dark ? 0xFF232429 : 0xFFE9E9ED);
  p.group = opaque(dark ? 0xFF26272C : 0xFFFFFFFF);
  p.groupEdge = dark ? white(0.07) : rgba(16, 18, 32, 0.08);
  p.hairline = dark ? white(0.11) : rgba(16, 18, 32, 0.10);
  p.control = dark ? white(0.09) : opaque(0xFFFFFFFF);
  p.controlEdge = dark ? white(0.13) : rgba(16, 18, 32, 0.17);
  p.controlEdgeHover = dark ? white(0.22) : rgba(16, 18, 32, 0.27);
  p.field = dark ? black(0.26) : white(0.86);
  p.fieldEdge = dark ? white(0.16) : rgba(16, 18, 32, 0.16);
  p.menu = opaque(dark ? 0xFF2B2C32 : 0xFFFCFCFE);
  p.menuEdge = dark ? black(0.7) : rgba(16, 18, 32, 0.22);
  p.tooltip = opaque(dark ? 0xFF3A3B43 : 0xFF2B2C33);
  p.tooltipText = opaque(0xFFF4F4F7);
  p.well = dark ? black(0.28) : rgba(20, 22, 38, 0.05);
  p.wellEdge = dark ? white(0.07) : rgba(16, 18, 32, 0.06);
  p.done = opaque(dark ? 0xFF67D681 : 0xFF23803A);
  p.failed = opaque(dark ? 0xFFFF7B80 : 0xFFCF2438);
  p.caution = opaque(dark ? 0xFFFFA24A : 0xFFB95500);
  p.tints = tints(dark);
  return p;
}

double cardOpacity(const PaletteChoice& choice) {
  const bool clear = choice.intensity == GlassIntensity::clear;
  switch (choice.backdrop) {
    case Backdrop::opaque:
      return 1;
    case Backdrop::translucent:
      return clear ? 0.96 : 0.985;
    case Backdrop::blurred:
      return clear ? (choice.dark ? 0.78 : 0.74) : 0.88;
  }
  Q_UNREACHABLE();
}

}  // namespace

Palette paletteFor(const PaletteChoice& choice) {
  Palette p = scheme(choice.dark);
  const QColor solid = p.card;
  const AccentColors accent = accentColors(choice.accent, choice.desktopAccent, choice.dark, solid);
  p.accentFill = accent.fill;
  p.onAccent = accent.onFill;
  p.accentLine = accent.line;
  p.textSelection = at(accent.line, 0.30);
  // An accent of our own tints the whole card.
  const QColor tint = choice.accent == AccentTheme::system ? QColor(Qt::transparent) : at(accent.line, 0.10);
  p.card = over(at(solid, cardOpacity(choice)), tint);
  p.cardFade = over(solid, tint);
  p.wellFade = over(p.cardFade, p.well);
  if (choice.intensity == GlassIntensity::clear) {
    // More shows through, so every label moves up one step.
    p.tertiary = p.secondary;
    p.secondary = p.label;
  }
  return p;
}

}  // namespace lumeno
