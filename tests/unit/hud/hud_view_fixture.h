#pragma once

#include <QAccessible>
#include <QGuiApplication>
#include <QQuickItem>
#include <QtTest/QTest>
#include <optional>

#include "hud/hud_view.h"
#include "unit/hud/hud_fixture.h"
#include "view_kit/view_kit.h"

namespace lumeno {

using namespace Qt::StringLiterals;

/// What the toolkit had to complain about.
inline QStringList warnings;

inline void collectWarnings(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type != QtDebugMsg && type != QtInfoMsg) warnings += message;
}

/// A real window, filled from the real model.
class HudViewTest : public HudFixture {
 protected:
  HudViewTest() {
    warnings.clear();
    // The size that the design is drawn at; pictures in any other font on request.
    QFont font = QGuiApplication::font();
    font.setFamily(qEnvironmentVariable("LUMENO_PICTURES_FONT", font.family()));
    font.setPixelSize(14);
    QGuiApplication::setFont(font);
    previousHandler_ = qInstallMessageHandler(collectWarnings);
    appearance.set({.reduceMotion = true, .accent = {}});  // pictures of what everything comes to rest at
    panelWindow.onFrame = [this](const Rect& frame) {
      window.resize(static_cast<int>(frame.width), static_cast<int>(frame.height));
    };
    view.emplace(window, panel, model, scheduler);
  }
  ~HudViewTest() override {
    EXPECT_EQ(warnings, QStringList());
    qInstallMessageHandler(previousHandler_);
  }

  void offerFour() {
    offer({suggestion(IntentKind::reply, u"Draft a reply"_s,
                      u"The selection looks like a message that wants a response."_s),
           suggestion(IntentKind::tone, u"Make it professional"_s,
                      u"Rewrite in a polished, professional tone."_s),
           suggestion(IntentKind::grammar, u"Fix spelling & grammar"_s,
                      u"Correct mistakes without changing the meaning."_s),
           suggestion(IntentKind::explain, u"Explain simply"_s, u"Break this down in plain language."_s)});
  }
  /// Shows the panel and lets the window draw.
  void showWindow() {
    showPanel();
    window.show();
    scheduler.advance(100);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  void press(int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
             bool isRepeat = false) {
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text, isRepeat);
    QGuiApplication::sendEvent(&window, &down);
    scheduler.advance(0);
  }
  [[nodiscard]] QQuickItem* named(const QString& name) const {
    if (!window.rootObject()) return nullptr;
    const auto items = window.rootObject()->findChildren<QQuickItem*>();
    for (QQuickItem* item : items) {
      if (item->isVisible() && item->property("text").toString() == name) return item;
    }
    return nullptr;
  }
  /// What assistive technology knows under this name; null when it is not to be seen.
  [[nodiscard]] QQuickItem* accessible(const QString& name) const {
    return window.rootObject() ? accessibleIn(*window.rootObject(), name) : nullptr;
  }
  void click(const QString& name) {
    const QQuickItem* item = accessible(name);
    ASSERT_TRUE(item) << name.toStdString();
    const QPointF middle = item->mapToScene({item->width() / 2, item->height() / 2});
    QTest::mouseClick(&window, Qt::LeftButton, {}, middle.toPoint());
    scheduler.advance(0);
  }
  void picture(const QString& name) {
    const QString folder = qEnvironmentVariable("LUMENO_PICTURES");
    const QImage image = window.grabWindow();
    EXPECT_FALSE(image.isNull());
    if (!folder.isEmpty()) image.save(u"%1/%2.png"_s.arg(folder, name));
  }

  Theme theme{settings, appearance};
  ViewKit kit{theme};
  HudWindow window{kit};
  std::optional<HudView> view;

 private:
  static QQuickItem* accessibleIn(const QQuickItem& item, const QString& name) {
    for (QQuickItem* child : item.childItems()) {
      // What fades away is no longer there.
      if (!child->isVisible() || (!child->isEnabled() && !item.isEnabled())) continue;
      const auto* told = QAccessible::queryAccessibleInterface(child);
      if (told && told->text(QAccessible::Name) == name) return child;
      if (QQuickItem* found = accessibleIn(*child, name)) return found;
    }
    return nullptr;
  }

  QtMessageHandler previousHandler_ = nullptr;
};

}  // namespace lumeno
