// Every transfer has a requestor window of its own, so that a late answer can never be taken for the answer
// to a later question.
//
// A transfer that nobody waits for any more (deadline, cancelled, too large) is not simply dropped. An owner
// that sends in pieces waits for each piece to be taken away, some of them doing nothing else meanwhile; and
// writing to a window that is gone is an error which some owners do not survive. So the window stays for a
// while and pieces that still come are taken and thrown away, up to a limit.

#include "platform/x11/x11_selection_transfer.h"

#include <utility>

namespace lumeno {

namespace {

constexpr std::chrono::seconds lateAnswerTime{60};
constexpr qsizetype discardLimit = 64 * 1024 * 1024;

}  // namespace

struct X11SelectionTransfers::Transfer {
  enum class Stage { awaitingAnswer, receivingPieces };

  xcb_window_t window;
  qsizetype byteLimit;
  std::function<void(TransferResult)> done;  ///< empty once nobody waits for it any more
  Stage stage = Stage::awaitingAnswer;
  SelectionValue value;
  qsizetype discarded = 0;
  Job timer;
  Job nextPiece;
};

X11SelectionTransfers::X11SelectionTransfers(X11Connection& connection, Scheduler& scheduler)
    : connection_(connection),
      scheduler_(scheduler),
      property_(connection.atom("LUMENO_TRANSFER")),
      incremental_(connection.atom("INCR")),
      self_(std::make_shared<X11SelectionTransfers*>(this)) {
  selectionNotify_ = connection_.onEvent(XCB_SELECTION_NOTIFY, [this](const xcb_generic_event_t& event) {
    selectionNotified(reinterpret_cast<const xcb_selection_notify_event_t&>(event));
  });
  propertyNotify_ = connection_.onEvent(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
    propertyChanged(reinterpret_cast<const xcb_property_notify_event_t&>(event));
  });
}

X11SelectionTransfers::~X11SelectionTransfers() {
  for (const auto& [window, transfer] : transfers_) xcb_destroy_window(connection_.xcb(), window);
  connection_.flush();
}

Job X11SelectionTransfers::start(const TransferRequest& request, std::function<void(TransferResult)> done) {
  xcb_connection_t* const xcb = connection_.xcb();
  const xcb_window_t window = xcb_generate_id(xcb);
  const uint32_t values[] = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
  xcb_create_window(xcb, 0, window, connection_.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
  if (request.argument) {
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, property_, XCB_ATOM_ATOM, 32,
                        static_cast<uint32_t>(request.argument->size()), request.argument->data());
  }
  // Not the time of an event: owners that took the selection without one refuse anything but the current
  // time.
  xcb_convert_selection(xcb, window, request.selection, request.target, property_, XCB_CURRENT_TIME);
  connection_.flush();

  auto transfer = std::make_unique<Transfer>();
  transfer->window = window;
  transfer->byteLimit = request.byteLimit;
  transfer->done = std::move(done);
  transfer->timer = scheduler_.after(
      std::chrono::ceil<std::chrono::milliseconds>(request.deadline.remainingTimeAsDuration()),
      [this, window] { giveUp(*transfers_.at(window), TransferOutcome::tooLate); });
  transfers_.emplace(window, std::move(transfer));

  return Job([weak = std::weak_ptr(self_), window] {
    if (const auto self = weak.lock()) (*self)->cancel(window);
  });
}

void X11SelectionTransfers::cancel(xcb_window_t window) {
  const auto found = transfers_.find(window);
  if (found == transfers_.end() || !found->second->done) return;
  // Emptied before it is destroyed: what it holds may hold the handle that is being cancelled.
  const auto dropped = std::exchange(found->second->done, nullptr);
  giveUp(*found->second, TransferOutcome::tooLate);
}

void X11SelectionTransfers::selectionNotified(const xcb_selection_notify_event_t& event) {
  const auto found = transfers_.find(event.requestor);
  if (found == transfers_.end() || found->second->stage != Transfer::Stage::awaitingAnswer) return;
  if (event.property == XCB_ATOM_NONE) {
    finish(event.requestor, TransferOutcome::refused);
  } else {
    readAnswer(*found->second);
  }
}

void X11SelectionTransfers::propertyChanged(const xcb_property_notify_event_t& event) {
  if (event.state != XCB_PROPERTY_NEW_VALUE || event.atom != property_) return;
  const auto found = transfers_.find(event.window);
  if (found == transfers_.end() || found->second->stage != Transfer::Stage::receivingPieces) return;
  // In the loop's next turn: a quick owner of much data would otherwise keep everything else waiting.
  found->second->nextPiece = scheduler_.after(std::chrono::milliseconds(0),
                                              [this, &transfer = *found->second] { readPiece(transfer); });
}

