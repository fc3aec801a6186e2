#include "platform/x11/x11_key_map.h"

#include <array>

#include "records/hotkey_config.h"

namespace lumeno {

namespace {

struct Position {
  uint16_t virtualKey;
  xcb_keycode_t keycode;
};

// In the order of the keyboard: rows from the top left, then the blocks at the right.
constexpr Position positions[] = {
    {53, 9},                                                                           // Esc
    {122, 67},  {120, 68},  {99, 69},   {118, 70},  {96, 71},   {97, 72},              // F1 F6
    {98, 73},   {100, 74},  {101, 75},  {109, 76},  {103, 95},  {111, 96},             // F7 F12
    {105, 107}, {107, 78},  {113, 127},                                                // Print Scroll Pause
    {106, 194}, {64, 195},  {79, 196},  {80, 197},  {90, 198},                         // F16 F20
    {50, 49},   {18, 10},   {19, 11},   {20, 12},   {21, 13},   {23, 14},   {22, 15},  // ` 1 to 6
    {26, 16},   {28, 17},   {25, 18},   {29, 19},   {27, 20},   {24, 21},   {51, 22},  // 7 to Delete
    {48, 23},   {12, 24},   {13, 25},   {14, 26},   {15, 27},   {17, 28},   {16, 29},  // Tab Q to Y
    {32, 30},   {34, 31},   {31, 32},   {35, 33},   {33, 34},   {30, 35},   {42, 51},  // U to backslash
    {0, 38},    {1, 39},    {2, 40},    {3, 41},    {5, 42},    {4, 43},               // A to H
    {38, 44},   {40, 45},   {37, 46},   {41, 47},   {39, 48},   {36, 36},              // J to Return
    {10, 94},   {6, 52},    {7, 53},    {8, 54},    {9, 55},    {11, 56},   {45, 57}, {46, 58},  // ISO Z to M
    {43, 59},   {47, 60},   {44, 61},   {49, 65},                                      // , . / Space
    {114, 118}, {117, 119}, {115, 110}, {119, 115}, {116, 112}, {121, 117},            // Insert to Page Down
    {123, 113}, {124, 114}, {125, 116}, {126, 111}, {110, 135},                        // arrows, Menu
    {71, 77},   {75, 106},  {67, 63},   {78, 82},   {69, 86},   {76, 104},  {65, 91},  // keypad: Clear to .
    {82, 90},   {83, 87},   {84, 88},   {85, 89},   {86, 83},   {87, 84},              // keypad: 0 to 5
    {88, 85},   {89, 79},   {91, 80},   {92, 81},   {81, 125},                         // keypad: 6 to 9, =
    {94, 97},   {93, 132},  {102, 102}, {104, 100},                                    // JIS: _ yen eisu kana
};

constexpr uint16_t unassigned = 0xffff;

constexpr auto byKeycode = [] {
  std::array<uint16_t, 256> table{};
  table.fill(unassigned);
  for (const auto& position : positions) table[position.keycode] = position.virtualKey;
  return table;
}();

constexpr auto byVirtualKey = [] {
  std::array<xcb_keycode_t, 128> table{};
  for (const auto& position : positions) table[position.virtualKey] = position.keycode;
  return table;
}();

}  // namespace

std::optional<uint16_t> X11KeyMap::virtualKey(xcb_keycode_t keycode) {
  const uint16_t key = byKeycode[keycode];
  return key == unassigned ? std::nullopt : std::optional(key);
}

std::optional<xcb_keycode_t> X11KeyMap::keycode(uint16_t virtualKey) {
  if (virtualKey >= byVirtualKey.size() || byVirtualKey[virtualKey] == 0) return std::nullopt;
  return byVirtualKey[virtualKey];
}

uint64_t X11KeyMap::modifiers(unsigned int coreMask) {
  uint64_t bits = 0;
  if (coreMask & XCB_MOD_MASK_SHIFT) bits |= modifier::shift;
  if (coreMask & XCB_MOD_MASK_CONTROL) bits |= modifier::control;
  if (coreMask & XCB_MOD_MASK_1) bits |= modifier::option;
  if (coreMask & XCB_MOD_MASK_4) bits |= modifier::command;
  return bits;
}

}  // namespace lumeno
