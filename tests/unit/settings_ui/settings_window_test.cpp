#include "settings_ui/settings_window.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QQuickItem>
#include <QtTest/QTest>

#include "support/fake_appearance.h"
#include "support/manual_scheduler.h"
#include "unit/settings_ui/settings_fixture.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;

QStringList warnings;

void collectWarnings(QtMsgType type, const QMessageLogContext&, const QString& message) {
  // The offscreen platform has no window manager.
  if (type == QtDebugMsg || type == QtInfoMsg || message.contains("plugin does not support"_L1)) return;
  warnings += message;
}

class SettingsWindowTest : public SettingsFixture {
 protected:
  SettingsWindowTest() {
    warnings.clear();
    QFont font = QGuiApplication::font();
    font.setFamily(qEnvironmentVariable("LUMENO_PICTURES_FONT", font.family()));
    font.setPixelSize(14);
    QGuiApplication::setFont(font);
    previousHandler_ = qInstallMessageHandler(collectWarnings);
    appearance.set({.reduceMotion = true, .accent = {}});  // pictures of what everything comes to rest at
  }
  ~SettingsWindowTest() override {
    window.reset();
    EXPECT_EQ(warnings, QStringList());
    qInstallMessageHandler(previousHandler_);
  }

  void open() {
    window.emplace(kit, scheduler, services());
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view()));
    keys.window.set(static_cast<uint32_t>(view()->winId()));
  }
  [[nodiscard]] SettingsQuickWindow* view() const { return window->window(); }

  /// Everything in the window as other programs see it.
  void collect(QQuickItem* item, std::vector<QAccessibleInterface*>& all) const {
    if (!item->isVisible()) return;
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(item);
    if (interface && !interface->text(QAccessible::Name).isEmpty()) all.push_back(interface);
    for (QQuickItem* child : item->childItems()) collect(child, all);
  }
  [[nodiscard]] QAccessibleInterface* named(const QString& name, QAccessible::Role role) const {
    std::vector<QAccessibleInterface*> all;
    collect(view()->contentItem(), all);
    for (QAccessibleInterface* each : all) {
      if (each->role() == role && each->text(QAccessible::Name) == name) return each;
    }
    return nullptr;
  }
  [[nodiscard]] QStringList namesOf(QAccessible::Role role) const {
    std::vector<QAccessibleInterface*> all;
    collect(view()->contentItem(), all);
    QStringList names;
    for (QAccessibleInterface* each : all) {
      if (each->role() == role) names += each->text(QAccessible::Name);
    }
    return names;
  }
  void press(const QString& name, QAccessible::Role role) const {
    QAccessibleInterface* found = named(name, role);
    ASSERT_TRUE(found) << name.toStdString();
    ASSERT_TRUE(found->actionInterface()) << name.toStdString();
    found->actionInterface()->doAction(role == QAccessible::CheckBox
                                           ? QAccessibleActionInterface::toggleAction()
                                           : QAccessibleActionInterface::pressAction());
  }
  void tab(const QString& name) const { press(name, QAccessible::PageTab); }
  [[nodiscard]] bool isChecked(const QString& name) const {
    const QAccessibleInterface* found = named(name, QAccessible::CheckBox);
    return found && found->state().checked;
  }
  [[nodiscard]] QString value(const QString& picker) const {
    const QAccessibleInterface* found = named(picker, QAccessible::ComboBox);
    return found ? found->text(QAccessible::Description) : QString();
  }
  [[nodiscard]] QString focused() const {
    QQuickItem* item = view()->activeFocusItem();
    QAccessibleInterface* interface = item ? QAccessible::queryAccessibleInterface(item) : nullptr;
    return interface ? interface->text(QAccessible::Name) : QString();
  }
  void type(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
    QTest::keyClick(view(), key, modifiers);
  }
  void picture(const QString& name) {
    const QString folder = qEnvironmentVariable("LUMENO_PICTURES");
    scheduler.advance(1000);
    QTest::qWait(30);
    const QImage image = view()->grabWindow();
    EXPECT_FALSE(image.isNull());
    if (!folder.isEmpty()) image.save(u"%1/%2.png"_s.arg(folder, name));
  }

  ManualScheduler scheduler;
  FakeAppearance appearance;
  Theme theme{settings, appearance};
  ViewKit kit{theme};
  std::optional<SettingsWindow> window;

 private:
  QtMessageHandler previousHandler_ = nullptr;
};

