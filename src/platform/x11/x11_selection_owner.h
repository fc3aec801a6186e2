#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <list>
#include <vector>

#include "base/job.h"
#include "base/scheduler.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_selection_transfer.h"

namespace lumeno {

/// Owns one selection and serves what was offered with it, to any number of requestors at a time; large data
/// goes out in pieces, and a requestor that stops taking them holds up nobody else. Main thread.
class X11SelectionOwner {
 public:
  X11SelectionOwner(X11Connection& connection, Scheduler& scheduler, xcb_atom_t selection);
  ~X11SelectionOwner();
  X11SelectionOwner(const X11SelectionOwner&) = delete;
  X11SelectionOwner& operator=(const X11SelectionOwner&) = delete;

  /// Takes the selection as of `time` (the server's, from X11ServerClock). False when somebody has taken it
  /// later than that; nothing changes then.
  bool own(std::vector<SelectionOffer> offers, xcb_timestamp_t time);

  /// Takes the selection away from whoever has it, leaving it without an owner.
  void clear(xcb_timestamp_t time);

  [[nodiscard]] bool isOwner() const { return isOwner_; }
  [[nodiscard]] const std::vector<SelectionOffer>& offers() const { return offers_; }

 private:
  struct Outgoing {
    xcb_window_t requestor;
    xcb_atom_t property;
    SelectionValue value;
    qsizetype offset;
    Job timeout;
  };

  void requested(const xcb_selection_request_event_t& request);
  void cleared(const xcb_selection_clear_event_t& event);
  void propertyChanged(const xcb_property_notify_event_t& event);
  void release();
  [[nodiscard]] bool isAnswerable(const xcb_selection_request_event_t& request) const;
  [[nodiscard]] bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
  [[nodiscard]] bool convertSeveral(xcb_window_t requestor, xcb_atom_t property);
  [[nodiscard]] std::vector<xcb_atom_t> targets() const;
  void put(xcb_window_t requestor, xcb_atom_t property, const SelectionValue& value);
  void write(xcb_window_t requestor, xcb_atom_t property, const SelectionValue& value, qsizetype offset,
             qsizetype length);
  void expectTaking(Outgoing& outgoing);

  X11Connection& connection_;
  Scheduler& scheduler_;
  const xcb_atom_t selection_;
  const xcb_atom_t targets_;
  const xcb_atom_t timestamp_;
  const xcb_atom_t multiple_;
  const xcb_atom_t saveTargets_;
  const xcb_atom_t incremental_;
  bool isOwner_ = false;
  xcb_timestamp_t ownedSince_ = 0;
  std::vector<SelectionOffer> offers_;
  std::list<Outgoing> outgoing_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace lumeno
