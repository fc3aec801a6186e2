#include "hotkey/hotkey_monitor.h"

#include <gtest/gtest.h>

#include "records/hotkey_config.h"
#include "support/fake_event_monitor.h"

namespace lumeno {
namespace {

constexpr uint16_t space = 49;
constexpr uint64_t optionCommand = modifier::option | modifier::command;
constexpr uint64_t capsLock = 0x10000;
constexpr uint64_t numericPad = 0x200000;

class HotkeyMonitorTest : public testing::Test {
 protected:
  HotkeyMonitorTest() {
    monitor.onSummon = [this] { ++summons; };
  }

  FakeEventMonitor events;
  HotkeyMonitor monitor{events, space, optionCommand};
  int summons = 0;
};

TEST_F(HotkeyMonitorTest, FiresForExactlyTheConfiguredKeyAndModifiers) {
  const struct {
    const char* what;
    uint16_t keyCode;
    uint64_t modifiers;
    bool fires;
  } cases[] = {
      {"the shortcut", space, optionCommand, true},
      {"with locks and pad flags", space, optionCommand | capsLock | numericPad | 0x20, true},
      {"shift held too", space, optionCommand | modifier::shift, false},
      {"command missing", space, modifier::option, false},
      {"no modifier", space, 0, false},
      {"another key", 36, optionCommand, false},
  };
  monitor.start();
  for (const auto& c : cases) {
    summons = 0;
    events.pressKey(c.keyCode, c.modifiers);
    EXPECT_EQ(summons, c.fires ? 1 : 0) << c.what;
  }
}

TEST_F(HotkeyMonitorTest, StartAndStopMayBeRepeated) {
  monitor.start();
  monitor.start();
  events.pressKey(space, optionCommand);
  EXPECT_EQ(summons, 1);

  monitor.stop();
  monitor.stop();
  EXPECT_FALSE(events.watchesKeys());
}

TEST_F(HotkeyMonitorTest, NewShortcutTakesEffectWithoutReinstalling) {
  monitor.start();
  monitor.keyCode = 40;
  monitor.requiredFlags = modifier::control;
  events.pressKey(space, optionCommand);
  EXPECT_EQ(summons, 0);
  events.pressKey(40, modifier::control);
  EXPECT_EQ(summons, 1);
}

TEST_F(HotkeyMonitorTest, RefusedMonitorIsTriedAgainAtTheNextStart) {
  events.refuses = true;
  monitor.start();
  events.refuses = false;
  monitor.start();
  events.pressKey(space, optionCommand);
  EXPECT_EQ(summons, 1);
}

}  // namespace
}  // namespace lumeno
