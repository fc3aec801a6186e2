#include "view_kit/metrics.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace lumeno {

namespace {

int rounded(double value) {
  return static_cast<int>(std::lround(value));
}

/// The line height that goes with a text size, never so low that lines of this font would touch.
int lineHeight(const QFont& systemFont, int pixelSize, double ratio) {
  QFont font = systemFont;
  font.setPixelSize(pixelSize);
  return std::max(rounded(pixelSize * ratio), static_cast<int>(std::floor(QFontMetricsF(font).height())));
}

/// Sizes of fonts in whole pixels alone would be too coarse here: the size goes by way of points.
QFont fixedFont(double pixelSize) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  QFont font(QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
  font.setStyleHint(QFont::Monospace);
  font.setPointSizeF(pixelSize * 72 / (screen ? screen->logicalDotsPerInchY() : 96));
  return font;
}

}  // namespace

Metrics metricsFor(const QFont& systemFont) {
  const double system =
      systemFont.pixelSize() > 0 ? systemFont.pixelSize() : systemFont.pointSizeF() * 96 / 72;
  const auto role = [system](double ratio, int floor) { return std::max(rounded(system * ratio), floor); };
  Metrics m;
  m.family = systemFont.family();
  m.callout = role(1.0, 13);
  m.subheadline = role(0.93, 12);
  m.caption = role(0.86, 11);
  m.caption2 = role(0.79, 11);
  m.lead = role(1.14, 14);
  m.headingSmall = role(2.14, 26);
  m.heading = role(2.57, 31);
  m.headingLarge = role(3.29, 40);
  const double mono = std::max(std::round(system * 0.89 * 2) / 2, 12.0);
  m.mono = fixedFont(mono);
  m.monoLine = std::max(rounded(mono * 18 / 12.5), static_cast<int>(QFontMetricsF(m.mono).height()));
  m.textLine = lineHeight(systemFont, m.callout, 20.0 / 14);
  m.statusLine = lineHeight(systemFont, m.callout, 19.0 / 14);
  m.titleLine = lineHeight(systemFont, m.callout, 18.0 / 14);
  m.captionLine = lineHeight(systemFont, m.caption, 16.0 / 12);
  m.caption2Line = lineHeight(systemFont, m.caption2, 14.0 / 11);
  m.subheadlineLine = lineHeight(systemFont, m.subheadline, 18.0 / 13);
  m.leadLine = lineHeight(systemFont, m.lead, 24.0 / 16);
  m.headingSmallLine = rounded(m.headingSmall * 36.0 / 30);
  m.headingLine = rounded(m.heading * 42.0 / 36);
  m.headingLargeLine = rounded(m.headingLarge * 52.0 / 46);
  return m;
}

}  // namespace lumeno
