#pragma once

#include "platform/screen_layout.h"

namespace lumeno {

/// One screen of 1440 × 900 with a bar of 25 at its top, unless set otherwise.
class FakeScreenLayout final : public ScreenLayout {
 public:
  std::vector<Screen> screens() override { return all; }
  Point mouseLocation() override { return mouse; }

  std::vector<Screen> all{{{0, 0, 1440, 900}, {0, 0, 1440, 875}}};
  Point mouse{700, 300};
};

}  // namespace lumeno