constexpr auto button = QAccessible::Button;
constexpr auto checkBox = QAccessible::CheckBox;
constexpr auto comboBox = QAccessible::ComboBox;
constexpr auto listItem = QAccessible::ListItem;

TEST_F(SettingsWindowTest, EverySwitchIsItsProperty) {
  struct Switch {
    const char* tab;
    const char* name;
    std::function<bool()> get;
    std::function<void(bool)> set;
  };
  const auto preference = [](const char* tab, const char* name, Preference<bool>& property) {
    return Switch{tab, name, [&property] { return property.get(); },
                  [&property](bool on) { property.set(on); }};
  };
  std::vector<Switch> switches = {
      preference("General", "Launch Lumeno at login", settings.launchAtLogin),
      preference("General", "Enable the summon shortcut", settings.summonHotkeyEnabled),
      preference("General", "Show actions for files selected in Finder", settings.fileActionsEnabled),
      preference("Appearance", "Play a sound when a result is ready", settings.resultSoundEnabled),
      preference("Appearance", "Haptic tap when a result is ready", settings.hapticsEnabled),
      preference("Appearance", "Arrow-key navigation when summoned", settings.keyboardNavEnabled),
  };
  const auto kind = [this](const char* name, IntentKind kind) {
    return Switch{"Actions", name,
                  [this, kind] { return !settings.disabledActionKinds.get().contains(kind); },
                  [this, kind](bool on) { settings.setActionKind(kind, on); }};
  };
  switches.push_back(kind("Grammar", IntentKind::grammar));
  switches.push_back(kind("Filename", IntentKind::filename));
  open();
  for (const Switch& each : switches) {
    SCOPED_TRACE(each.name);
    const QString name = QString::fromLatin1(each.name);
    tab(QString::fromLatin1(each.tab));
    const bool before = each.get();
    EXPECT_EQ(isChecked(name), before);
    press(name, checkBox);
    EXPECT_EQ(each.get(), !before);
    EXPECT_EQ(isChecked(name), !before);
    press(name, checkBox);
    EXPECT_EQ(each.get(), before);
    each.set(!before);
    EXPECT_EQ(isChecked(name), !before) << "changed from outside";
  }
}

TEST_F(SettingsWindowTest, PickersChooseByPointerAndKeys) {
  open();
  tab(u"Appearance"_s);
  EXPECT_EQ(value(u"Accent"_s), u"System"_s);
  press(u"Accent"_s, comboBox);
  EXPECT_EQ(namesOf(listItem).size(), 7);
  press(u"Purple"_s, listItem);
  EXPECT_EQ(settings.accentTheme.get(), AccentTheme::purple);
  EXPECT_EQ(value(u"Accent"_s), u"Purple"_s);
  EXPECT_TRUE(namesOf(listItem).isEmpty());

  const std::vector<std::pair<std::vector<Qt::Key>, AccentTheme>> ways = {
      {{Qt::Key_Down, Qt::Key_Return}, AccentTheme::pink},
      {{Qt::Key_Home, Qt::Key_Return}, AccentTheme::system},
      {{Qt::Key_End, Qt::Key_Up, Qt::Key_Space}, AccentTheme::teal},
      {{Qt::Key_P, Qt::Key_Return}, AccentTheme::purple},
      {{Qt::Key_P, Qt::Key_P, Qt::Key_Return}, AccentTheme::purple},
      {{Qt::Key_P, Qt::Key_I, Qt::Key_Return}, AccentTheme::pink},
      {{Qt::Key_Up, Qt::Key_Escape}, AccentTheme::pink},
  };
  for (const auto& [typed, chosen] : ways) {
    press(u"Accent"_s, comboBox);
    for (const Qt::Key key : typed) type(key);
    EXPECT_EQ(settings.accentTheme.get(), chosen) << typed.size();
    EXPECT_TRUE(namesOf(listItem).isEmpty());
    EXPECT_TRUE(view()) << "Escape closes the list alone";
  }
  press(u"Glass"_s, comboBox);
  QTest::mouseClick(view(), Qt::LeftButton, {}, {20, 20});
  EXPECT_TRUE(namesOf(listItem).isEmpty());
  settings.glassIntensity.set(GlassIntensity::clear);
  EXPECT_EQ(value(u"Glass"_s), u"Clear"_s) << "changed from outside";
  tab(u"AI"_s);
  answer(0, {});
  press(u"Smart AI"_s, comboBox);
  press(u"Ollama (your models)"_s, listItem);
  EXPECT_EQ(settings.backend.get(), AIBackend::ollama);
}

