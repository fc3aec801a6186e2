#include <QClipboard>
#include <QProcess>

#include "support/wait_until.h"
#include "unit/hud/hud_view_fixture.h"

namespace lumeno {
namespace {

// On a desktop where what one application selects is offered to all others.
class SelectionsTest : public HudViewTest {
 protected:
  void show() {
    panel.show(Rect{600, 500, 200, 20}, true, true, true);
    window.show();
    scheduler.advance(0);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    ASSERT_TRUE(clipboard().supportsSelection());
  }
  static QClipboard& clipboard() { return *QGuiApplication::clipboard(); }
  void drag(QPoint start, QPoint end) {
    QTest::mousePress(&window, Qt::LeftButton, {}, start);
    QTest::mouseMove(&window, start + (end - start) / 2);
    QTest::mouseMove(&window, end);
    QTest::mouseRelease(&window, Qt::LeftButton, {}, end);
  }
};

TEST_F(SelectionsTest, SelectingInTheRequestOffersNothing) {
  openFiles().instruction.set(u"some words to select"_s);
  show();
  QQuickItem* field = accessible(u"Request"_s);
  ASSERT_TRUE(field);
  const auto selected = [field] { return field->property("selectedText").toString(); };
  struct Way {
    int key;
    Qt::KeyboardModifiers modifiers;
    QString selected;
  };
  const std::vector<Way> ways = {
      {Qt::Key_Left, Qt::ShiftModifier, u"t"_s},
      {Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier, u"select"_s},
      {Qt::Key_Right, Qt::ShiftModifier, u"elect"_s},
      {Qt::Key_Home, Qt::ShiftModifier, u"some words to select"_s},
      {Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier, u"words to select"_s},
      {Qt::Key_Up, Qt::ShiftModifier, u"some words to select"_s},
      {Qt::Key_Down, Qt::ShiftModifier, QString()},
      {Qt::Key_A, Qt::ControlModifier, u"some words to select"_s},
  };
  for (const Way& way : ways) {
    press(way.key, {}, way.modifiers);
    EXPECT_EQ(selected(), way.selected);
    EXPECT_FALSE(clipboard().ownsSelection()) << way.key;
  }
  const QPoint start = field->mapToScene({14, 17}).toPoint();
  drag(start, start + QPoint(60, 0));
  EXPECT_FALSE(selected().isEmpty());
  QTest::mouseDClick(&window, Qt::LeftButton, {}, start + QPoint(4, 0));
  EXPECT_EQ(selected(), u"some"_s);
  EXPECT_FALSE(clipboard().ownsSelection());
  press(Qt::Key_C, {}, Qt::ControlModifier);
  EXPECT_EQ(clipboard().text(), u"some"_s) << "copying is something else";
}

TEST_F(SelectionsTest, TheRequestTakesNothingThatIsSelectedElsewhere) {
  QProcess owner;
  owner.start(u"xclip"_s, {u"-selection"_s, u"primary"_s, u"-i"_s, u"-quiet"_s});
  ASSERT_TRUE(owner.waitForStarted());
  owner.write("from elsewhere");
  owner.closeWriteChannel();
  ASSERT_TRUE(waitUntil([] { return clipboard().text(QClipboard::Selection) == u"from elsewhere"_s; }));
  FileActionSession& session = openFiles();
  session.instruction.set(u"kept"_s);
  show();
  QQuickItem* field = accessible(u"Request"_s);
  ASSERT_TRUE(field);
  QTest::mouseClick(&window, Qt::MiddleButton, {}, field->mapToScene({40, 15}).toPoint());
  press(Qt::Key_Insert, {}, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(session.instruction.get(), u"kept"_s);
  owner.kill();
  owner.waitForFinished();
}

TEST_F(SelectionsTest, SelectingInTheOutputOffersNothing) {
  openFiles(FileActionSession::Stage::Result{{{}, u"some output"_s, {}, 0, false}});
  show();
  const QQuickItem* output = accessible(u"some output"_s);
  ASSERT_TRUE(output);
  const QPoint start = output->mapToScene({1, 8}).toPoint();
  drag(start, start + QPoint(300, 0));
  EXPECT_TRUE(output->property("hasSelection").toBool());
  EXPECT_FALSE(clipboard().ownsSelection());
  press(Qt::Key_C, {}, Qt::ControlModifier);
  EXPECT_EQ(clipboard().text(), u"some output"_s);
}

}  // namespace
}  // namespace lumeno
