#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQuickItem>
#include <QtTest/QTest>
#include <ctime>

#include "hud/hud_view.h"
#include "unit/hud/hud_fixture.h"
using namespace Qt::StringLiterals;
namespace lumeno { namespace {
class Measure : public HudFixture { protected:
  Measure() { 
    panelWindow.onFrame = [this](const Rect& f) { window.resize(int(f.width), int(f.height)); };
    view.emplace(window, panel, model, settings, appearance, scheduler); }
  HudWindow window; std::optional<HudView> view; };
double cpu() { return double(std::clock()) / CLOCKS_PER_SEC * 1000; }
TEST_F(Measure, Stream) {
  QElapsedTimer t; t.start();
  offer({suggestion(IntentKind::tone, u"A"_s, u"b"_s)});
  double c0 = cpu();
  showPanel(); window.show(); scheduler.advance(100); (void)QTest::qWaitForWindowExposed(&window);
  std::printf("first show %.1f ms cpu\n", cpu() - c0);
  generate({}); scheduler.advance(50); QTest::qWait(400);
  QString text; c0 = cpu(); int frames = 0;
  QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] { ++frames; });
  for (int i = 0; i < 300; ++i) {
    for (int k = 0; k < 5; ++k) { text += u"lorem ipsum dolor sit amet, words "_s; generate(text); }
    scheduler.advance(34);
    QTest::qWait(5);
    if (i % 60 == 59) { std::printf("step %d len %d frames %d cpu %.1f ms\n", i, int(text.size()), frames, cpu() - c0); c0 = cpu(); frames = 0; }
  }
  c0 = cpu();
  finish(text); scheduler.advance(0);
  std::printf("result of %d: sync %.1f ms\n", int(text.size()), cpu() - c0);
  QTest::qWait(600);
  std::printf("and all %.1f ms\n", cpu() - c0);
  c0 = cpu(); QTest::qWait(2000); std::printf("2 s idle %.1f ms\n", cpu() - c0);
  setPhase(phase::Suggestions{}); scheduler.advance(0); QTest::qWait(500);
  generate({}); scheduler.advance(0); QTest::qWait(500);
  c0 = cpu(); QTest::qWait(2000); std::printf("2 s skeleton %.1f ms\n", cpu() - c0);
}
}}