TEST_F(SettingsWindowTest, ModelsAreShownAsTheyCome) {
  open();
  tab(u"AI"_s);
  EXPECT_TRUE(named(u"Looking for installed models…"_s, QAccessible::ProgressBar));
  EXPECT_FALSE(named(u"Model"_s, comboBox));
  answer(0, {});
  const QString failure = u"Couldn't reach Ollama at 127.0.0.1:11434. Start it with `ollama serve`."_s;
  EXPECT_TRUE(named(failure, QAccessible::StaticText));
  EXPECT_EQ(value(u"Model"_s), u"llama3.2"_s);
  press(u"Refresh models"_s, button);
  EXPECT_FALSE(named(failure, QAccessible::StaticText));
  answer(1, {u"gemma"_s, u"qwen"_s});
  EXPECT_EQ(value(u"Model"_s), u"gemma"_s);
  press(u"Model"_s, comboBox);
  press(u"qwen"_s, listItem);
  EXPECT_EQ(stored("ollamaModel"), u"qwen"_s);
  EXPECT_EQ(value(u"Model"_s), u"qwen"_s);
  press(u"Refresh models"_s, button);
  EXPECT_TRUE(isWaiting(2));
  window->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(isWaiting(2));
}

TEST_F(SettingsWindowTest, KeysOfARecordingDoNothingElse) {
  open();
  tab(u"General"_s);
  QQuickItem* field = nullptr;
  for (int i = 0; i < 20 && focused() != u"Shortcut"_s; ++i) type(Qt::Key_Tab);
  ASSERT_EQ(focused(), u"Shortcut"_s);
  field = view()->activeFocusItem();
  type(Qt::Key_Space);
  ASSERT_TRUE(keys.isRecording());
  for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape}) type(key);
  type(Qt::Key_W, Qt::ControlModifier);
  EXPECT_TRUE(keys.isRecording());
  EXPECT_EQ(view()->activeFocusItem(), field);

  // The key that is taken comes to the window after the recorder has seen it, and stays down for a while.
  keys.press(13, modifier::control);
  EXPECT_EQ(settings.summonHotkey.get(), (HotkeyConfig{13, modifier::control}));
  QTest::keyPress(view(), Qt::Key_W, Qt::ControlModifier);
  ASSERT_TRUE(view());
  scheduler.advance(1000);
  QKeyEvent repeat(QEvent::KeyPress, Qt::Key_W, Qt::ControlModifier, {}, true);
  QCoreApplication::sendEvent(view(), &repeat);
  ASSERT_TRUE(view());
  QTest::keyRelease(view(), Qt::Key_W, Qt::ControlModifier);
  EXPECT_EQ(named(u"Shortcut"_s, button)->text(QAccessible::Description).section(u'\n', 0, 0), u"⌃W"_s);
  type(Qt::Key_Space);
  EXPECT_TRUE(keys.isRecording()) << "keys count again";
  keys.press(53);
  type(Qt::Key_Escape);
  EXPECT_TRUE(view()) << "that Escape was for the recording";
  scheduler.advance(1000);
  type(Qt::Key_W, Qt::ControlModifier);
  EXPECT_FALSE(view());
}

