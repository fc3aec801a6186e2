#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "base/scheduler.h"
#include "platform/keystroke_sender.h"
#include "platform/workspace.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_input.h"

namespace lumeno {

/// Keystrokes through XTest. Copy is Ctrl+Insert, which is no interrupt anywhere; paste is Ctrl and whatever
/// key yields v. A combination goes out in one piece, so the server sees all of it or nothing: no key can
/// stay down. Main thread.
class X11KeystrokeSender final : public KeystrokeSender {
 public:
  X11KeystrokeSender(X11Connection& connection, Workspace& workspace, X11Input& input, Scheduler& scheduler);

  [[nodiscard]] Job sendCopy(uint64_t window, std::function<void(Outcome)> done) override;
  [[nodiscard]] Job sendPaste(uint64_t window, std::function<void(Outcome)> done) override;

 private:
  struct Request {
    uint32_t keysym = 0;
    std::function<void(Outcome)> done;
    std::optional<uint64_t>
        window;  ///< the window that it is meant for, once another application is in front
    int looksLeft = 0;
    Job wait;
  };

  [[nodiscard]] Job start(uint32_t keysym, uint64_t window, std::function<void(Outcome)> done);
  void look(const std::shared_ptr<Request>& request);
  [[nodiscard]] Outcome send(const Request& request);
  [[nodiscard]] bool isInFront(const Request& request);
  void post(const std::vector<X11Input::SyntheticKey>& keys);

  X11Connection& connection_;
  Workspace& workspace_;
  X11Input& input_;
  Scheduler& scheduler_;
};

}  // namespace lumeno
