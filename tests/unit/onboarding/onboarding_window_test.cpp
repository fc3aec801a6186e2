#include "onboarding/onboarding_window.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QQuickItem>
#include <QtTest/QTest>

#include "onboarding/onboarding_window_presenter.h"
#include "support/fake_appearance.h"
#include "unit/onboarding/onboarding_fixture.h"
#include "view_kit/view_kit.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using Status = CalendarStore::AuthorizationStatus;

QStringList warnings;

void collectWarnings(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  // There is nothing to be in front of without a display.
  if (!message.contains(u"does not support raise"_s)) warnings += message;
}

class OnboardingWindowTest : public OnboardingFixture {
 protected:
  OnboardingWindowTest() {
    warnings.clear();
    // The size that the design is drawn at; pictures in any other font on request.
    QFont font = QGuiApplication::font();
    font.setFamily(qEnvironmentVariable("LUMENO_PICTURES_FONT", font.family()));
    font.setPixelSize(14);
    QGuiApplication::setFont(font);
    theme.updateMetrics();
    previousHandler_ = qInstallMessageHandler(collectWarnings);
    appearance.set({.reduceMotion = true, .accent = {}});  // pictures of what everything comes to rest at
  }
  ~OnboardingWindowTest() override {
    EXPECT_EQ(warnings, QStringList());
    qInstallMessageHandler(previousHandler_);
  }

  OnboardingWindow& open() {
    presenter.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(presenter.window()));
    presenter.window()->resize(1120, 740);  // the screen of these tests is smaller
    QCoreApplication::processEvents();
    return *presenter.window();
  }
  void press(int key, bool isRepeat = false) {
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, {}, isRepeat);
    QGuiApplication::sendEvent(presenter.window(), &down);
    scheduler.advance(0);
  }
  /// Everything that assistive technology finds, by name; what is invisible is left out.
  static void collect(QAccessibleInterface* node, QHash<QString, QAccessibleInterface*>& found) {
    for (int i = 0; node && i < node->childCount(); ++i) {
      QAccessibleInterface* child = node->child(i);
      if (!child || child->state().invisible) continue;
      const QString name = child->text(QAccessible::Name);
      if (!name.isEmpty()) found.insert(name, child);
      collect(child, found);
    }
  }
  [[nodiscard]] static QHash<QString, QAccessibleInterface*> accessibles(
      const OnboardingWindowPresenter& shown) {
    QHash<QString, QAccessibleInterface*> found;
    collect(QAccessible::queryAccessibleInterface(shown.window()), found);
    return found;
  }
  [[nodiscard]] QHash<QString, QAccessibleInterface*> accessibles() const { return accessibles(presenter); }
  /// Presses a control as assistive technology does.
  void pressAccessible(const QString& name) {
    QAccessibleInterface* control = accessibles().value(name);
    ASSERT_TRUE(control && control->actionInterface()) << name.toStdString();
    control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    scheduler.advance(0);
  }
  [[nodiscard]] QString focusedName() const {
    QAccessibleInterface* focused =
        QAccessible::queryAccessibleInterface(presenter.window()->activeFocusItem());
    return focused ? focused->text(QAccessible::Name) : QString();
  }
  void picture(const QString& name) {
    const QString folder = qEnvironmentVariable("LUMENO_PICTURES");
    const QImage image = presenter.window()->grabWindow();
    EXPECT_FALSE(image.isNull());
    if (!folder.isEmpty()) image.save(u"%1/%2.png"_s.arg(folder, name));
  }

  FakeAppearance appearance;
  Theme theme{settings, appearance};
  ViewKit kit{theme};
  OnboardingWindowPresenter presenter{kit, services};

 private:
  QtMessageHandler previousHandler_ = nullptr;
};

TEST_F(OnboardingWindowTest, EverySceneIsDrawnInBothSchemes) {
  settings.resultSoundEnabled.set(false);
  loginItem.enabled = true;
  settings.launchAtLogin.set(true);
  for (const bool dark : {false, true}) {
    appearance.set({.dark = dark, .reduceMotion = true, .accent = {}});
    OnboardingWindow& window = open();
    EXPECT_EQ(window.title(), u"Welcome to Lumeno"_s);
    const QString scheme = dark ? u"-dark"_s : u"-light"_s;
    calendars.status = Status::notDetermined;
    const QStringList scenes = {u"welcome"_s, u"capabilities"_s, u"permission"_s, u"personalize"_s,
                                u"ready"_s};
    for (const QString& scene : scenes) {
      scheduler.advance(10);
      picture(scene + scheme);
      window.state().move(1);
    }
    window.close();
    scheduler.advance(0);
  }
}

