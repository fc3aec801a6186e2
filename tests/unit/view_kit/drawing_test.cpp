#include <gtest/gtest.h>

#include "view_kit/icon_renderer.h"
#include "view_kit/surface_painter.h"
#include "records/intent_kind.h"
#include "support/print_text.h"

using namespace Qt::StringLiterals;

namespace lumeno {
namespace {

int drawnPixels(const QImage& image, const QColor& color) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y) == color) ++count;
    }
  }
  return count;
}

TEST(SymbolTest, EverySymbolInUseIsThere) {
  QStringList names = {
      u"sparkles"_s,     u"text.cursor"_s,          u"xmark"_s,      u"arrow.forward"_s,
      u"chevron.left"_s, u"text.badge.checkmark"_s, u"doc.on.doc"_s, u"arrow.left.arrow.right"_s,
      u"scope"_s,        u"checkmark.circle"_s};
  for (const IntentKind kind : allIntentKinds) names += symbolName(kind);
  for (const QString& name : names) {
    const QColor color(0x1F, 0x62, 0xDB);
    const int regular = drawnPixels(symbolImage(name, color, {48, 48}), color);
    const int bold = drawnPixels(symbolImage(name, color, {48, 48}, SymbolWeight::bold), color);
    EXPECT_GT(regular, 40) << name.toStdString();
    EXPECT_GE(bold, regular) << name.toStdString();
  }
  EXPECT_EQ(symbolImage(u"no.such.symbol"_s, Qt::red, {20, 20}).pixelColor(10, 10).alpha(), 0);
}

TEST(SymbolTest, TheTraySubduesTheSecondLayer) {
  const QColor white = Qt::white;
  const QImage equal = symbolImage(u"scope"_s, white, {44, 44});
  const QImage subdued =
      symbolImage(u"scope"_s, white, {44, 44}, SymbolWeight::regular, SymbolLayers::subdued);
  EXPECT_LT(drawnPixels(subdued, white), drawnPixels(equal, white));
  EXPECT_GT(drawnPixels(subdued, white), 0);
}

TEST(SurfaceTest, TheShadowLiesOnlyOutside) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    const QColor fill(245, 245, 249, 128);
    const QImage image = surfaceImage({.size = {80, 60},
                                       .radius = 24,
                                       .margin = 10,
                                       .fill = fill,
                                       .nearShadow = QColor(0, 0, 0, 100),
                                       .farShadow = QColor(0, 0, 0, 100)},
                                      scale);
    const auto at = [&](double x, double y) {
      return image.pixelColor(static_cast<int>(x * scale), static_cast<int>(y * scale));
    };
    EXPECT_EQ(image.width(), 100 * scale);
    EXPECT_EQ(image.height(), 80 * scale);
    EXPECT_EQ(at(50, 40).alpha(), 128);
    EXPECT_EQ(at(50, 68).alpha(), 128) << "just inside the lower edge";
    EXPECT_GT(at(50, 71).alpha(), 30);
    EXPECT_GT(at(50, 72).alpha(), at(50, 7).alpha()) << "it falls downwards";
    EXPECT_LT(at(50, 79.4).alpha(), 12) << "it ends within the margin";
    EXPECT_EQ(at(0, 0).alpha(), 0);
  }
}

TEST(SurfaceTest, LinesAreWholeDevicePixels) {
  const QColor line(10, 20, 30);
  const auto thickness = [&](double scale) {
    const QImage image = surfaceImage(
        {.size = {60, 60}, .radius = 14, .margin = 0, .fill = Qt::white, .innerEdge = line}, scale);
    int count = 0;
    while (image.pixelColor(image.width() / 2, count) == line) ++count;
    EXPECT_EQ(image.pixelColor(image.width() / 2, count), QColor(Qt::white)) << "no half-covered pixel";
    return count;
  };
  EXPECT_EQ(thickness(1), 1);
  EXPECT_EQ(thickness(1.5), 1);
  EXPECT_EQ(thickness(2), 2);
}

}  // namespace
}  // namespace lumeno
