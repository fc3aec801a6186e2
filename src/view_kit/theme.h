#pragma once

#include <QObject>

#include "base/observable.h"
#include "core/settings/settings_store.h"
#include "platform/appearance.h"
#include "view_kit/metrics.h"
#include "view_kit/palette.h"

class QQuickTextDocument;

namespace lumeno {

/// How the windows look and move, for QML: follows the desktop, the settings and the system font.
class Theme : public QObject {
  Q_OBJECT
  Q_PROPERTY(lumeno::Palette colors READ colors NOTIFY colorsChanged)
  Q_PROPERTY(lumeno::Metrics metrics READ metrics NOTIFY metricsChanged)
  Q_PROPERTY(bool dark READ isDark NOTIFY colorsChanged)
  Q_PROPERTY(bool opaque READ isOpaque NOTIFY colorsChanged)
  Q_PROPERTY(bool reduceMotion READ reduceMotion NOTIFY reduceMotionChanged)

 public:
  /// Both must outlive the theme.
  Theme(SettingsStore& settings, Appearance& appearance);

  [[nodiscard]] const Palette& colors() const { return colors_; }
  [[nodiscard]] const Metrics& metrics() const { return metrics_; }
  /// The desktop wants light text on dark.
  [[nodiscard]] bool isDark() const { return choice_.dark; }
  /// The card covers what is behind it and has no shadow.
  [[nodiscard]] bool isOpaque() const { return choice_.backdrop == Backdrop::opaque; }
  [[nodiscard]] bool reduceMotion() const { return reduceMotion_; }

  /// What the desktop can do for translucent windows; high contrast overrides it.
  void setBackdrop(Backdrop backdrop);
  /// Takes the text sizes from the application's font again.
  void updateMetrics();

  /// Gives every line of a text at least this height.
  Q_INVOKABLE void applyLineHeight(QQuickTextDocument* document, int pixels) const;

 Q_SIGNALS:
  void colorsChanged();
  void metricsChanged();
  void reduceMotionChanged();

 private:
  void updateColors();

  SettingsStore& settings_;
  Appearance& appearance_;
  Backdrop backdrop_ = Backdrop::translucent;
  PaletteChoice choice_;
  Palette colors_;
  Metrics metrics_;
  bool reduceMotion_ = false;
  std::vector<Subscription> subscriptions_;
};

}  // namespace lumeno
