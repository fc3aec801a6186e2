#include "platform/x11/x11_gesture.h"

#include <gtest/gtest.h>

#include "records/hotkey_config.h"

namespace lumeno {
namespace {

constexpr uint32_t leftArrow = 0xff51;
constexpr uint32_t space = 0x20;

TEST(CanChangeSelection, KeysAndCombinations) {
  using namespace modifier;
  struct {
    uint32_t keysym;
    uint64_t modifiers;
    bool expected;
  } const cases[] = {
      {leftArrow, 0, true},
      {leftArrow, shift, true},
      {leftArrow, control | shift, true},
      {leftArrow, option, false},
      {0xff96, shift, true},  // the keypad's arrow
      {'a', 0, true},
      {'a', shift, true},
      {'a', control, true},
      {'a', control | shift, false},
      {'c', control, false},
      {'v', control, false},
      {space, option | command, false},  // the summon shortcut
      {space, 0, true},
      {0xff08, 0, true},         // BackSpace
      {0xff0d, shift, true},     // Return
      {0xfe51, 0, true},         // a dead key
      {0x6c1, 0, true},          // a Cyrillic letter
      {0x1000431, 0, true},      // the same by code point
      {0xff1b, 0, false},        // Escape
      {0xffbe, 0, false},        // F1
      {0xff63, control, false},  // Ctrl+Insert
      {0xffe1, 0, false},        // Shift alone
      {0xffe3, control, false},
      {0x1008ff13, 0, false},  // louder
      {0, 0, false},
  };
  for (const auto& [keysym, modifiers, expected] : cases) {
    EXPECT_EQ(canChangeSelection(keysym, modifiers), expected) << std::hex << keysym << " " << modifiers;
  }
}

TEST(GestureTracker, LastsFromTheFirstPressToTheLastRelease) {
  GestureTracker tracker;
  EXPECT_FALSE(tracker.release(38));  // its press was before our time
  tracker.press(38, 100);
  tracker.press(38, 200);  // repeats
  EXPECT_EQ(tracker.serial(), 1u);
  tracker.press(GestureTracker::button(1), 300);
  EXPECT_EQ(tracker.serial(), 2u);
  EXPECT_EQ(tracker.startTime(), 100u);
  EXPECT_FALSE(tracker.release(38));
  EXPECT_FALSE(tracker.release(38));
  EXPECT_TRUE(tracker.isInProgress());
  EXPECT_TRUE(tracker.release(GestureTracker::button(1)));
  EXPECT_FALSE(tracker.isInProgress());
  EXPECT_FALSE(tracker.release(GestureTracker::button(1)));  // the server sends some twice
  tracker.scroll();
  EXPECT_FALSE(tracker.isInProgress());
  EXPECT_EQ(tracker.serial(), 3u);
  tracker.press(39, 400);
  EXPECT_EQ(tracker.startTime(), 400u);
}

}  // namespace
}  // namespace lumeno
