#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QLocalServer>

#include "platform/freedesktop/canberra_system_sound.h"
#include "platform/freedesktop/feedbackd_haptics.h"
#include "platform/freedesktop/portal_appearance.h"
#include "support/fake_bus_service.h"
#include "support/temporary_desktop.h"
#include "support/wait_until.h"

namespace lumeno {

struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
};
QDBusArgument& operator<<(QDBusArgument& argument, const Color& color) {
  argument.beginStructure();
  argument << color.red << color.green << color.blue;
  argument.endStructure();
  return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, Color& color) {
  argument.beginStructure();
  argument >> color.red >> color.green >> color.blue;
  argument.endStructure();
  return argument;
}

namespace {

using namespace Qt::StringLiterals;
using Groups = QMap<QString, QVariantMap>;

const QString appearanceGroup = u"org.freedesktop.appearance"_s;
const QString interfaceGroup = u"org.gnome.desktop.interface"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;

QVariant color(double red, double green, double blue) {
  return QVariant::fromValue(Color{red, green, blue});
}

struct PortalAppearanceTest : testing::Test {
  PortalAppearanceTest() {
    qDBusRegisterMetaType<Color>();
    qDBusRegisterMetaType<Groups>();
  }
  void tell(FakeBusService& portal, const QString& group, const QString& key, const QVariant& value) {
    portal.emitSignal(portalPath, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s,
                      {group, key, QVariant::fromValue(QDBusVariant(value))});
  }
};

TEST_F(PortalAppearanceTest, FollowsThePortal) {
  const Groups settings{
      {appearanceGroup,
       {{u"color-scheme"_s, 1u}, {u"contrast"_s, 1u}, {u"accent-color"_s, color(1, 0.5, 0)}}},
      {interfaceGroup, {{u"enable-animations"_s, false}}}};
  FakeBusService portal(u"org.freedesktop.portal.Desktop"_s, portalPath,
                        [&](const QDBusMessage&) { return QVariantList{QVariant::fromValue(settings)}; });
  PortalAppearance appearance;
  const auto current = [&] { return appearance.preferences().get(); };
  EXPECT_EQ(current(), AppearancePreferences()) << "the defaults until the portal has answered";

  const AppearancePreferences told{true, true, true, qRgb(255, 128, 0)};
  ASSERT_TRUE(waitUntil([&] { return current() == told; }));
  int notifications = 0;
  const Subscription subscription = appearance.preferences().subscribe([&](const auto&) { ++notifications; });

  tell(portal, u"org.gnome.desktop.sound"_s, u"event-sounds"_s, true);
  tell(portal, appearanceGroup, u"contrast"_s, 0u);
  ASSERT_TRUE(waitUntil([&] { return !current().highContrast; }));
  EXPECT_EQ(current(), (AppearancePreferences{true, true, false, qRgb(255, 128, 0)}));
  tell(portal, appearanceGroup, u"accent-color"_s, color(-1, -1, -1));
  ASSERT_TRUE(waitUntil([&] { return !current().accent; }));
  tell(portal, interfaceGroup, u"enable-animations"_s, true);
  tell(portal, appearanceGroup, u"color-scheme"_s, 0u);
  ASSERT_TRUE(waitUntil([&] { return !current().dark; })) << "no preference is no darkness";
  EXPECT_EQ(current(), AppearancePreferences());
  EXPECT_EQ(notifications, 5) << "the first value and four changes";
}

TEST_F(PortalAppearanceTest, StrangeAnswersLeaveTheDefaults) {
  const Groups strange{{appearanceGroup, {{u"color-scheme"_s, u"dark"_s}, {u"accent-color"_s, u"red"_s}}},
                       {interfaceGroup, {{u"enable-animations"_s, true}}}};
  const std::optional<QVariantList> answers[] = {QVariantList{QVariant::fromValue(strange)},
                                                 QVariantList{u"text"_s}, QVariantList{}, std::nullopt};
  for (const auto& answer : answers) {
    FakeBusService portal(u"org.freedesktop.portal.Desktop"_s, portalPath,
                          [&](const auto&) { return answer; });
    PortalAppearance appearance;
    ASSERT_TRUE(waitUntil([&] { return !portal.calls.empty(); }));
    runFor(std::chrono::milliseconds(20));
    EXPECT_EQ(appearance.preferences().get(), AppearancePreferences());
  }
}

TEST(FeedbackdHaptics, AsksTheDaemonAndMissesNothingWithoutIt) {
  FeedbackdHaptics haptics;
  haptics.performGeneric();
  runFor(std::chrono::milliseconds(20));
  FakeBusService daemon(u"org.sigxcpu.Feedback"_s, u"/org/sigxcpu/Feedback"_s,
                        [](const auto&) { return QVariantList{1u}; });
  haptics.performGeneric();
  ASSERT_TRUE(waitUntil([&] { return !daemon.calls.empty(); }));
  EXPECT_EQ(daemon.calls.size(), 1u);
  EXPECT_EQ(daemon.calls[0].member(), u"TriggerFeedback"_s);
  EXPECT_EQ(daemon.calls[0].signature(), u"ssa{sv}i"_s);
}

TEST(CanberraSystemSound, NeverWaitsForTheSoundSystem) {
  TemporaryDesktop desktop;
  // A sound server that accepts and never answers.
  QLocalServer server;
  ASSERT_TRUE(server.listen(desktop.path(u"pulse"_s)));
  desktop.set("PULSE_SERVER", u"unix:"_s + desktop.path(u"pulse"_s));
  QElapsedTimer elapsed;
  elapsed.start();
  {
    CanberraSystemSound sound;
    sound.play(u"Tink"_s);
    sound.play(u"Tink"_s);
    sound.beep();
  }
  EXPECT_LT(elapsed.elapsed(), 10'000) << "the sound system's own patience is much longer";
}

}  // namespace
}  // namespace lumeno
