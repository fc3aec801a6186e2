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
    setTextSize(14);  // which the design is drawn at
    previousHandler_ = qInstallMessageHandler(collectWarnings);
    appearance.set({.reduceMotion = true, .accent = {}});  // pictures of what everything comes to rest at
  }
  ~OnboardingWindowTest() override {
    EXPECT_EQ(warnings, QStringList());
    qInstallMessageHandler(previousHandler_);
  }

  /// In pixels; pictures in any other font on request.
  void setTextSize(int size) {
    QFont font = QGuiApplication::font();
    font.setFamily(qEnvironmentVariable("LUMENO_PICTURES_FONT", font.family()));
    font.setPixelSize(size);
    QGuiApplication::setFont(font);
    theme.updateMetrics();
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
  /// Everything that is shown beside the demo, which is one picture.
  [[nodiscard]] QList<QQuickItem*> shownItems() const {
    QList<QQuickItem*> items{presenter.window()->contentItem()};
    for (qsizetype i = 0; i < items.size(); ++i) {
      for (QQuickItem* child : items[i]->childItems()) {
        const bool isDemo = QByteArray(child->metaObject()->className()).startsWith("LiveDemoStage");
        if (child->isVisible() && !isDemo) items += child;
      }
    }
    return items;
  }
  /// The symbols of what is shown, by the property that has them.
  [[nodiscard]] QStringList symbols(const char* property) const {
    QStringList names;
    for (const QQuickItem* item : shownItems()) names += item->property(property).toString();
    return names;
  }
  /// That no text is cut off, squeezed, or under or beyond anything else.
  void expectEverythingFits(bool mayElide = false) const {
    for (const QQuickItem* item : shownItems()) {
      const QString text = item->property("text").toString();
      if (text.isEmpty()) continue;
      const QRectF place = item->boundingRect().translated(item->position());
      const QRectF room = item->parentItem()->boundingRect().adjusted(-1, -1, 1, 1);
      EXPECT_TRUE(room.contains(place)) << text.toStdString() << " is beyond its place";
      if (!item->inherits("QQuickText")) continue;
      EXPECT_LE(item->property("contentWidth").toReal(), item->width() + 1) << text.toStdString();
      EXPECT_LE(item->property("contentHeight").toReal(), item->height() + 1) << text.toStdString();
      for (const QQuickItem* other : item->parentItem()->childItems()) {
        const bool isSolid = other->inherits("QQuickText") || other->inherits("QQuickImage");
        if (other == item || !isSolid || !other->isVisible()) continue;
        const QRectF taken = other->boundingRect().translated(other->position());
        EXPECT_FALSE(place.adjusted(1, 1, -1, -1).intersects(taken)) << text.toStdString();
      }
      if (mayElide) continue;
      EXPECT_FALSE(item->property("truncated").toBool()) << text.toStdString();
      const bool isWrapped = item->property("lineCount").toInt() > 1;
      EXPECT_TRUE(!isWrapped || item->width() >= 180) << text.toStdString() << " has no room for its words";
    }
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
    const auto isInFrame = [&](const QString& name) {
      const QAccessibleInterface* const found = accessibles().value(name);
      return found && QRect(window.position(), size).contains(found->rect());
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return isInFrame(u"Personalize"_s); }, 20'000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return isInFrame(u"Set up later"_s); }, 20'000));
    picture(u"small-%1"_s.arg(size.width()));
  }
  // What the focus reaches comes into view.
  QStringList order;
  do {
    press(Qt::Key_Tab);
    order << focusedName();
  } while (order.last() != u"Allowed"_s && order.size() < 9);
  EXPECT_TRUE(QRect(window.position(), window.size()).contains(accessibles()[u"Allowed"_s]->rect()));
}

TEST_F(OnboardingWindowTest, LargeTextIsShownInFull) {
  for (const int size : {12, 17, 19, 24, 27}) {
    setTextSize(size);
    OnboardingWindow& window = open();
    calendars.status = Status::notDetermined;
    for (const AIBackend backend : allAIBackends) {
      settings.backend.set(backend);
      while (window.state().canGoBack()) window.state().move(-1);
      for (int scene = 0; scene < window.state().sceneCount(); ++scene) {
        scheduler.advance(10);
        picture(u"text-%1-%2"_s.arg(size).arg(scene));  // also brings the layout up to date
        SCOPED_TRACE(testing::Message() << size << " pixels, scene " << scene);
        expectEverythingFits();
        window.state().move(1);
      }
    }
    // With less room, text gives way to what stands beside it.
    window.state().move(-1);
    window.resize(300, 640);
    QCoreApplication::processEvents();
    picture(u"text-%1-narrow"_s.arg(size));
    expectEverythingFits(true);
    window.close();
    scheduler.advance(0);
  }
}

