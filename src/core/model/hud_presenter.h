#pragma once

#include <functional>
#include <optional>

#include "base/geometry.h"

namespace lumeno {

/// The floating panel as the model needs it. What is shown inside follows the model's observable state. Main
/// thread.
class HUDPresenter {
 public:
  virtual ~HUDPresenter() = default;

  /// Shows or updates the panel. `anchor` (accessibility space) is what to place it next to; absent means
  /// near the pointer. `keyEligible`: it may take the keyboard; `takeFocus`: it takes it now.
  virtual void show(const std::optional<Rect>& anchor, bool preferBelow, bool keyEligible,
                    bool takeFocus) = 0;
  virtual void hide() = 0;

  /// Called on a click or Escape outside the program while the panel is shown without the focus.
  std::function<void()> onOutsideDismiss;
};

}  // namespace lumeno
