#include "view_kit/accent.h"

#include <algorithm>
#include <cmath>

namespace lumeno {

namespace {

constexpr double textContrast = 4.5;
constexpr double lineContrast = 3.0;
constexpr float lightnessStep = 0.04F;
// A colour changed further than this is no longer the user's: then the other colour of text is tried.
constexpr int maxFillSteps = 5;

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor withLightness(const QColor& color, float change) {
  float h = 0;
  float s = 0;
  float l = 0;
  color.getHslF(&h, &s, &l);
  return QColor::fromHslF(std::max(h, 0.0F), s, std::clamp(l + change, 0.0F, 1.0F)).toRgb();
}

/// `color`, moved in steps until it stands out from `other`; absent when that takes more than `maxSteps`.
std::optional<QColor> moved(const QColor& color, const QColor& other, double wanted, float step,
                            int maxSteps) {
  for (int i = 0; i <= maxSteps; ++i) {
    const QColor candidate = withLightness(color, step * static_cast<float>(i));
    if (contrast(candidate, other) >= wanted) return candidate;
  }
  return std::nullopt;
}

AccentColors fromDesktop(const QColor& accent, bool dark, const QColor& card) {
  constexpr int allTheWay = 25;
  const QColor white = Qt::white;
  const QColor ink(0x17, 0x18, 0x1C);
  const float towardsVisible = dark ? lightnessStep : -lightnessStep;
  AccentColors colors;
  colors.line = moved(accent, card, lineContrast, towardsVisible, allTheWay).value_or(accent);
  if (const auto fill = moved(accent, white, textContrast, -lightnessStep, maxFillSteps)) {
    colors.fill = *fill;
    colors.onFill = white;
  } else {
    colors.fill = moved(accent, ink, textContrast, lightnessStep, allTheWay).value_or(accent);
    colors.onFill = ink;
  }
  return colors;
}

struct ThemeRow {
  QRgb fill;
  QRgb onFill;
  QRgb lightLine;
  QRgb darkLine;
};

ThemeRow row(AccentTheme theme) {
  switch (theme) {
    case AccentTheme::system:
      return {0xFF2B66DC, 0xFFFFFFFF, 0xFF2B66DC, 0xFF7DB0FF};
    case AccentTheme::blue:
      return {0xFF1D62E6, 0xFFFFFFFF, 0xFF1D62E6, 0xFF7DB0FF};
    case AccentTheme::indigo:
      return {0xFF5450D6, 0xFFFFFFFF, 0xFF5450D6, 0xFFA6A5FF};
    case AccentTheme::purple:
      return {0xFF8B3FC9, 0xFFFFFFFF, 0xFF8B3FC9, 0xFFD29BFA};
    case AccentTheme::pink:
      return {0xFFC92C70, 0xFFFFFFFF, 0xFFC92C70, 0xFFFF8ABA};
    case AccentTheme::teal:
      return {0xFF0B7987, 0xFFFFFFFF, 0xFF0B7987, 0xFF54C6D2};
    case AccentTheme::orange:
      return {0xFFF59A2E, 0xFF2A1600, 0xFFB35200, 0xFFFFA24A};
  }
  Q_UNREACHABLE();
}

}  // namespace

double contrast(const QColor& a, const QColor& b) {
  const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

AccentColors accentColors(AccentTheme theme, std::optional<QRgb> desktopAccent, bool dark,
                          const QColor& card) {
  if (theme == AccentTheme::system && desktopAccent) return fromDesktop(QColor(*desktopAccent), dark, card);
  const ThemeRow colors = row(theme);
  return {QColor(colors.fill), QColor(colors.onFill), QColor(dark ? colors.darkLine : colors.lightLine)};
}

}  // namespace lumeno