TEST_F(OnboardingWindowTest, AButtonThatGoesOrRestsLeavesTheKeysToTheWindow) {
  OnboardingWindow& window = open();
  const auto enterPermissions = [&] {
    while (window.state().canGoBack()) window.state().move(-1);
    window.state().move(1);
    window.state().move(1);
    scheduler.advance(0);
  };
  const auto focus = [&](const QString& name) {
    for (int i = 0; i < 9 && focusedName() != name; ++i) press(Qt::Key_Tab);
    EXPECT_EQ(focusedName(), name);
  };
  calendars.status = Status::notDetermined;
  enterPermissions();
  calendars.answerTime = std::chrono::milliseconds(50);
  focus(u"Allow"_s);
  press(Qt::Key_Space);
  EXPECT_EQ(calendars.requests, 1);
  press(Qt::Key_Return);
  EXPECT_EQ(window.state().scene(), OnboardingState::Scene::personalize) << "while it is asked for";
  scheduler.advance(100);

  enterPermissions();
  scheduler.advance(100);
  focus(u"Allow"_s);
  press(Qt::Key_Space);
  EXPECT_NE(focusedName(), u"Allow"_s);
  calendars.status = Status::granted;
  scheduler.advance(100);
  EXPECT_EQ(focusedName(), u"Allowed"_s) << "the focus comes back to the button";

  accessibility.grantsOnRequest = true;
  focus(u"Grant Accessibility Access"_s);
  press(Qt::Key_Space);
  ASSERT_TRUE(authorization.isTrusted().get());
  EXPECT_EQ(focusedName(), QString());
  press(Qt::Key_Space);
  EXPECT_EQ(accessibility.trustRequests, 1) << "the button has gone";
  press(Qt::Key_Return);
  EXPECT_EQ(window.state().scene(), OnboardingState::Scene::personalize);
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

TEST_F(OnboardingWindowTest, EverySceneSaysAllOfItsText) {
  const struct {
    QStringList texts, icons, symbols;  // icons are on tiles
  } scenes[] = {
      {{u"Lumeno"_s, u"Select text.\nAct instantly."_s,
        u"A floating panel appears right above your selection, with AI actions ranked for that exact moment. "
        u"No "
        "manual copy-paste. No app switching."_s,
        u"Everything runs on this Mac by default."_s, u"Set up later"_s},
       {},
       {u"lock.shield"_s}},
      {{u"What it can do"_s, u"One HUD for text,\nfiles, and dates."_s, u"Built-in and custom text actions"_s,
        u"Select text to fix grammar, rewrite tone, summarize, explain code, define words, translate, draft "
        "replies, or run your own prompts."_s,
        u"A calmer hover mode"_s,
        u"A small hint pill appears by your selection — hover or click to expand the full HUD, so there's "
        u"zero "
        "visual noise until you want it."_s,
        u"Finder file actions"_s,
        u"Select files in Finder, describe the job, then review the generated shell command before it runs."_s,
        u"Smart quick actions"_s,
        u"Links, emails, phone numbers, addresses, and dates become direct actions without waiting for AI."_s,
        u"Back"_s, u"Set up later"_s},
       {u"selection.pin.in.out"_s, u"cursorarrow.motionlines"_s, u"folder.fill.badge.gearshape"_s,
        u"calendar.badge.plus"_s},
       {u"chevron.left"_s}},
      {{u"Permissions"_s, u"Permission-light,\nprivacy clear."_s,
        u"Accessibility powers the core HUD. Finder Automation and Calendar are optional prompts for file "
        "actions and event creation."_s,
        u"Accessibility access"_s,
        u"Required for reading selected text, positioning the HUD, and replacing text."_s,
        u"Grant Accessibility Access"_s, u"Finder Automation"_s,
        u"Needed only for Finder file selections. macOS may ask the first time Lumeno reads selected files."_s,
        u"Prime"_s, u"Calendar write access"_s,
        u"Optional. Grant now so date selections can add real events without another detour."_s, u"Allow"_s,
        u"Clipboard capture is used only when you press the summon hotkey in apps that hide selection "
        u"details. "
        "The pasteboard is restored immediately."_s,
        u"Back"_s, u"Set up later"_s},
       {u"accessibility"_s, u"folder.fill.badge.gearshape"_s, u"calendar.badge.plus"_s},
       {u"arrow.up.forward.app"_s, u"calendar.badge.plus"_s, u"doc.on.clipboard"_s}},
      {{u"Make it yours"_s, u"Choose how Lumeno appears."_s, u"Finder file actions"_s,
        u"Show the natural-language command bar when files are selected in Finder."_s,
        u"Enable file actions"_s, u"Startup & feedback"_s,
        u"Launch at login, with subtle sound or haptic cues when an answer is ready."_s, u"Launch at login"_s,
        u"Result sound"_s, u"Haptics"_s, u"Summon & keyboard"_s,
        u"⌥⌘Space opens the HUD. Arrows, Return, Esc, and 1–9 work when summoned."_s, u"Summon shortcut"_s,
        u"Keyboard navigation"_s, u"Local AI backend"_s,
        u"Apple Intelligence by default, with template fallbacks."_s, u"AI backend"_s, u"Back"_s,
        u"Set up later"_s},
       {u"folder.fill.badge.gearshape"_s, u"waveform.path"_s, u"keyboard"_s, u"apple.logo"_s},
       {}},
      {{u"All set"_s, u"Lumeno is ready."_s,
        u"Select text anywhere for ranked chips, or select files in Finder for reviewed command actions. "
        u"Results "
        "stream in without leaving the app you're in."_s,
        u"Open TextEdit to try"_s, u"Open Finder"_s, u"⌥⌘Space summons it anytime"_s, u"Back"_s},
       {},
       {u"sparkles"_s, u"command"_s}},
  };
  calendars.status = Status::notDetermined;
  OnboardingState& state = open().state();
  for (const auto& scene : scenes) {
    scheduler.advance(10);
    const auto found = accessibles();
    for (const QString& text : scene.texts) EXPECT_TRUE(found.contains(text)) << text.toStdString();
    for (const QString& icon : scene.icons) {
      EXPECT_TRUE(symbols("icon").contains(icon)) << icon.toStdString();
    }
    for (const QString& symbol : scene.symbols) {
      EXPECT_TRUE(symbols("symbol").contains(symbol)) << symbol.toStdString();
    }
    state.move(1);
  }

  state.move(-1);
  settings.backend.set(AIBackend::ollama);
  EXPECT_TRUE(accessibles().contains(u"Your Ollama model over localhost."_s));
  EXPECT_TRUE(symbols("icon").contains(u"server.rack"_s));
  EXPECT_FALSE(symbols("icon").contains(u"apple.logo"_s));
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
