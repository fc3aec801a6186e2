#include "platform/x11/x11_key_map.h"

#include <gtest/gtest.h>

#include <set>

#include "records/hotkey_config.h"

namespace lumeno {
namespace {

TEST(X11KeyMap, EveryPositionGoesThereAndBack) {
  std::set<uint16_t> seen;
  for (int keycode = 0; keycode < 256; ++keycode) {
    const auto key = X11KeyMap::virtualKey(static_cast<xcb_keycode_t>(keycode));
    if (!key) continue;
    EXPECT_TRUE(seen.insert(*key).second) << "twice: " << *key;
    EXPECT_EQ(X11KeyMap::keycode(*key), keycode) << *key;
  }
  EXPECT_GE(seen.size(), 27u + 47u);
}

TEST(X11KeyMap, PositionsAreThoseOfTheKeyboard) {
  struct {
    uint16_t key;
    int keycode;
  } const cases[] = {
      {49, 65},   {36, 36},   {53, 9},    {0, 38},   {6, 52},   {16, 29},   {18, 10},
      {29, 19},   {50, 49},   {10, 94},   {51, 22},  {48, 23},  {123, 113}, {126, 111},
      {114, 118}, {110, 135}, {113, 127}, {122, 67}, {111, 96}, {76, 104},
  };
  for (const auto& [key, keycode] : cases) EXPECT_EQ(X11KeyMap::keycode(key), keycode) << key;
}

TEST(X11KeyMap, KeysWithoutAPosition) {
  for (const int modifier : {50, 62, 37, 105, 64, 108, 133, 66}) {
    EXPECT_FALSE(X11KeyMap::virtualKey(static_cast<xcb_keycode_t>(modifier))) << modifier;
  }
  EXPECT_FALSE(X11KeyMap::keycode(127));
  EXPECT_FALSE(X11KeyMap::keycode(0xffff));
}

TEST(X11KeyMap, LocksAndAltGrAreNoModifiers) {
  EXPECT_EQ(X11KeyMap::modifiers(XCB_MOD_MASK_1 | XCB_MOD_MASK_4), modifier::option | modifier::command);
  EXPECT_EQ(X11KeyMap::modifiers(XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL),
            modifier::shift | modifier::control);
  EXPECT_EQ(X11KeyMap::modifiers(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_MOD_MASK_5), 0u);
}

}  // namespace
}  // namespace lumeno
