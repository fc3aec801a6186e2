#include "platform/x11/x11_selection_owner.h"

#include <algorithm>
#include <utility>

#include "platform/x11/x11_server_clock.h"

namespace lumeno {

namespace {

/// Larger values go out in pieces of this size; a multiple of every unit size.
constexpr qsizetype pieceSize = 256 * 1024;
constexpr std::chrono::seconds takingTime{10};

SelectionValue listOf(xcb_atom_t type, const std::vector<uint32_t>& units) {
  return {type, 32,
          QByteArray(reinterpret_cast<const char*>(units.data()),
                     static_cast<qsizetype>(units.size() * sizeof(uint32_t)))};
}

}  // namespace

X11SelectionOwner::X11SelectionOwner(X11Connection& connection, Scheduler& scheduler, xcb_atom_t selection)
    : connection_(connection),
      scheduler_(scheduler),
      selection_(selection),
      targets_(connection.atom("TARGETS")),
      timestamp_(connection.atom("TIMESTAMP")),
      multiple_(connection.atom("MULTIPLE")),
      saveTargets_(connection.atom("SAVE_TARGETS")),
      incremental_(connection.atom("INCR")) {
  subscriptions_.push_back(
      connection_.onEvent(XCB_SELECTION_REQUEST, [this](const xcb_generic_event_t& event) {
        requested(reinterpret_cast<const xcb_selection_request_event_t&>(event));
      }));
  subscriptions_.push_back(connection_.onEvent(XCB_SELECTION_CLEAR, [this](const xcb_generic_event_t& event) {
    cleared(reinterpret_cast<const xcb_selection_clear_event_t&>(event));
  }));
  subscriptions_.push_back(connection_.onEvent(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
    propertyChanged(reinterpret_cast<const xcb_property_notify_event_t&>(event));
  }));
  subscriptions_.push_back(connection_.onEvent(XCB_DESTROY_NOTIFY, [this](const xcb_generic_event_t& event) {
    const xcb_window_t gone = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
    outgoing_.remove_if([gone](const Outgoing& o) { return o.requestor == gone; });
  }));
}

X11SelectionOwner::~X11SelectionOwner() {
  if (isOwner_) clear(ownedSince_);
}

bool X11SelectionOwner::own(std::vector<SelectionOffer> offers, xcb_timestamp_t time) {
  xcb_connection_t* const xcb = connection_.xcb();
  xcb_set_selection_owner(xcb, connection_.helperWindow(), selection_, time);
  const XcbPtr<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, selection_), nullptr));
  if (!reply || reply->owner != connection_.helperWindow()) return false;
  isOwner_ = true;
  ownedSince_ = time;
  offers_ = std::move(offers);
  return true;
}

void X11SelectionOwner::clear(xcb_timestamp_t time) {
  xcb_set_selection_owner(connection_.xcb(), XCB_WINDOW_NONE, selection_, time);
  connection_.flush();
  release();
}

void X11SelectionOwner::release() {
  isOwner_ = false;
  offers_.clear();
}

void X11SelectionOwner::cleared(const xcb_selection_clear_event_t& event) {
  if (event.owner != connection_.helperWindow() || event.selection != selection_) return;
  // The loss may be an old one, reported after we have taken the selection again.
  const XcbPtr<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      connection_.xcb(), xcb_get_selection_owner(connection_.xcb(), selection_), nullptr));
  if (reply && reply->owner == connection_.helperWindow()) return;
  release();
}

