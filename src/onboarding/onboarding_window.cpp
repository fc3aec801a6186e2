#include "onboarding/onboarding_window.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

#include "onboarding/scenery_provider.h"
#include "view_kit/icon_renderer.h"
#include "view_kit/view_kit.h"

// Outside every namespace, as the macro demands.
static void initializeResources() {
  Q_INIT_RESOURCE(onboarding);
}

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize usualSize(1120, 740);
constexpr QSize leastSize(920, 640);
constexpr int titleBarRoom = 40;  // for the frame, whose size nobody knows before the window is there

}  // namespace

OnboardingWindow::OnboardingWindow(ViewKit& kit, const OnboardingServices& services,
                                   std::function<void()> onFinish)
    : QQuickView(&kit.engine(), nullptr),
      kit_(kit),
      state_(services, std::move(onFinish)),
      demo_(services.scheduler) {
  setTitle(u"Welcome to Lumeno"_s);
  setIcon(programIcon());
  setResizeMode(QQuickView::SizeRootObjectToView);
  initializeResources();
  if (!kit.engine().imageProvider(u"scenery"_s)) {
    kit.engine().addImageProvider(u"scenery"_s, new SceneryProvider);
  }

  Theme& theme = kit.theme();
  const auto followMotion = [this, &theme] { demo_.setReduceMotion(theme.reduceMotion()); };
  connect(&theme, &Theme::reduceMotionChanged, this, followMotion);
  followMotion();
  connect(this, &QWindow::visibilityChanged, this, [this] { updateLive(); });

  setInitialProperties({{u"onboarding"_s, QVariant::fromValue(&state_)},
                        {u"demo"_s, QVariant::fromValue(&demo_)},
                        {u"host"_s, QVariant::fromValue(this)}});
  setSource(QUrl(u"qrc:/lumeno/onboarding/qml/OnboardingView.qml"_s));
}

OnboardingWindow::~OnboardingWindow() {
  // The views go before what they show.
  setSource({});
}

void OnboardingWindow::open() {
  const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
  const QSize room(area.width(), area.height() - titleBarRoom);
  setMinimumSize(leastSize.boundedTo(room));
  QRect frame(QPoint(), usualSize.boundedTo(room));
  frame.moveCenter(area.center());
  frame.moveTop(std::max(frame.top(), area.top() + titleBarRoom));
  setGeometry(frame);
  show();
}

void OnboardingWindow::bringToFront() {
  if (windowStates() & Qt::WindowMinimized) setWindowStates(windowStates() & ~Qt::WindowMinimized);
  raise();
  requestActivate();
}

void OnboardingWindow::beginMove() {
  grip_ = QCursor::pos() - framePosition();
}

void OnboardingWindow::continueMove() {
  setFramePosition(QCursor::pos() - grip_);
}

bool OnboardingWindow::event(QEvent* event) {
  if (event->type() == QEvent::ApplicationFontChange) kit_.theme().updateMetrics();
  const bool handled = QQuickView::event(event);
  if (event->type() == QEvent::Close && event->isAccepted()) Q_EMIT closed();
  return handled;
}

void OnboardingWindow::exposeEvent(QExposeEvent* event) {
  QQuickView::exposeEvent(event);
  updateLive();
}

void OnboardingWindow::updateLive() {
  const bool live = isExposed() && visibility() != QWindow::Hidden && visibility() != QWindow::Minimized;
  if (live == isLive_) return;
  isLive_ = live;
  demo_.setRunning(live);
  Q_EMIT liveChanged();
}

}  // namespace lumeno
