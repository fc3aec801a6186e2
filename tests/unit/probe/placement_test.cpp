#include "hud/placement/placement.h"

#include <gtest/gtest.h>

namespace lumeno::placement {
namespace {

const Screen primary{{0, 0, 1440, 900}, {0, 0, 1440, 875}};
const Screen above{{0, 900, 1440, 900}, {0, 900, 1440, 875}};
const Screen left{{-1000, 0, 1000, 800}, {-1000, 40, 1000, 760}};
const Screen tiny{{0, 0, 200, 100}, {0, 0, 200, 100}};
constexpr Size card{360, 150};

struct Case {
  const char* what;
  std::vector<Screen> screens;
  Point mouse;
  std::optional<Rect> anchor;
  bool preferBelow;
  Size content;
  Rect frame;
  bool isFlippedBelow;
};

TEST(Placement, FollowsAnchorPointerAndScreens) {
  const std::vector<Case> cases = {
      {"above the anchor", {primary}, {}, Rect{600, 400, 200, 20}, false, card, {520, 510, 360, 150}, false},
      {"no room above", {primary}, {}, Rect{600, 30, 200, 20}, false, card, {520, 690, 360, 150}, true},
      {"just room above", {primary}, {}, Rect{600, 193, 200, 20}, false, card, {520, 717, 360, 150}, false},
      {"one point short above",
       {primary},
       {},
       Rect{600, 192, 200, 20},
       false,
       card,
       {520, 528, 360, 150},
       true},
      {"below first", {primary}, {}, Rect{600, 400, 200, 20}, true, card, {520, 320, 360, 150}, true},
      {"no room below", {primary}, {}, Rect{600, 850, 200, 20}, true, card, {520, 60, 360, 150}, false},
      {"left edge", {primary}, {}, Rect{0, 400, 40, 20}, false, card, {8, 510, 360, 150}, false},
      {"right edge", {primary}, {}, Rect{1430, 400, 10, 20}, false, card, {1072, 510, 360, 150}, false},
      {"pointer", {primary}, {700, 300}, std::nullopt, true, card, {520, 318, 360, 150}, false},
      {"pointer in the corner", {primary}, {100, 860}, std::nullopt, false, card, {8, 717, 360, 150}, false},
      {"no size", {primary}, {700, 300}, std::nullopt, false, {0, -5}, {699.5, 318, 1, 1}, false},
      {"anchor on another screen",
       {primary, left},
       {},
       Rect{-600, 400, 200, 20},
       false,
       card,
       {-680, 510, 360, 150},
       false},
      {"anchor above the primary screen",
       {above, primary},
       {},
       Rect{600, -400, 200, 20},
       false,
       card,
       {520, 1310, 360, 150},
       false},
      {"anchor off all screens, pointer on one",
       {primary, left},
       {-500, 100},
       Rect{5000, 400, 20, 20},
       false,
       card,
       {-368, 510, 360, 150},
       false},
      {"nothing on any screen",
       {left, primary},
       {9000, 9000},
       Rect{5000, 400, 20, 20},
       false,
       card,
       {1072, 510, 360, 150},
       false},
      {"no screen at the origin",
       {left},
       {-500, 100},
       Rect{-600, 400, 200, 20},
       false,
       card,
       {-680, 410, 360, 150},
       false},
      {"larger than the screen", {tiny}, {100, 50}, std::nullopt, false, card, {-168, -58, 360, 150}, false},
  };
  for (const Case& c : cases) {
    const auto result = place(c.screens, c.mouse, c.anchor, c.preferBelow, c.content);
    ASSERT_TRUE(result) << c.what;
    EXPECT_EQ(result->frame, c.frame) << c.what << ": " << result->frame.x << ", " << result->frame.y;
    EXPECT_EQ(result->isFlippedBelow, c.isFlippedBelow) << c.what;
  }
  EXPECT_FALSE(place({}, {}, std::nullopt, false, card));
}

}  // namespace
}  // namespace lumeno::placement
