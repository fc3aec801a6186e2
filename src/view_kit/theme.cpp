#include "view_kit/theme.h"

#include <QGuiApplication>
#include <QQuickTextDocument>
#include <QTextBlock>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>

namespace lumeno {

Theme::Theme(SettingsStore& settings, Appearance& appearance)
    : settings_(settings), appearance_(appearance), colors_(paletteFor(choice_)) {
  updateMetrics();
  subscriptions_.push_back(settings.accentTheme.subscribe([this](AccentTheme) { updateColors(); }));
  subscriptions_.push_back(settings.glassIntensity.subscribe([this](GlassIntensity) { updateColors(); }));
  subscriptions_.push_back(
      appearance.preferences().subscribe([this](const AppearancePreferences& preferences) {
        updateColors();
        if (preferences.reduceMotion == reduceMotion_) return;
        reduceMotion_ = preferences.reduceMotion;
        Q_EMIT reduceMotionChanged();
      }));
}

void Theme::setBackdrop(Backdrop backdrop) {
  backdrop_ = backdrop;
  updateColors();
}

void Theme::updateColors() {
  const AppearancePreferences& preferences = appearance_.preferences().get();
  const PaletteChoice choice{.dark = preferences.dark,
                             .backdrop = preferences.highContrast ? Backdrop::opaque : backdrop_,
                             .intensity = settings_.glassIntensity.get(),
                             .accent = settings_.accentTheme.get(),
                             .desktopAccent = preferences.accent};
  if (choice == choice_) return;
  choice_ = choice;
  colors_ = paletteFor(choice);
  Q_EMIT colorsChanged();
}

void Theme::updateMetrics() {
  const Metrics metrics = metricsFor(QGuiApplication::font());
  if (metrics == metrics_) return;
  metrics_ = metrics;
  Q_EMIT metricsChanged();
}

void Theme::applyLineHeight(QQuickTextDocument* document, int pixels) const {
  QTextDocument& text = *document->textDocument();
  // Applying it counts as a change of the text, at which it is asked for again.
  if (text.firstBlock().blockFormat().lineHeight() == pixels) return;
  QTextCursor cursor(&text);
  cursor.select(QTextCursor::Document);
  QTextBlockFormat format;
  format.setLineHeight(pixels, QTextBlockFormat::MinimumHeight);
  // Nobody has asked for it, so it is nothing to undo.
  const bool canUndo = text.isUndoRedoEnabled();
  if (!text.isUndoAvailable()) text.setUndoRedoEnabled(false);
  cursor.mergeBlockFormat(format);
  text.setUndoRedoEnabled(canUndo);
}

}  // namespace lumeno
