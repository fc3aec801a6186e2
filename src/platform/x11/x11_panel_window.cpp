#include "platform/x11/x11_panel_window.h"

#include <QEasingCurve>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickItem>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "platform/x11/x11_toolkit.h"

namespace lumeno {

namespace {

// Whether a field for text lies at a point of the window.
bool hasFieldAt(const QQuickItem& item, QPointF scenePoint) {
  if (!item.isVisible() || !item.isEnabled()) return false;
  const bool isInside = item.contains(item.mapFromScene(scenePoint));
  if (isInside && item.flags().testFlag(QQuickItem::ItemAcceptsInputMethod)) return true;
  if (!isInside && item.clip()) return false;
  const auto children = item.childItems();
  return std::any_of(children.begin(), children.end(),
                     [&](const QQuickItem* child) { return hasFieldAt(*child, scenePoint); });
}

QEasingCurve easeOut() {
  QEasingCurve curve(QEasingCurve::BezierSpline);
  curve.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
  return curve;
}

QRect between(const QRect& start, const QRect& end, double progress) {
  const auto at = [progress](int from, int to) {
    return static_cast<int>(std::lround(from + (to - from) * progress));
  };
  return {at(start.x(), end.x()), at(start.y(), end.y()), at(start.width(), end.width()),
          at(start.height(), end.height())};
}

}  // namespace

X11PanelWindow::X11PanelWindow(X11Connection& connection, QQuickWindow& window, X11Screens& screens,
                               OwnWindows& ownWindows, std::function<PanelShape()> shape)
    : connection_(connection),
      window_(window),
      screens_(screens),
      compositor_(connection),
      shape_(connection, window, std::move(shape)),
      keyboard_(connection, ownWindows, window) {
  window_.installEventFilter(this);
  connect(&window_, &QWindow::widthChanged, this, &X11PanelWindow::invalidateShape);
  connect(&window_, &QWindow::heightChanged, this, &X11PanelWindow::invalidateShape);
  for (QVariantAnimation* animation : {&move_, &fade_}) {
    animation->setStartValue(0.0);
    animation->setEndValue(1.0);
  }
  move_.setEasingCurve(easeOut());
  connect(&move_, &QVariantAnimation::valueChanged, this, [this](const QVariant& progress) {
    applyGeometry(between(moveStart_, moveEnd_, progress.toDouble()));
  });
  connect(&fade_, &QVariantAnimation::valueChanged, this,
          [this](const QVariant& progress) { applyAlpha(fadeStart_ * (1 - progress.toDouble())); });
  connect(&fade_, &QVariantAnimation::finished, this, [this] {
    if (const auto done = std::exchange(onFaded_, nullptr)) done();
  });
  compositorChanges_ = compositor_.seeThrough().subscribe([this](const auto&) { renewShape(); });
  // The window manager stacks its windows without regard to ours.
  const xcb_atom_t stacking = connection_.atom("_NET_CLIENT_LIST_STACKING");
  connection_.addWindowEventMask(connection_.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
  stackingChanges_ = connection_.onEvent(XCB_PROPERTY_NOTIFY, [this, stacking](const auto& event) {
    const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (property.window == connection_.root() && property.atom == stacking && isVisible()) raise();
  });
}

void X11PanelWindow::setKeyEligible(bool eligible) {
  isKeyEligible_ = eligible;
  if (!eligible) keyboard_.giveBack();
}

bool X11PanelWindow::isVisible() const {
  return window_.isVisible();
}

void X11PanelWindow::orderFrontRegardless() {
  renewShape();
  window_.show();
  raise();
}

void X11PanelWindow::raise() {
  const uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(toolkitConnection(), static_cast<xcb_window_t>(window_.winId()),
                       XCB_CONFIG_WINDOW_STACK_MODE, &above);
  xcb_flush(toolkitConnection());
}

void X11PanelWindow::orderOut() {
  keyboard_.giveBack();
  onFaded_ = nullptr;
  fade_.stop();
  move_.stop();
  window_.hide();
  xcb_flush(toolkitConnection());
}

void X11PanelWindow::activateAndMakeKey() {
  if (isVisible()) keyboard_.take();
}

QRect X11PanelWindow::toolkitGeometry(const Rect& frame) {
  const Rect device = screens_.toDevice(frame);
  // The toolkit counts from the corner of each screen, in its logical pixels.
  const QScreen* screen = QGuiApplication::primaryScreen();
  for (const QScreen* candidate : QGuiApplication::screens()) {
    const QRectF native(candidate->geometry().topLeft(),
                        candidate->geometry().size() * candidate->devicePixelRatio());
    if (native.contains(QPointF(device.midX(), device.midY()))) screen = candidate;
  }
  const double scale = screen ? screen->devicePixelRatio() : 1;
  const QPoint corner = screen ? screen->geometry().topLeft() : QPoint();
  const auto pixels = [scale](double value) { return static_cast<int>(std::lround(value / scale)); };
  return {corner.x() + pixels(device.x - corner.x()), corner.y() + pixels(device.y - corner.y()),
          std::max(1, pixels(device.width)), std::max(1, pixels(device.height))};
}

void X11PanelWindow::setFrame(const Rect& frame, std::chrono::milliseconds duration) {
  move_.stop();
  const QRect geometry = toolkitGeometry(frame);
  if (duration.count() <= 0 || !isVisible()) {
    applyGeometry(geometry);
    return;
  }
  moveStart_ = geometry_;
  moveEnd_ = geometry;
  move_.setDuration(static_cast<int>(duration.count()));
  move_.start();
}

void X11PanelWindow::applyGeometry(const QRect& geometry) {
  geometry_ = geometry;
  window_.setGeometry(geometry);
}

void X11PanelWindow::setAlpha(double alpha) {
  onFaded_ = nullptr;
  fade_.stop();
  applyAlpha(alpha);
}

void X11PanelWindow::applyAlpha(double alpha) {
  alpha_ = alpha;
  window_.setOpacity(alpha);
  xcb_flush(toolkitConnection());
}

void X11PanelWindow::fadeOut(std::chrono::milliseconds duration, std::function<void()> done) {
  keyboard_.giveBack();
  onFaded_ = nullptr;
  fade_.stop();
  onFaded_ = std::move(done);
  fadeStart_ = alpha_;
  fade_.setDuration(compositor_.isPresent() ? static_cast<int>(duration.count()) : 1);
  fade_.start();
}

void X11PanelWindow::invalidateShape() {
  // The content follows the window's size within this turn of the event loop, often in several steps.
  if (std::exchange(isShapeDirty_, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (isShapeDirty_) renewShape();
      },
      Qt::QueuedConnection);
}

void X11PanelWindow::renewShape() {
  isShapeDirty_ = false;
  shape_.apply(compositor_.isPresent());
}

bool X11PanelWindow::eventFilter(QObject* watched, QEvent* event) {
  // Before the press is delivered, so that the field finds itself in a window that has the keyboard.
  if (watched == &window_ && event->type() == QEvent::MouseButtonPress && isKeyEligible_ &&
      hasFieldAt(*window_.contentItem(), static_cast<const QMouseEvent*>(event)->position())) {
    activateAndMakeKey();
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace lumeno
