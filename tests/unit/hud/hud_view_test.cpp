#include "hud/hud_view.h"

#include "hud/streaming_text.h"
#include "unit/hud/hud_view_fixture.h"

namespace lumeno {
namespace {

TEST_F(HudViewTest, EveryViewIsDrawnInBothSchemes) {
  const QString longText =
      u"A tide table lists, for one place, the times at which the sea stands highest and lowest on each day, "
      "together with the height of the water above a fixed mark.\n\nMost harbours see two high waters and "
      "two low "
      "waters in a little under twenty-five hours. The times slip by about fifty minutes a day because the "
      "moon "
      "moves along its orbit while the earth turns beneath it.\n\nAround full and new moon the range grows "
      "(spring "
      "tides); at the quarters it shrinks (neap tides). Wind and air pressure shift the water too."_s;
  struct View {
    QString name;
    std::function<void()> enter;
  };
  const std::vector<View> views = {
      {u"pill"_s,
       [this] {
         offerFour();
         model.isHintCollapsed.set(true);
       }},
      {u"pill-one"_s,
       [this] {
         offer({suggestion(IntentKind::link, u"Open link"_s)});
         model.isHintCollapsed.set(true);
       }},
      {u"pill-none"_s,
       [this] {
         offer({});
         model.isHintCollapsed.set(true);
       }},
      {u"chips"_s, [this] { offerFour(); }},
      {u"chips-keyboard"_s,
       [this] {
         offerFour();
         model.keyboardMode.set(true);
         model.selectedChipIndex.set(1);
       }},
      {u"chips-none"_s, [this] { offer({}, u"Terminal"_s); }},
      {u"skeleton"_s, [this] { generate({}); }},
      {u"streaming"_s,
       [this] {
         generate(
             u"Could you please send me the updated tide tables before our meeting? The print shop needs "
             "them as soon"_s);
       }},
      {u"streaming-long"_s, [this, longText] { generate(longText); }},
      {u"result"_s,
       [this] {
         model.usedAI.set(true);
         finish(
             u"Could you please send me the updated tide tables before our meeting? The print shop needs "
             "them as soon as possible."_s);
       }},
      {u"result-builtin-date"_s,
       [this] {
         finish(u"Added “Team sync” to Work on Nov 16, 2026 at 3:00 PM."_s, IntentKind::date,
                u"Added to Calendar"_s);
       }},
      {u"result-long"_s,
       [this, longText] {
         model.usedAI.set(true);
         finish(longText, IntentKind::explain, u"Explain simply"_s);
       }},
      {u"result-empty"_s, [this] { finish({}); }},
      {u"notice"_s,
       [this] { setPhase(phase::Notice{u"No selection found. Select some text, then press ⌥⌘Space."_s}); }},
  };
  for (const bool dark : {false, true}) {
    for (const View& each : views) {
      appearance.set({.dark = dark, .reduceMotion = true, .accent = {}});
      model.isHintCollapsed.set(false);
      model.keyboardMode.set(false);
      model.usedAI.set(false);
      each.enter();
      showWindow();
      SCOPED_TRACE(each.name.toStdString());
      EXPECT_EQ(window.width(), panelWindow.frame.width);
      EXPECT_GE(window.width(), 80);
      EXPECT_GE(window.height(), 58);
      EXPECT_EQ(window.contentSize(), (Size{panelWindow.frame.width, panelWindow.frame.height}));
      picture(each.name + (dark ? u"-dark"_s : u"-light"_s));
    }
  }
}

TEST_F(HudViewTest, StreamedTextIsFollowedToItsEnd) {
  QString text;
  for (int i = 0; i < 30; ++i) text += u"Line %1 of the result\n"_s.arg(i);
  for (const bool reduceMotion : {true, false}) {
    appearance.set({.reduceMotion = reduceMotion, .accent = {}});
    offerFour();
    generate({});
    showWindow();
    QTest::qWait(400);
    const auto viewport = [this] {
      const auto* stream = window.rootObject()->findChild<StreamingText*>();
      return stream ? stream->property("viewportY").toDouble() : -1;
    };
    generate(u"One line"_s);
    scheduler.advance(100);
    QTest::qWait(300);  // longer than any motion
    EXPECT_TRUE(QTest::qWaitFor([&] { return viewport() == 0; }, 20'000)) << viewport();
    generate(text);
    scheduler.advance(100);
    const auto isAtTheEnd = [&] {
      const auto* stream = window.rootObject()->findChild<StreamingText*>();
      return stream && stream->height() == 240 &&
             std::abs(viewport() - (stream->contentHeight() - 240)) <= 0.5;
    };
    EXPECT_TRUE(QTest::qWaitFor(isAtTheEnd, 20'000)) << viewport();
  }
}

TEST_F(HudViewTest, KeysDriveTheChips) {
  offerFour();
  showWindow();
  press(Qt::Key_Down);
  press(Qt::Key_2, u"2"_s);
  EXPECT_EQ(phaseName(model.phase.get()), u"suggestions"_s) << "keys count in keyboard mode only";

  model.keyboardMode.set(true);
  model.selectedChipIndex.set(0);
  showWindow();
  press(Qt::Key_Up);
  EXPECT_EQ(model.selectedChipIndex.get(), 3);
  ASSERT_TRUE(window.activeFocusItem());
  EXPECT_EQ(window.activeFocusItem()->property("title"), u"Explain simply"_s);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  EXPECT_EQ(model.selectedChipIndex.get(), 1);
  press(Qt::Key_5, u"5"_s);
  press(Qt::Key_0, u"0"_s);
  EXPECT_EQ(phaseName(model.phase.get()), u"suggestions"_s);
  press(Qt::Key_3, u"3"_s);
  const auto* running = std::get_if<phase::Generating>(&model.phase.get());
  ASSERT_TRUE(running);
  EXPECT_EQ(running->suggestion.title, u"Fix spelling & grammar"_s);

  press(Qt::Key_Escape);
  EXPECT_FALSE(model.selection.get());
}

TEST_F(HudViewTest, ReturnCopiesWhateverHasTheFocusAndSpacePressesIt) {
  offerFour();
  model.keyboardMode.set(true);
  finish(u"The result"_s);
  showWindow();
  const auto outlined = [this] {
    const QQuickItem* item = window.activeFocusItem();
    return item ? item->property("text").toString() : QString();
  };
  QStringList order;
  for (int i = 0; i < 4; ++i) {
    press(Qt::Key_Tab);
    order += outlined();
  }
  EXPECT_EQ(order, (QStringList{u"Back to suggestions"_s, u"Replace"_s, u"Copy"_s, u"Dismiss"_s}));
  press(Qt::Key_Backtab);
  EXPECT_EQ(outlined(), u"Copy"_s);
  press(Qt::Key_Backtab);
  press(Qt::Key_Backtab);
  press(Qt::Key_Space, u" "_s);
  EXPECT_EQ(phaseName(model.phase.get()), u"suggestions"_s) << "Space presses Back";

  finish(u"The result"_s);
  scheduler.advance(0);
  press(Qt::Key_Tab);
  press(Qt::Key_Enter);
  EXPECT_EQ(pasteboard.string(), u"The result"_s) << "Return copies, also from another button";
}

TEST_F(HudViewTest, ALongResultScrollsAndItsSelectionIsCopiedByKeys) {
  offerFour();
  model.keyboardMode.set(true);
  QString text;
  for (int i = 0; i < 40; ++i) text += u"Line %1 of the result\n"_s.arg(i);
  finish(text);
  showWindow();
  QQuickItem* body = named(text);
  ASSERT_TRUE(body);
  const double before = body->mapToScene({0, 0}).y();
  press(Qt::Key_PageDown);
  EXPECT_LT(body->mapToScene({0, 0}).y(), before - 100);
  press(Qt::Key_PageUp);
  EXPECT_EQ(body->mapToScene({0, 0}).y(), before);
  EXPECT_LT(window.height(), 400);
}

TEST_F(HudViewTest, APillUnderARestingPointerWaitsUntilThePointerMoves) {
  offerFour();
  model.isHintCollapsed.set(true);
  QCursor::setPos(window.position() + QPoint(40, 30));
  showWindow();
  QTest::mouseMove(&window, {40, 30});
  EXPECT_TRUE(model.isHintCollapsed.get());
  QCursor::setPos(window.position() + QPoint(44, 31));
  QTest::mouseMove(&window, {44, 31});
  EXPECT_FALSE(model.isHintCollapsed.get());
}

TEST_F(HudViewTest, ClicksRunChipsAndExpandThePill) {
  offerFour();
  model.isHintCollapsed.set(true);
  showWindow();
  QTest::mouseClick(&window, Qt::LeftButton, {}, {60, 30});
  EXPECT_FALSE(model.isHintCollapsed.get());
  scheduler.advance(0);
  EXPECT_EQ(window.width(), 380) << "the window follows";
  QTest::mouseClick(&window, Qt::LeftButton, {}, {100, 100});
  const auto* running = std::get_if<phase::Generating>(&model.phase.get());
  ASSERT_TRUE(running);
  EXPECT_EQ(running->suggestion.title, u"Draft a reply"_s);
}

TEST_F(HudViewTest, SelectingInAResultLeavesTheSelectionOfTheDesktopAlone) {
  offerFour();
  finish(u"Some words of a result"_s);
  showWindow();
  QQuickItem* body = named(u"Some words of a result"_s);
  ASSERT_TRUE(body);
  const QPoint start = body->mapToScene({2, 8}).toPoint();
  QTest::mousePress(&window, Qt::LeftButton, {}, start);
  QTest::mouseMove(&window, start + QPoint(30, 0));
  QTest::mouseMove(&window, start + QPoint(90, 0));
  QTest::mouseRelease(&window, Qt::LeftButton, {}, start + QPoint(90, 0));
  EXPECT_GT(body->property("selectedText").toString().size(), 5);
  EXPECT_FALSE(body->property("selectByMouse").toBool());
  picture(u"result-selection"_s);
}

TEST_F(HudViewTest, FollowsTheSystemFontWhileOpen) {
  offerFour();
  showWindow();
  const double before = panelWindow.frame.height;
  const QFont old = QGuiApplication::font();
  QFont large = old;
  large.setPointSizeF(18);
  QGuiApplication::setFont(large);
  QCoreApplication::processEvents();
  scheduler.advance(0);
  EXPECT_GT(panelWindow.frame.height, before * 1.2);
  picture(u"chips-large-font"_s);
  QGuiApplication::setFont(old);
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace lumeno
