#pragma once

#include <chrono>
#include <functional>

#include "base/geometry.h"

namespace lumeno {

/// Where the card is in the panel's window: logical pixels from the window's top-left corner, y downward.
struct PanelShape {
  Rect card;
  double cornerRadius = 0;
};

/// The system side of the floating panel: a borderless, non-activating window above all others, on every
/// desktop. Main thread. Frames are in window space (bottom-left origin). The window shows whatever its owner
/// put into it.
class PanelWindow {
 public:
  virtual ~PanelWindow() = default;

  /// Whether the window may take the keyboard at all (also by a press into one of its fields).
  virtual void setKeyEligible(bool eligible) = 0;
  [[nodiscard]] virtual bool isVisible() const = 0;

  /// Makes the window visible above all others without activating it.
  virtual void orderFrontRegardless() = 0;
  /// Hides the window at once; gives the keyboard back to the window it was taken from.
  virtual void orderOut() = 0;
  /// Takes the keyboard and remembers which window had it.
  virtual void activateAndMakeKey() = 0;

  /// Moves and sizes the window; over `duration` with an ease-out curve when that is not zero.
  virtual void setFrame(const Rect& frame, std::chrono::milliseconds duration) = 0;
  /// 1 is opaque. Cancels a running fade.
  virtual void setAlpha(double alpha) = 0;
  /// Fades to invisible, then calls `done`. A later `setAlpha` or `fadeOut` cancels it (`done` is not
  /// called).
  virtual void fadeOut(std::chrono::milliseconds duration, std::function<void()> done) = 0;
  /// The content's outline has changed: everything that follows it (cut-out, blur region, input region) is
  /// renewed.
  virtual void invalidateShape() = 0;
};

}  // namespace lumeno
