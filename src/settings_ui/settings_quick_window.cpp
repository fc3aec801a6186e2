#include "settings_ui/settings_quick_window.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQuickItem>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "settings_ui/application_icon_provider.h"
#include "view_kit/icon_renderer.h"

// Outside every namespace, as the macro demands.
static void initializeResources() {
  Q_INIT_RESOURCE(settings_ui);
}

namespace lumeno {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int greatestHeight = 720;
constexpr int usualFrame = 48;  // what a desktop's own title bar and edges take together, at most

// A key of a recording reaches the recorder and the window on two ways. It may come to the window last.
constexpr auto lateKeys = 80ms;

// How long a recording waits for the keyboard.
constexpr auto longestActivation = 1s;

const QUrl viewUrl(u"qrc:/lumeno/settings_ui/qml/SettingsView.qml"_s);

}  // namespace

SettingsQuickWindow::SettingsQuickWindow(ViewKit& kit, Scheduler& scheduler,
                                         const SettingsState::Services& services)
    : QQuickView(&kit.engine(), nullptr), kit_(kit), scheduler_(scheduler), state_(services) {
  setFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
           Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
  setResizeMode(QQuickView::SizeRootObjectToView);
  initializeResources();
  kit.engine().addImageProvider(u"application"_s, new ApplicationIconProvider);

  const auto setWindowColor = [this] { setColor(kit_.theme().colors().window); };
  connect(&kit.theme(), &Theme::colorsChanged, this, setWindowColor);
  setWindowColor();
  setIcon(programIcon());
  const auto setTabTitle = [this] { setTitle(state_.tabName()); };
  connect(&state_, &SettingsState::tabChanged, this, setTabTitle);
  setTabTitle();
  connect(state_.recorder(), &ShortcutRecorder::isRecordingChanged, this, [this] { recordingChanged(); });
  connect(this, &QWindow::screenChanged, this, [this] { followScreen(); });
  keyboard_ = services.keyRecorder.windowWithKeyboard().subscribe([this](uint32_t window) {
    hasKeyboard_ = window != 0 && handle() && window == winId();
    state_.recorder()->setHasKeyboard(hasKeyboard_);
  });
  fill();
  followScreen();
}

SettingsQuickWindow::~SettingsQuickWindow() {
  // The views go before what they show.
  setSource({});
}

void SettingsQuickWindow::fill() {
  QQmlEngine& engine = kit_.engine();
  auto* context = new QQmlContext(engine.rootContext(), this);
  context->setContextProperty(u"settings"_s, &state_);
  auto* component = new QQmlComponent(&engine, viewUrl, this);
  setContent(viewUrl, component, component->create(context));
  if (const QQuickItem* root = rootObject()) {
    connect(root, &QQuickItem::implicitWidthChanged, this, [this] { fit(); });
    connect(root, &QQuickItem::implicitHeightChanged, this, [this] { fit(); });
  }
}

void SettingsQuickWindow::followScreen() {
  disconnect(roomChanges_);
  if (screen()) {
    roomChanges_ = connect(screen(), &QScreen::availableGeometryChanged, this, [this] { fit(); });
  }
  fit();
}

void SettingsQuickWindow::fit() {
  const QQuickItem* root = rootObject();
  if (!root || !screen()) return;
  const QSize room = screen()->availableSize();
  const QMargins frame = frameMargins();
  const int limit =
      std::min(greatestHeight, room.height() - std::max(usualFrame, frame.top() + frame.bottom()));
  const QSize size(std::min(static_cast<int>(std::ceil(root->implicitWidth())), room.width()),
                   std::min(static_cast<int>(std::ceil(root->implicitHeight())), limit));
  setMinimumSize(size);
  setMaximumSize(size);
  resize(size);
}

void SettingsQuickWindow::recordingChanged() {
  if (state_.recorder()->isRecording()) {
    recordingEnd_.cancel();
    keepsKeys_ = true;
    if (hasKeyboard_) return;
    requestActivate();
    recordingEnd_ = scheduler_.after(longestActivation, [this] {
      if (!hasKeyboard_) state_.recorder()->cancel();
    });
  } else {
    recordingEnd_ = scheduler_.after(lateKeys, [this] { keepsKeys_ = false; });
  }
}

// Nothing that is pressed for a recording does anything else in the window, and neither do the releases.
bool SettingsQuickWindow::isRecorded(const QKeyEvent& event) {
  const auto key = event.nativeScanCode() ? event.nativeScanCode() : static_cast<quint32>(event.key());
  const bool isKnown = recordedKeys_.contains(key);
  if (event.type() == QEvent::KeyRelease) {
    if (!event.isAutoRepeat()) recordedKeys_.remove(key);
    return isKnown || keepsKeys_;
  }
  if (isKnown && event.isAutoRepeat()) return true;
  if (event.type() == QEvent::KeyPress) {
    if (keepsKeys_) {
      recordedKeys_.insert(key);
    } else {
      recordedKeys_.remove(key);
    }
  }
  return keepsKeys_;
}

bool SettingsQuickWindow::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyRelease:
      if (!isRecorded(static_cast<QKeyEvent&>(*event))) break;
      event->accept();
      return true;
    case QEvent::KeyPress: {
      auto& key = static_cast<QKeyEvent&>(*event);
      if (isRecorded(key)) {
        event->accept();
        return true;
      }
      const bool isHandled = QQuickView::event(event);
      if (event->isAccepted()) return isHandled;
      const bool isClosing =
          key.key() == Qt::Key_Escape || (key.key() == Qt::Key_W && key.modifiers() == Qt::ControlModifier);
      // An Escape held down has closed a list or a sheet.
      if (isClosing && !key.isAutoRepeat()) {
        close();
        return true;
      }
      return isHandled;
    }
    case QEvent::Close: {
      const bool isHandled = QQuickView::event(event);
      if (event->isAccepted()) Q_EMIT closed();
      return isHandled;
    }
    case QEvent::ApplicationFontChange:
      kit_.theme().updateMetrics();
      break;
    default:
      break;
  }
  return QQuickView::event(event);
}

}  // namespace lumeno
