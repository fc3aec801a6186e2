#pragma once

#include "core/model/hud_presenter.h"

namespace lumeno {

/// Remembers how it was last shown.
class FakeHUDPresenter final : public HUDPresenter {
 public:
  struct Shown {
    std::optional<Rect> anchor;
    bool preferBelow = false;
    bool keyEligible = false;
    bool takeFocus = false;
    bool operator==(const Shown&) const = default;
  };

  void show(const std::optional<Rect>& anchor, bool preferBelow, bool keyEligible, bool takeFocus) override {
    ++shows;
    shown = Shown{anchor, preferBelow, keyEligible, takeFocus};
  }
  void hide() override {
    ++hides;
    shown.reset();
  }

  std::optional<Shown> shown;  ///< absent while hidden
  int shows = 0;
  int hides = 0;
};

}  // namespace lumeno