/// The first look at what the owner has put down: all of it, or the announcement that it comes in pieces.
void X11SelectionTransfers::readAnswer(Transfer& transfer) {
  xcb_connection_t* const xcb = connection_.xcb();
  const xcb_window_t window = transfer.window;
  const XcbPtr<xcb_get_property_reply_t> head(xcb_get_property_reply(
      xcb, xcb_get_property(xcb, 0, window, property_, XCB_GET_PROPERTY_TYPE_ANY, 0, 1), nullptr));
  if (!head || head->type == XCB_ATOM_NONE) return finish(window, TransferOutcome::refused);

  const qsizetype headLength = xcb_get_property_value_length(head.get());
  if (head->type == incremental_) {
    const bool hasSize = head->format == 32 && headLength == 4;
    const qsizetype leastSize =
        hasSize ? *static_cast<const uint32_t*>(xcb_get_property_value(head.get())) : 0;
    transfer.stage = Transfer::Stage::receivingPieces;
    // Left in place, the announcement keeps an owner with far too much from sending any of it.
    if (leastSize <= discardLimit) {
      xcb_delete_property(xcb, window, property_);
      connection_.flush();
    }
    if (!transfer.done || leastSize > transfer.byteLimit) giveUp(transfer, TransferOutcome::tooLarge);
    return;
  }

  if (!transfer.done) return remove(window);
  const qsizetype size = headLength + head->bytes_after;
  if (size > transfer.byteLimit) return finish(window, TransferOutcome::tooLarge);
  const XcbPtr<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(xcb,
                             xcb_get_property(xcb, 0, window, property_, XCB_GET_PROPERTY_TYPE_ANY, 0,
                                              static_cast<uint32_t>(size / 4 + 1)),
                             nullptr));
  if (!reply || reply->bytes_after > 0) return finish(window, TransferOutcome::refused);
  transfer.value = {reply->type, reply->format,
                    QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                               xcb_get_property_value_length(reply.get()))};
  finish(window, TransferOutcome::delivered);
}

void X11SelectionTransfers::readPiece(Transfer& transfer) {
  xcb_connection_t* const xcb = connection_.xcb();
  const xcb_window_t window = transfer.window;
  const qsizetype wanted = transfer.done ? transfer.byteLimit - transfer.value.bytes.size() : 0;
  const XcbPtr<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(xcb,
                             xcb_get_property(xcb, 1, window, property_, XCB_GET_PROPERTY_TYPE_ANY, 0,
                                              static_cast<uint32_t>(wanted / 4 + 1)),
                             nullptr));
  if (!reply || reply->type == XCB_ATOM_NONE) return;  // taken away by somebody else
  const qsizetype length = xcb_get_property_value_length(reply.get());
  const qsizetype size = length + reply->bytes_after;

  if (size == 0) {
    if (transfer.value.type == XCB_ATOM_NONE) transfer.value = {reply->type, reply->format, {}};
    return finish(window, TransferOutcome::delivered);
  }
  if (transfer.done && size <= wanted) {
    transfer.value.type = reply->type;
    transfer.value.format = reply->format;
    transfer.value.bytes.append(static_cast<const char*>(xcb_get_property_value(reply.get())), length);
    return;
  }
  transfer.discarded += size;
  if (transfer.discarded > discardLimit) return remove(window);
  if (reply->bytes_after > 0) xcb_delete_property(xcb, window, property_);
  connection_.flush();
  giveUp(transfer, TransferOutcome::tooLarge);
}

/// Ends a transfer with which the owner is done too.
void X11SelectionTransfers::finish(xcb_window_t window, TransferOutcome outcome) {
  const auto found = transfers_.find(window);
  if (found == transfers_.end()) return;
  const auto transfer = std::move(found->second);
  remove(window);
  if (!transfer->done) return;
  if (outcome != TransferOutcome::delivered) transfer->value = {};
  transfer->done({outcome, std::move(transfer->value)});
}

/// Tells the one who waits, if there still is one, while the owner may be busy with the transfer for longer.
void X11SelectionTransfers::giveUp(Transfer& transfer, TransferOutcome outcome) {
  const auto done = std::exchange(transfer.done, nullptr);
  transfer.value = {};
  transfer.timer = scheduler_.after(lateAnswerTime, [this, window = transfer.window] { remove(window); });
  if (done) done({outcome, {}});
}

void X11SelectionTransfers::remove(xcb_window_t window) {
  transfers_.erase(window);
  xcb_destroy_window(connection_.xcb(), window);
  connection_.flush();
}

}  // namespace lumeno
