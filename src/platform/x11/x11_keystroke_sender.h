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

/// Keystrokes through XTest. Copy is Ctrl+Insert, which is no interrupt anywhere; file managers know
/// only Ctrl+C, and only they get it; paste is Ctrl+V. A combination goes out in one piece, so the server
/// sees all of it or nothing: no key can stay down. Main thread.
class X11KeystrokeSender final : public KeystrokeSender {
 public:
  X11KeystrokeSender(X11Connection& connection, Workspace& workspace, X11Input& input, Scheduler& scheduler);

  [[nodiscard]] Job sendCopy(uint64_t window, std::function<void(Outcome)> done) override;
  [[nodiscard]] Job sendCopyFiles(uint64_t window, std::function<void(Outcome)> done) override;
  [[nodiscard]] Job sendPaste(uint64_t window, std::function<void(Outcome)> done) override;

 private:
  enum class Audience { any, fileManagers };
  /// The key that goes with Ctrl.
  struct Command {
    uint32_t keysym;
    std::optional<xcb_keycode_t> position;  ///< programs go by it where no layout has Latin letters
    Audience audience;
  };
  struct Request {
    Command command;
    std::function<void(Outcome)> done;
    std::optional<uint64_t>
        window;  ///< the window that it is meant for, once another application is in front
    int looksLeft = 0;
    Job wait;
  };

  [[nodiscard]] Job start(const Command& command, uint64_t window, std::function<void(Outcome)> done);
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
