#include "core/app/tray.h"

#include <QPainter>

#include "view_kit/icon_renderer.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

const QUrl accessibilityPane(
    u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_s);

constexpr int iconSizes[] = {16, 22, 24, 32};  // device pixels

/// The installed icon of a symbol, which the desktop draws in the colour of its own text; null where the
/// program is not installed.
QIcon installedIcon(const QString& symbol) {
  const QString name = u"org.lumeno.Lumeno-%1-symbolic"_s.arg(symbol);
  // Asked for a name that is not there, the toolkit may find a shorter one.
  return QIcon::hasThemeIcon(name) ? QIcon::fromTheme(name) : QIcon();
}

/// Where it is not installed it has a thin edge: nobody tells what colour panels and their menus have.
QIcon iconOf(const QString& symbol, const QColor& color) {
  const QIcon installed = installedIcon(symbol);
  if (!installed.isNull()) return installed;
  const QColor edgeColor = color.lightness() < 128 ? Qt::white : Qt::black;
  QIcon icon;
  for (const int size : iconSizes) {
    const auto layer = [&](const QColor& ink) {
      return symbolImage(symbol, ink, {size, size}, SymbolWeight::regular, SymbolLayers::subdued);
    };
    const QImage edge = layer(edgeColor);
    QImage image(edge.size(), edge.format());
    image.fill(Qt::transparent);
    QPainter painter(&image);
    for (const QPoint offset : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)})
      painter.drawImage(offset, edge);
    painter.drawImage(QPoint(), layer(color));
    painter.end();
    icon.addPixmap(QPixmap::fromImage(image));
  }
  return icon;
}

}  // namespace

Tray::Tray(AppModel& model, SettingsStore& settings, AccessibilityAuthorization& accessibility,
           UrlOpener& urlOpener, Theme& theme, const Actions& actions)
    : model_(model),
      settings_(settings),
      accessibility_(accessibility),
      urlOpener_(urlOpener),
      theme_(theme) {
  buildMenu(actions);
  drawSymbols();
  QObject::connect(&theme_, &Theme::colorsChanged, &menu_, [this] { drawSymbols(); });
  icon_.setToolTip(u"Lumeno"_s);
  icon_.setContextMenu(&menu_);

  subscriptions_.push_back(accessibility_.isTrusted().subscribe([this](bool trusted) {
    watching_->setVisible(trusted);
    enableAccess_->setVisible(!trusted);
    accessNote_->setVisible(!trusted);
  }));
  subscriptions_.push_back(settings_.backend.subscribe([this](AIBackend) { updateBackend(); }));
  subscriptions_.push_back(settings_.ollamaModel.subscribe([this](const QString&) { updateBackend(); }));
  subscriptions_.push_back(
      settings_.fileActionsEnabled.subscribe([this](bool enabled) { fileActions_->setVisible(enabled); }));
  subscriptions_.push_back(model_.phase.subscribe([this](const HUDPhase&) { updateIcon(); }));
  subscriptions_.push_back(model_.isCapturing.subscribe([this](bool) { updateIcon(); }));
  subscriptions_.push_back(model_.fileSession.subscribe([this](const auto&) { updateIcon(); }));
  icon_.show();
}

void Tray::showMessage(const QString& text) {
  icon_.showMessage(u"Lumeno"_s, text);
}

bool Tray::handleShortcut(QKeyCombination keys) {
  for (QAction* entry : menu_.actions()) {
    if (entry->shortcut().isEmpty() || entry->shortcut() != QKeySequence(keys)) continue;
    entry->trigger();
    return true;
  }
  return false;
}

QAction* Tray::addEntry(const QString& symbol, const QString& text) {
  QAction* entry = menu_.addAction(text);
  entry->setData(symbol);
  return entry;
}

void Tray::drawSymbols() {
  if (theme_.colors().label == drawnColor_) return;
  drawnColor_ = theme_.colors().label;
  for (QAction* entry : menu_.actions()) {
    const QString symbol = entry->data().toString();
    if (!symbol.isEmpty()) entry->setIcon(iconOf(symbol, drawnColor_));
  }
  shownSymbol_.clear();
  updateIcon();
}

void Tray::buildMenu(const Actions& actions) {
  watching_ = addEntry(u"checkmark.circle"_s, u"Watching for selections"_s);
  watching_->setEnabled(false);
  enableAccess_ = addEntry(u"lock.open"_s, u"Enable Accessibility Access…"_s);
  QObject::connect(enableAccess_, &QAction::triggered, enableAccess_, [this] {
    accessibility_.requestAccess();
    urlOpener_.open(accessibilityPane, {});
  });
  accessNote_ = menu_.addAction(u"Required to read selected text and show suggestions."_s);
  accessNote_->setEnabled(false);

  menu_.addSeparator();
  auto* heading = menu_.addAction(u"Smart AI"_s);
  heading->setEnabled(false);
  auto* group = new QActionGroup(&menu_);
  for (const AIBackend backend : allAIBackends) {
    auto* action = addEntry(symbolName(backend), displayLabel(backend));
    action->setCheckable(true);
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, action,
                     [this, backend] { settings_.backend.set(backend); });
    backends_.push_back(action);
  }
  modelLine_ = menu_.addAction(QString());
  modelLine_->setEnabled(false);
  fileActions_ = addEntry(u"folder.badge.gearshape"_s, u"File actions on in Finder"_s);
  fileActions_->setEnabled(false);

  menu_.addSeparator();
  const auto add = [this](const QString& symbol, const QString& text, const QKeySequence& shortcut,
                          const std::function<void()>& action) {
    QAction* entry = addEntry(symbol, text);
    entry->setShortcut(shortcut);
    QObject::connect(entry, &QAction::triggered, entry, action);
  };
  add(u"sparkles"_s, u"Show Welcome..."_s, {}, actions.showWelcome);
  add(u"gearshape"_s, u"Settings…"_s, Qt::CTRL | Qt::Key_Comma, actions.showSettings);
  add(u"xmark.circle"_s, u"Quit Lumeno"_s, Qt::CTRL | Qt::Key_Q, actions.quit);
}

void Tray::updateIcon() {
  const QString symbol = model_.menuBarSymbol();
  // A streaming answer assigns the phase many times a second.
  if (symbol == shownSymbol_) return;
  shownSymbol_ = symbol;
  icon_.setIcon(iconOf(symbol, drawnColor_));
}

void Tray::updateBackend() {
  for (size_t i = 0; i < allAIBackends.size(); ++i) {
    backends_[i]->setChecked(allAIBackends[i] == settings_.backend.get());
  }
  modelLine_->setText(u"Using Ollama model: "_s + settings_.ollamaModel.get());
  modelLine_->setVisible(settings_.backend.get() == AIBackend::ollama);
}

}  // namespace lumeno
