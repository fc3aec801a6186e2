#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QDeadlineTimer>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "base/job.h"
#include "base/scheduler.h"
#include "platform/x11/x11_connection.h"

namespace lumeno {

/// What a selection owner delivered for one target, as it lay in the property.
struct SelectionValue {
  xcb_atom_t type = XCB_ATOM_NONE;
  uint8_t format = 8;  ///< bits per unit: 8, 16 or 32
  QByteArray bytes;    ///< in this machine's byte order
  bool operator==(const SelectionValue&) const = default;
};

/// One target that a selection can be asked for, with the answer.
struct SelectionOffer {
  xcb_atom_t target = XCB_ATOM_NONE;
  SelectionValue value;
  bool operator==(const SelectionOffer&) const = default;
};

enum class TransferOutcome {
  delivered,
  refused,   ///< by the owner, or there is no owner
  tooLarge,  ///< more than the caller wants
  tooLate,   ///< not complete at the deadline
};

struct TransferResult {
  TransferOutcome outcome = TransferOutcome::refused;
  SelectionValue value;  ///< empty unless delivered
};

struct TransferRequest {
  xcb_atom_t selection = XCB_ATOM_NONE;
  xcb_atom_t target = XCB_ATOM_NONE;
  QDeadlineTimer deadline;
  qsizetype byteLimit = 0;
  /// For targets that take a list of atoms as their argument.
  std::optional<std::vector<xcb_atom_t>> argument = std::nullopt;
};

/// Asks selection owners for data, any number of requests at a time. Main thread; nothing waits for an owner
/// except the request it concerns, and that one until its deadline.
class X11SelectionTransfers {
 public:
  X11SelectionTransfers(X11Connection& connection, Scheduler& scheduler);
  ~X11SelectionTransfers();
  X11SelectionTransfers(const X11SelectionTransfers&) = delete;
  X11SelectionTransfers& operator=(const X11SelectionTransfers&) = delete;

  /// `done` is called exactly once, from the event loop, unless the handle goes first.
  [[nodiscard]] Job start(const TransferRequest& request, std::function<void(TransferResult)> done);

 private:
  struct Transfer;

  void selectionNotified(const xcb_selection_notify_event_t& event);
  void propertyChanged(const xcb_property_notify_event_t& event);
  void readAnswer(Transfer& transfer);
  void readPiece(Transfer& transfer);
  void finish(xcb_window_t window, TransferOutcome outcome);
  void giveUp(Transfer& transfer, TransferOutcome outcome);
  void cancel(xcb_window_t window);
  void remove(xcb_window_t window);

  X11Connection& connection_;
  Scheduler& scheduler_;
  xcb_atom_t property_;
  xcb_atom_t incremental_;
  std::unordered_map<xcb_window_t, std::unique_ptr<Transfer>> transfers_;
  /// Handles may outlive this object; they find out through this.
  std::shared_ptr<X11SelectionTransfers*> self_;
  Subscription selectionNotify_;
  Subscription propertyNotify_;
};

}  // namespace lumeno
