#include "core/app/tray.h"

#include <QGuiApplication>
#include <QPalette>

#include "view_kit/icon_renderer.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

const QUrl accessibilityPane(
    u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_s);

QIcon menuIcon(const QString& symbol) {
  return symbolIcon(symbol, {16, 22, 24, 32}, QGuiApplication::palette().color(QPalette::WindowText));
}

}  // namespace

Tray::Tray(AppModel& model, SettingsStore& settings, AccessibilityAuthorization& accessibility,
           UrlOpener& urlOpener, const Actions& actions)
    : model_(model), settings_(settings), accessibility_(accessibility), urlOpener_(urlOpener) {
  buildMenu(actions);
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

void Tray::buildMenu(const Actions& actions) {
  watching_ = menu_.addAction(menuIcon(u"checkmark.circle"_s), u"Watching for selections"_s);
  watching_->setEnabled(false);
  enableAccess_ = menu_.addAction(menuIcon(u"lock.open"_s), u"Enable Accessibility Access…"_s);
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
    auto* action = menu_.addAction(menuIcon(symbolName(backend)), displayLabel(backend));
    action->setCheckable(true);
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, action,
                     [this, backend] { settings_.backend.set(backend); });
    backends_.push_back(action);
  }
  modelLine_ = menu_.addAction(QString());
  modelLine_->setEnabled(false);
  fileActions_ = menu_.addAction(menuIcon(u"folder.badge.gearshape"_s), u"File actions on in Finder"_s);
  fileActions_->setEnabled(false);

  menu_.addSeparator();
  const auto add = [this](const QString& symbol, const QString& text, const QKeySequence& shortcut,
                          const std::function<void()>& action) {
    auto* entry = menu_.addAction(menuIcon(symbol), text);
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
  icon_.setIcon(menuIcon(symbol));
}

void Tray::updateBackend() {
  for (size_t i = 0; i < allAIBackends.size(); ++i) {
    backends_[i]->setChecked(allAIBackends[i] == settings_.backend.get());
  }
  modelLine_->setText(u"Using Ollama model: "_s + settings_.ollamaModel.get());
  modelLine_->setVisible(settings_.backend.get() == AIBackend::ollama);
}

}  // namespace lumeno