TEST_F(SettingsWindowTest, OnlyTheLossOfTheKeyboardEndsARecording) {
  open();
  press(u"Shortcut"_s, button);
  named(u"Shortcut"_s, button)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
  ASSERT_TRUE(keys.isRecording());
  // As the toolkit tells of a grab: the window is no longer active, but the keyboard is nobody else's.
  QWindow other;
  other.show();
  other.requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_FALSE(view()->isActive());
  EXPECT_TRUE(keys.isRecording());
  keys.window.set(static_cast<uint32_t>(other.winId()));
  EXPECT_FALSE(keys.isRecording());
}

TEST_F(SettingsWindowTest, APressElsewhereEndsARecordingAndCounts) {
  open();
  const auto centre = [this](const QString& name, QAccessible::Role role) {
    return view()->mapFromGlobal(named(name, role)->rect().center());
  };
  const QPoint field = centre(u"Shortcut"_s, button);
  QTest::mouseClick(view(), Qt::LeftButton, {}, field);
  EXPECT_TRUE(keys.isRecording());
  QTest::mouseClick(view(), Qt::LeftButton, {}, field);
  EXPECT_FALSE(keys.isRecording()) << "a second click";
  QTest::mouseClick(view(), Qt::LeftButton, {}, field);
  QTest::mouseClick(view(), Qt::LeftButton, {}, {8, view()->height() - 8});
  EXPECT_FALSE(keys.isRecording()) << "on nothing";
  QTest::mouseClick(view(), Qt::LeftButton, {}, field);
  ASSERT_TRUE(keys.isRecording());
  QTest::mouseClick(view(), Qt::LeftButton, {}, centre(u"Launch Lumeno at login"_s, checkBox));
  EXPECT_FALSE(keys.isRecording());
  EXPECT_TRUE(settings.launchAtLogin.get());
  settings.summonHotkeyEnabled.set(false);
  QTest::mouseClick(view(), Qt::LeftButton, {}, field);
  EXPECT_FALSE(keys.isRecording()) << "switched off";
}

TEST_F(SettingsWindowTest, AppsOutOfSightCanBeChosenToo) {
  open();
  press(u"Add App…"_s, button);
  std::vector<InstalledApplication> applications;
  for (int i = 0; i < 60; ++i) {
    const QString name = u"App %1"_s.arg(i);
    applications.push_back({name, name, {}});
  }
  catalog.answer(applications);
  EXPECT_TRUE(QTest::qWaitFor([this] { return namesOf(listItem).size() == 60; }));
  press(u"App 59"_s, listItem);
  press(u"Disable"_s, button);
  EXPECT_EQ(settings.disabledApps.get(), QSet<QString>{u"app 59"_s});
}