void X11SelectionOwner::requested(const xcb_selection_request_event_t& request) {
  if (request.owner != connection_.helperWindow() || request.selection != selection_) return;
  // Requestors of the oldest kind name no property; the target then serves as its name.
  const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
  bool isServed = false;
  if (isAnswerable(request)) {
    if (request.target != multiple_) {
      isServed = convert(request.requestor, request.target, property);
    } else if (request.property != XCB_ATOM_NONE) {
      isServed = convertSeveral(request.requestor, property);
    }
  }

  // Sent as 32 bytes, which is more than the event's structure.
  union {
    xcb_selection_notify_event_t event;
    char bytes[32];
  } notify{};
  notify.event.response_type = XCB_SELECTION_NOTIFY;
  notify.event.time = request.time;
  notify.event.requestor = request.requestor;
  notify.event.selection = request.selection;
  notify.event.target = request.target;
  notify.event.property = isServed ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  xcb_send_event(connection_.xcb(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, notify.bytes);
  connection_.flush();
}

/// Requests from before our time are meant for a former owner.
bool X11SelectionOwner::isAnswerable(const xcb_selection_request_event_t& request) const {
  return isOwner_ &&
         (request.time == XCB_CURRENT_TIME || !X11ServerClock::isBefore(request.time, ownedSince_));
}

bool X11SelectionOwner::convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
  if (target == targets_) {
    put(requestor, property, listOf(XCB_ATOM_ATOM, targets()));
  } else if (target == timestamp_) {
    put(requestor, property, listOf(XCB_ATOM_INTEGER, {ownedSince_}));
  } else if (target == saveTargets_) {
    // Listed to say that the content is worth saving when we end; there is nothing to answer.
    put(requestor, property, listOf(connection_.atom("NULL"), {}));
  } else {
    const auto offer = std::find_if(offers_.begin(), offers_.end(),
                                    [target](const SelectionOffer& o) { return o.target == target; });
    if (offer == offers_.end()) return false;
    put(requestor, property, offer->value);
  }
  return true;
}

/// Pairs of target and property in the requestor's own property; the ones that cannot be served are struck
/// out.
bool X11SelectionOwner::convertSeveral(xcb_window_t requestor, xcb_atom_t property) {
  constexpr uint32_t longestList = 1024;
  xcb_connection_t* const xcb = connection_.xcb();
  const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      xcb, xcb_get_property(xcb, 0, requestor, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestList),
      nullptr));
  if (!reply || reply->format != 32 || reply->bytes_after > 0) return false;
  const auto* first = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
  std::vector<xcb_atom_t> pairs(first, first + xcb_get_property_value_length(reply.get()) / 4);
  for (size_t i = 0; i + 1 < pairs.size(); i += 2) {
    const bool isServed =
        pairs[i] != multiple_ && pairs[i + 1] != XCB_ATOM_NONE && convert(requestor, pairs[i], pairs[i + 1]);
    if (!isServed) pairs[i + 1] = XCB_ATOM_NONE;
  }
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, requestor, property, reply->type, 32,
                      static_cast<uint32_t>(pairs.size()), pairs.data());
  return true;
}

std::vector<xcb_atom_t> X11SelectionOwner::targets() const {
  std::vector<xcb_atom_t> list{targets_, timestamp_, multiple_, saveTargets_};
  for (const SelectionOffer& offer : offers_) list.push_back(offer.target);
  return list;
}

void X11SelectionOwner::put(xcb_window_t requestor, xcb_atom_t property, const SelectionValue& value) {
  outgoing_.remove_if([&](const Outgoing& o) { return o.requestor == requestor && o.property == property; });
  if (value.bytes.size() <= pieceSize) return write(requestor, property, value, 0, value.bytes.size());

  // The requestor taking the announcement away is its signal for the first piece.
  connection_.addWindowEventMask(requestor, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
  const SelectionValue announcement = listOf(incremental_, {static_cast<uint32_t>(value.bytes.size())});
  write(requestor, property, announcement, 0, announcement.bytes.size());
  expectTaking(outgoing_.emplace_back(Outgoing{requestor, property, value, 0, {}}));
}

void X11SelectionOwner::write(xcb_window_t requestor, xcb_atom_t property, const SelectionValue& value,
                              qsizetype offset, qsizetype length) {
  xcb_change_property(connection_.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, value.type, value.format,
                      static_cast<uint32_t>(length / (value.format / 8)), value.bytes.constData() + offset);
}

void X11SelectionOwner::propertyChanged(const xcb_property_notify_event_t& event) {
  if (event.state != XCB_PROPERTY_DELETE) return;
  const auto found = std::find_if(outgoing_.begin(), outgoing_.end(), [&event](const Outgoing& o) {
    return o.requestor == event.window && o.property == event.atom;
  });
  if (found == outgoing_.end()) return;
  const qsizetype length = std::min(pieceSize, found->value.bytes.size() - found->offset);
  // The last piece is the empty one.
  write(found->requestor, found->property, found->value, found->offset, length);
  connection_.flush();
  if (length == 0) {
    outgoing_.erase(found);
    return;
  }
  found->offset += length;
  expectTaking(*found);
}

void X11SelectionOwner::expectTaking(Outgoing& outgoing) {
  outgoing.timeout = scheduler_.after(takingTime, [this, &outgoing] {
    outgoing_.remove_if([&outgoing](const Outgoing& o) { return &o == &outgoing; });
  });
}

}  // namespace lumeno