TEST_F(OnboardingWindowTest, EveryStateOfRowsAndNotesIsDrawn) {
  for (const bool dark : {false, true}) {
    appearance.set({.dark = dark, .reduceMotion = true, .accent = {}});
    const QString scheme = dark ? u"-dark"_s : u"-light"_s;
    OnboardingWindow& window = open();
    window.state().move(1);
    calendars.status = Status::denied;
    window.state().move(1);
    urlOpener.succeeds = false;
    window.state().permissions()->primeFinder();
    scheduler.advance(0);
    window.state().permissions()->useCalendar();
    scheduler.advance(0);
    picture(u"permission-denied"_s + scheme);
    accessibility.grantsOnRequest = true;
    window.state().permissions()->grantAccessibility();
    calendars.status = Status::granted;
    window.state().move(-1);
    window.state().move(1);
    window.state().permissions()->grantAccessibility();
    scheduler.advance(0);
    picture(u"permission-granted"_s + scheme);
    window.state().move(1);
    settings.backend.set(AIBackend::ollama);
    pressAccessible(u"AI backend"_s);
    picture(u"personalize-menu"_s + scheme);
    isTrayShown = false;
    launcher.succeeds = false;
    window.state().move(1);
    window.state().openTextEdit();
    scheduler.advance(0);
    picture(u"ready-notes"_s + scheme);
    window.close();
    scheduler.advance(0);
    accessibility.trusted = false;
    scheduler.advance(1000);
  }
}

TEST_F(OnboardingWindowTest, EveryPhaseOfTheDemoIsDrawn) {
  for (const bool dark : {false, true}) {
    appearance.set({.dark = dark, .accent = {}});
    OnboardingWindow& window = open();
    QHash<QString, int> seen;
    for (int i = 0; i < 300; ++i) {
      const QString name = u"demo-%1-%2"_s.arg(window.demo().scenarioName(), window.demo().phaseName());
      if (++seen[name] == 4) {
        if (qEnvironmentVariableIsSet("LUMENO_PICTURES")) QTest::qWait(260);  // longer than any motion
        picture(name + (dark ? u"-dark"_s : u"-light"_s));
      }
      scheduler.advance(100);
    }
    EXPECT_EQ(seen.size(), 16);
    window.close();
    scheduler.advance(0);
  }
}

TEST_F(OnboardingWindowTest, FitsIntoASmallWindow) {
  OnboardingWindow& window = open();
  for (const QSize size : {QSize(920, 640), QSize(700, 480)}) {
    window.resize(size);
    while (window.state().canGoBack()) window.state().move(-1);
    window.state().move(1);
    window.state().move(1);
    QTest::qWait(50);
    picture(u"small-%1"_s.arg(size.width()));
    const auto found = accessibles();
    const QRect frame(window.position(), size);
    EXPECT_TRUE(frame.contains(found[u"Personalize"_s]->rect()));
    EXPECT_TRUE(frame.contains(found[u"Set up later"_s]->rect()));
  }
  // What the focus reaches comes into view.
  QStringList order;
  do {
    press(Qt::Key_Tab);
    order << focusedName();
  } while (order.last() != u"Allowed"_s && order.size() < 9);
  EXPECT_TRUE(QRect(window.position(), window.size()).contains(accessibles()[u"Allowed"_s]->rect()));
}

TEST_F(OnboardingWindowTest, ReturnGoesOnWhateverHasTheFocusAndFinishesInTheEnd) {
  open();
  EXPECT_FALSE(accessibles().contains(u"Back"_s));
  press(Qt::Key_Return);
  press(Qt::Key_Return, true);
  EXPECT_EQ(presenter.window()->state().sceneIndex(), 1) << "a held key goes on once";
  press(Qt::Key_Tab);
  EXPECT_FALSE(focusedName().isEmpty());
  press(Qt::Key_Enter);
  press(Qt::Key_Return);
  EXPECT_EQ(presenter.window()->state().scene(), OnboardingState::Scene::personalize);
  press(Qt::Key_Return);
  EXPECT_EQ(presenter.window()->state().scene(), OnboardingState::Scene::ready);
  EXPECT_FALSE(accessibles().contains(u"Set up later"_s));
  EXPECT_FALSE(settings.hasCompletedOnboarding.get());
  press(Qt::Key_Return);
  EXPECT_TRUE(settings.hasCompletedOnboarding.get());
  EXPECT_FALSE(presenter.window());
}

