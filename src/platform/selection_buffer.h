#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "base/job.h"

namespace lumeno {

/// Selected text that applications offer by themselves, without any key being pressed and without touching the
/// clipboard, on systems that have such a thing (the PRIMARY selection of X11).
class SelectionBuffer {
 public:
  virtual ~SelectionBuffer() = default;

  /// The text that the frontmost window has offered in the user's latest gesture; absent when it offered none, when
  /// it is older than that gesture, owned by another application, marked secret, or not delivered within the
  /// deadline. Main thread; never blocks.
  [[nodiscard]] virtual Job freshText(std::function<void(std::optional<QString>)> done) = 0;
};

}  // namespace lumeno
