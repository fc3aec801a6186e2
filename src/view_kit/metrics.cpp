#include "view_kit/metrics.h"

#include <QFontMetricsF>
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
  m.textLine = lineHeight(systemFont, m.callout, 20.0 / 14);
  m.statusLine = lineHeight(systemFont, m.callout, 19.0 / 14);
  m.titleLine = lineHeight(systemFont, m.callout, 18.0 / 14);
  m.captionLine = lineHeight(systemFont, m.caption, 16.0 / 12);
  m.caption2Line = lineHeight(systemFont, m.caption2, 14.0 / 11);
  return m;
}

}  // namespace lumeno
