#include "hud/hud_window.h"

#include <QCursor>
#include <QQmlContext>
#include <QQuickItem>
#include <QSurfaceFormat>
#include <cmath>

#include "hud/hud_state.h"
#include "hud/long_text_view.h"
#include "hud/streaming_text.h"
#include "hud/text_keys.h"
#include "view_kit/view_kit.h"

// Outside every namespace, as the macro demands.
static void initializeResources() {
  Q_INIT_RESOURCE(hud);
}

namespace lumeno {

using namespace Qt::StringLiterals;

HudWindow::HudWindow(ViewKit& kit) : QQuickView(&kit.engine(), nullptr), kit_(kit) {
  setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowStaysOnTopHint |
           Qt::WindowDoesNotAcceptFocus);
  setTitle(u"Lumeno"_s);
  setColor(Qt::transparent);
  QSurfaceFormat withAlpha = requestedFormat();
  withAlpha.setAlphaBufferSize(8);
  setFormat(withAlpha);
  setResizeMode(QQuickView::SizeRootObjectToView);

  qmlRegisterType<StreamingText>("Lumeno.Hud", 1, 0, "StreamingText");
  qmlRegisterType<LongTextView>("Lumeno.Hud", 1, 0, "LongTextView");
  qmlRegisterType<TextKeys>("Lumeno.Hud", 1, 0, "TextKeys");
  initializeResources();
}

void HudWindow::fill(HudState& state) {
  rootContext()->setContextProperty(u"hud"_s, &state);
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
  if (event->type() == QEvent::ApplicationFontChange) kit_.theme().updateMetrics();
  return QQuickView::event(event);
}

}  // namespace lumeno
