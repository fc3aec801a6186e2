#include "hud/hud_window.h"

#include <QCursor>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSurfaceFormat>
#include <cmath>

#include "hud/hud_resources.h"
#include "hud/hud_state.h"
#include "hud/hud_theme.h"
#include "hud/streaming_text.h"
#include "hud/surface_provider.h"
#include "hud/symbol_provider.h"

namespace lumeno {

using namespace Qt::StringLiterals;

HudWindow::HudWindow() {
  setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowStaysOnTopHint |
           Qt::WindowDoesNotAcceptFocus);
  setTitle(u"Lumeno"_s);
  setColor(Qt::transparent);
  QSurfaceFormat withAlpha = requestedFormat();
  withAlpha.setAlphaBufferSize(8);
  setFormat(withAlpha);
  setResizeMode(QQuickView::SizeRootObjectToView);

  qmlRegisterType<StreamingText>("Lumeno.Hud", 1, 0, "StreamingText");
  engine()->addImageProvider(u"symbol"_s, new SymbolProvider);
  engine()->addImageProvider(u"surface"_s, new SurfaceProvider);
}

void HudWindow::fill(HudState& state, HudTheme& theme) {
  initializeHudResources();
  theme_ = &theme;
  rootContext()->setContextProperty(u"hud"_s, &state);
  rootContext()->setContextProperty(u"theme"_s, &theme);
  rootContext()->setContextProperty(u"hudWindow"_s, this);
  setSource(QUrl(u"qrc:/lumeno/hud/qml/Hud.qml"_s));

  if (QQuickItem* root = rootObject()) {
    connect(root, &QQuickItem::implicitWidthChanged, this, &HudWindow::contentSizeChanged);
    connect(root, &QQuickItem::implicitHeightChanged, this, &HudWindow::contentSizeChanged);
    connect(root, &QQuickItem::widthChanged, this, &HudWindow::cardShapeChanged);
    connect(root, &QQuickItem::heightChanged, this, &HudWindow::cardShapeChanged);
    connect(root, SIGNAL(cardRadiusChanged()), this, SIGNAL(cardShapeChanged()));
  }
}

void HudWindow::clear() {
  setSource({});
  theme_ = nullptr;
}

Size HudWindow::contentSize() {
  Q_EMIT settling();
  const QQuickItem* root = rootObject();
  if (!root) return {};
  return {std::ceil(root->implicitWidth()), std::ceil(root->implicitHeight())};
}

QRectF HudWindow::cardRect() const {
  const QQuickItem* root = rootObject();
  if (!root) return {};
  const double outside = root->property("margin").toDouble() - 1;
  return QRectF(0, 0, root->width(), root->height()).adjusted(outside, outside, -outside, -outside);
}

double HudWindow::cardRadius() const {
  const QQuickItem* root = rootObject();
  return root ? root->property("cardRadius").toDouble() + 1 : 0;
}

void HudWindow::notePointer() {
  restingPointer_ = QCursor::pos();
}

bool HudWindow::pointerHasMoved() const {
  return QCursor::pos() != restingPointer_;
}

bool HudWindow::event(QEvent* event) {
  if (event->type() == QEvent::ApplicationFontChange && theme_) theme_->updateMetrics();
  return QQuickView::event(event);
}

}  // namespace lumeno
