#pragma once

#include <map>
#include <memory>

#include "base/scheduler.h"
#include "platform/input_activity.h"
#include "platform/selection_buffer.h"
#include "platform/workspace.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_selection_content.h"

namespace lumeno {

/// The PRIMARY selection. It may be long stale and belong to anybody, so that it counts only when its owner
/// is the application in front and took it in the user's latest gesture.
class X11SelectionBuffer final : public SelectionBuffer {
 public:
  X11SelectionBuffer(X11Connection& connection, Scheduler& scheduler, InputActivity& input,
                     Workspace& workspace);

  [[nodiscard]] Job freshText(std::function<void(std::optional<QString>)> done) override;
  [[nodiscard]] bool isFresh() override;
  [[nodiscard]] uint64_t serial() const override { return serial_; }
  [[nodiscard]] Subscription onChange(std::function<void()> handler) override;

 private:
  /// What is known of the latest offer by another application.
  struct Offer {
    xcb_window_t owner = XCB_WINDOW_NONE;
    std::optional<ProcessId> process;
    xcb_timestamp_t time = 0;
    std::optional<RunningApplication> frontmost;  ///< when the offer was made
    bool hasFocusMoved = false;                   ///< to another application or window since
    int readsLeft = 0;
    std::optional<QString> text = std::nullopt;  ///< once read
  };
  using Done = std::function<void(std::optional<QString>)>;

  /// One read and all who wait for it. Handles refer to it and may outlive this object.
  struct Round {
    std::map<uint64_t, Done> waiters;
    Job reading;
  };

  void ownerChanged(xcb_window_t owner, xcb_timestamp_t time);
  void activated(const std::optional<RunningApplication>& application);
  void answer(std::optional<QString> text);
  [[nodiscard]] bool isOwnerIn(const RunningApplication& application) const;

  X11Connection& connection_;
  Scheduler& scheduler_;
  InputActivity& input_;
  Workspace& workspace_;
  const ProcessId ownProcess_;
  X11SelectionContent content_;
  Offer offer_;
  bool isTakenByUs_ = false;  ///< since the latest offer
  uint64_t serial_ = 0;
  Signal<> change_;
  uint64_t nextWaiter_ = 0;
  std::shared_ptr<Round> round_ = std::make_shared<Round>();
  Subscription watch_;
  Subscription activation_;
};

}  // namespace lumeno