TEST_F(SettingsWindowTest, AppsAreAddedAndRemoved) {
  open();
  const QString none = u"Lumeno runs everywhere. Add an app to silence it there."_s;
  EXPECT_TRUE(named(none, QAccessible::StaticText));
  const auto offer = [this] {
    press(u"Add App…"_s, button);
    catalog.answer(
        {{u"f"_s, u"Files"_s, {}}, {u"s"_s, u"Safari"_s, u"no-such-icon"_s}, {u"x"_s, u"XTerm"_s, {}}});
  };
  offer();
  EXPECT_TRUE(named(u"Choose an app where Lumeno should stay silent."_s, QAccessible::Dialog));
  EXPECT_EQ(namesOf(listItem), (QStringList{u"Files"_s, u"Safari"_s, u"XTerm"_s}));
  press(u"Disable"_s, button);
  EXPECT_TRUE(settings.disabledApps.get().isEmpty()) << "nothing is chosen yet";
  press(u"XTerm"_s, listItem);
  type(Qt::Key_Escape);
  EXPECT_FALSE(named(u"Choose an app where Lumeno should stay silent."_s, QAccessible::Dialog));
  EXPECT_TRUE(settings.disabledApps.get().isEmpty());
  ASSERT_TRUE(view());

  offer();
  for (const Qt::Key key : {Qt::Key_S, Qt::Key_A}) type(key);
  EXPECT_EQ(namesOf(listItem), QStringList{u"Safari"_s});
  type(Qt::Key_Return);
  offer();
  press(u"Files"_s, listItem);
  press(u"Disable"_s, button);
  EXPECT_EQ(settings.disabledApps.get(), (QSet<QString>{u"files"_s, u"safari"_s}));
  EXPECT_TRUE(named(u"Safari"_s, QAccessible::StaticText));
  EXPECT_FALSE(named(none, QAccessible::StaticText));
  press(u"Remove"_s, button);
  EXPECT_EQ(settings.disabledApps.get(), QSet<QString>{u"safari"_s}) << "the first of them";
  settings.disabledApps.set({});
  EXPECT_TRUE(named(none, QAccessible::StaticText)) << "changed from outside";
}

TEST_F(SettingsWindowTest, EverythingIsReachedByTabInOrder) {
  open();
  settings.disabledApps.set({u"gimp"_s});
  QStringList order;
  for (int i = 0; i < 8; ++i) {
    type(Qt::Key_Tab);
    order += focused();
  }
  EXPECT_EQ(order, (QStringList{u"General"_s, u"Launch Lumeno at login"_s, u"Enable the summon shortcut"_s,
                                u"Shortcut"_s, u"Show actions for files selected in Finder"_s, u"Remove"_s,
                                u"Add App…"_s, u"General"_s}));
  type(Qt::Key_Right);
  EXPECT_EQ(focused(), u"Actions"_s);
  EXPECT_EQ(view()->title(), u"Actions"_s);
  type(Qt::Key_Left);
  type(Qt::Key_Tab);
  type(Qt::Key_Space);
  EXPECT_TRUE(settings.launchAtLogin.get());
}