TEST_F(OnboardingWindowTest, EveryControlIsPressedOverAccessibility) {
  open();
  EXPECT_EQ(accessibles()[u"Select text.\nAct instantly."_s]->role(), QAccessible::Heading);
  pressAccessible(u"Get started"_s);
  pressAccessible(u"Back"_s);
  pressAccessible(u"Get started"_s);
  pressAccessible(u"Set permissions"_s);
  calendars.status = Status::notDetermined;
  pressAccessible(u"Grant Accessibility Access"_s);
  EXPECT_EQ(accessibility.trustRequests, 1);
  pressAccessible(u"Prime"_s);
  EXPECT_EQ(fileManager.reads.size(), 1u);
  EXPECT_TRUE(accessibles().contains(u"Primed"_s));
  pressAccessible(u"Personalize"_s);
  for (const QString& name : {u"Enable file actions"_s, u"Launch at login"_s, u"Result sound"_s, u"Haptics"_s,
                              u"Summon shortcut"_s, u"Keyboard navigation"_s}) {
    const bool before = accessibles()[name]->state().checked;
    pressAccessible(name);
    EXPECT_NE(accessibles()[name]->state().checked, before) << name.toStdString();
  }
  EXPECT_TRUE(settings.resultSoundEnabled.get());
  pressAccessible(u"AI backend"_s);
  pressAccessible(u"Ollama (your models)"_s);
  EXPECT_EQ(settings.backend.get(), AIBackend::ollama);
  pressAccessible(u"Finish setup"_s);
  pressAccessible(u"Open TextEdit to try"_s);
  pressAccessible(u"Open Finder"_s);
  EXPECT_EQ(launcher.textEditors + launcher.homeFolders, 2);
  pressAccessible(u"Start using Lumeno"_s);
  EXPECT_TRUE(settings.hasCompletedOnboarding.get());
}

TEST_F(OnboardingWindowTest, WhatIsNotThereIsNotOffered) {
  services.fileManager = nullptr;
  services.calendarStore = nullptr;
  OnboardingWindowPresenter without(kit, services);
  without.show();
  OnboardingState& state = without.window()->state();
  QStringList names;
  while (state.scene() != OnboardingState::Scene::ready) {
    state.move(1);
    names += accessibles(without).keys();
  }
  EXPECT_TRUE(names.contains(u"Accessibility access"_s));
  EXPECT_TRUE(names.contains(u"Startup & feedback"_s));
  for (const QString& name : {u"Finder Automation"_s, u"Calendar write access"_s, u"Enable file actions"_s}) {
    EXPECT_FALSE(names.contains(name)) << name.toStdString();
  }
}

TEST_F(OnboardingWindowTest, TheDemoAndTheDotsAreHiddenFromAccessibility) {
  OnboardingWindow& window = open();
  for (const QString& name : accessibles().keys()) {
    EXPECT_FALSE(window.demo().answer.contains(name) || name == u"Copy"_s || name == u"Mail"_s)
        << name.toStdString();
  }
}

TEST_F(OnboardingWindowTest, ThePickerIsOpenedBySpaceOrAClickAndArrowsChoose) {
  OnboardingWindow& window = open();
  for (int i = 0; i < 3; ++i) window.state().move(1);
  while (focusedName() != u"AI backend"_s) press(Qt::Key_Tab);
  press(Qt::Key_Space);
  press(Qt::Key_Down);
  press(Qt::Key_Escape);
  EXPECT_EQ(settings.backend.get(), AIBackend::appleIntelligence);
  press(Qt::Key_Space);
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_EQ(settings.backend.get(), AIBackend::ollama);
  EXPECT_EQ(window.state().scene(), OnboardingState::Scene::personalize) << "Return was the menu's";

  const QRect picker = accessibles()[u"AI backend"_s]->rect();
  QTest::mouseClick(&window, Qt::LeftButton, {}, picker.center() - window.position());
  press(Qt::Key_Up);
  press(Qt::Key_Return);
  EXPECT_EQ(settings.backend.get(), AIBackend::appleIntelligence);
  const QPoint option(picker.center().x(), picker.bottom() + 4 + 5 + 45);
  QTest::mouseClick(&window, Qt::LeftButton, {}, picker.center() - window.position());
  QTest::mouseClick(&window, Qt::LeftButton, {}, option - window.position());
  EXPECT_EQ(settings.backend.get(), AIBackend::ollama);
}

TEST_F(OnboardingWindowTest, ThereIsOneWindowAndEachOpeningIsFresh) {
  OnboardingWindow* first = &open();
  first->state().move(1);
  presenter.show();
  EXPECT_EQ(presenter.window(), first);
  EXPECT_EQ(first->state().sceneIndex(), 1);
  first->close();
  EXPECT_FALSE(presenter.window());
  EXPECT_FALSE(settings.hasCompletedOnboarding.get()) << "closing is not finishing";
  EXPECT_EQ(open().state().sceneIndex(), 0);
  pressAccessible(u"Set up later"_s);
  EXPECT_TRUE(settings.hasCompletedOnboarding.get());
  EXPECT_FALSE(presenter.window());
}

TEST_F(OnboardingWindowTest, NothingMovesWhileItCannotBeSeen) {
  appearance.set({.accent = {}});
  OnboardingWindow& window = open();
  EXPECT_TRUE(window.isLive());
  const std::size_t pending = scheduler.pendingCount();
  window.hide();
  EXPECT_FALSE(window.isLive());
  EXPECT_EQ(scheduler.pendingCount(), pending - 1);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  EXPECT_TRUE(window.isLive());
}

}  // namespace
}  // namespace lumeno