TEST_F(SettingsWindowTest, OneWindowAsHighAsItsTab) {
  open();
  SettingsQuickWindow* first = view();
  window->show();
  EXPECT_EQ(view(), first);
  EXPECT_EQ(view()->width(), 540);
  EXPECT_EQ(view()->title(), u"General"_s);
  const int general = view()->height();
  tab(u"AI"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return view()->height() < general - 200; }, 20'000));
  QSet<QString> many;
  for (int i = 0; i < 30; ++i) many.insert(u"app %1"_s.arg(i));
  settings.disabledApps.set(many);
  tab(u"General"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return view()->height() == 720; }, 20'000)) << "it scrolls beyond";
  for (int i = 0; i < 50 && focused() != u"Add App…"_s; ++i) type(Qt::Key_Tab);
  const QQuickItem* last = view()->activeFocusItem();
  const auto bottom = [&] { return last->mapToScene({0, last->height()}).y(); };
  EXPECT_TRUE(QTest::qWaitFor([&] { return bottom() < 720; }, 20'000)) << "what has the focus is seen";
  const QPointer<QWindow> gone = view();
  type(Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(gone);
  window->show();
  EXPECT_EQ(view()->title(), u"General"_s);
}

TEST_F(SettingsWindowTest, TroublesAreSaid) {
  loginItem.refuses = true;
  open();
  press(u"Launch Lumeno at login"_s, checkBox);
  EXPECT_FALSE(isChecked(u"Launch Lumeno at login"_s)) << "it goes back";
  problem.set(u"The settings cannot be stored."_s);
  EXPECT_TRUE(named(u"The settings cannot be stored."_s, QAccessible::StaticText));
  keys.refuses = true;
  press(u"Shortcut"_s, button);
  EXPECT_TRUE(
      named(u"The keyboard cannot be read here, so no shortcut can be recorded."_s, QAccessible::StaticText));
  picture(u"troubles"_s);
}

TEST_F(SettingsWindowTest, EveryStateIsDrawnInBothSchemes) {
  struct State {
    const char* name;
    std::function<void()> enter;
  };
  const std::vector<State> states = {
      {"general", [] {}},
      {"general-recording",
       [this] {
         settings.launchAtLogin.set(true);
         settings.disabledApps.set({u"gimp"_s, u"konsole"_s, u"signal desktop"_s});
         press(u"Shortcut"_s, button);
       }},
      {"general-off",
       [this] {
         settings.launchAtLogin.set(false);
         settings.summonHotkeyEnabled.set(false);
       }},
      {"general-focus",
       [this] {
         for (int i = 0; i < 2; ++i) type(Qt::Key_Tab);
       }},
      {"general-add",
       [this] {
         press(u"Add App…"_s, button);
         catalog.answer({{u"f"_s, u"Files"_s, u"system-file-manager"_s},
                         {u"g"_s, u"GIMP"_s, u"gimp"_s},
                         {u"s"_s, u"Signal Desktop"_s, u"no-such-icon"_s}});
         press(u"GIMP"_s, listItem);
       }},
      {"actions",
       [this] {
         type(Qt::Key_Escape);
         settings.setActionKind(IntentKind::tone, false);
         settings.setActionKind(IntentKind::filename, false);
         tab(u"Actions"_s);
       }},
      {"appearance", [this] { tab(u"Appearance"_s); }},
      {"appearance-picker",
       [this] {
         press(u"Accent"_s, comboBox);
         for (int i = 0; i < 3; ++i) type(Qt::Key_Down);
       }},
      {"ai-loading",
       [this] {
         type(Qt::Key_Escape);
         settings.backend.set(AIBackend::ollama);
         tab(u"AI"_s);
       }},
      {"ai-failed",
       [this] {
         settings.backend.set(AIBackend::appleIntelligence);
         answer(questions.size() - 1, {});
       }},
      {"ai-picker",
       [this] {
         settings.backend.set(AIBackend::ollama);
         press(u"Refresh models"_s, button);
         answer(questions.size() - 1, {u"llama3.2"_s, u"mistral-small"_s, u"qwen3:8b"_s, u"gemma3:12b"_s});
         press(u"Model"_s, comboBox);
         for (int i = 0; i < 2; ++i) type(Qt::Key_Down);
       }},
  };
  for (const bool dark : {false, true}) {
    appearance.set({.dark = dark, .reduceMotion = true, .accent = {}});
    settings.disabledApps.set({});
    settings.disabledActionKinds.set({});
    settings.launchAtLogin.set(false);
    settings.summonHotkeyEnabled.set(true);
    open();
    for (const State& each : states) {
      SCOPED_TRACE(each.name);
      each.enter();
      picture(QString::fromLatin1(each.name) + (dark ? u"-dark"_s : u"-light"_s));
      EXPECT_EQ(view()->width(), 540);
    }
  }
}

TEST_F(SettingsWindowTest, FollowsTheSystemFontWhileOpen) {
  open();
  const int general = view()->height();
  tab(u"AI"_s);
  answer(0, {});
  ASSERT_TRUE(QTest::qWaitFor([&] { return view()->height() < general - 200; }, 20'000));
  const QSize before = view()->size();
  const QFont old = QGuiApplication::font();
  QFont large = old;
  large.setPixelSize(24);
  QGuiApplication::setFont(large);
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return view()->width() > before.width() && view()->height() > before.height() + 40; }, 20'000));
  picture(u"ai-large-font"_s);
  QGuiApplication::setFont(old);
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace lumeno
