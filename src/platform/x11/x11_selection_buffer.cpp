#include "platform/x11/x11_selection_buffer.h"

#include <unistd.h>

#include <utility>

#include "platform/x11/x11_client.h"
#include "platform/x11/x11_selection_watch.h"
#include "platform/x11/x11_server_clock.h"

namespace lumeno {

namespace {

using namespace std::chrono_literals;

/// An owner that was busy is asked once more; one that hangs is not asked at every look.
constexpr int readsPerOffer = 2;

bool isSameWindow(const RunningApplication& a, const RunningApplication& b) {
  return a.window == b.window && a.processIdentifier == b.processIdentifier;
}

}  // namespace

X11SelectionBuffer::X11SelectionBuffer(X11Connection& connection, Scheduler& scheduler, InputActivity& input,
                                       Workspace& workspace)
    : connection_(connection),
      scheduler_(scheduler),
      input_(input),
      workspace_(workspace),
      ownProcess_(getpid()),
      content_(connection, scheduler, XCB_ATOM_PRIMARY),
      watch_(watchSelectionOwner(connection, XCB_ATOM_PRIMARY,
                                 [this](const xcb_xfixes_selection_notify_event_t& event) {
                                   ownerChanged(event.owner, event.timestamp);
                                 })),
      activation_(workspace.onActivation([this](const auto& application) { activated(application); })) {}

void X11SelectionBuffer::ownerChanged(xcb_window_t owner, xcb_timestamp_t time) {
  const auto process = processOfWindow(connection_, owner);
  const bool isOurs = process == ownProcess_ || isSameClient(connection_, owner, connection_.helperWindow());
  const bool isOurEnd = isTakenByUs_ && owner == XCB_WINDOW_NONE;
  if (isOurs || isOurEnd) {
    // Selecting in our own windows changes nothing, except that the offer can no longer be asked for its
    // text.
    isTakenByUs_ = true;
    if (round_->reading) answer(std::nullopt);
    return;
  }
  isTakenByUs_ = false;
  offer_ = Offer{.owner = owner,
                 .process = process,
                 .time = time,
                 .frontmost = workspace_.frontmostApplication(),
                 .readsLeft = readsPerOffer};
  ++serial_;
  if (round_->reading) {
    if (isFresh()) {
      content_.ownerChanged();
    } else {
      answer(std::nullopt);
    }
  }
  change_.emit();
}

void X11SelectionBuffer::activated(const std::optional<RunningApplication>& application) {
  // A moment without an active window, and our own windows having the keyboard, leave the selection as it is.
  if (!application || application->processIdentifier == ownProcess_) return;
  if (!offer_.frontmost || isSameWindow(*application, *offer_.frontmost)) return;
  offer_.hasFocusMoved = true;
  offer_.text.reset();
}

bool X11SelectionBuffer::isFresh() {
  if (offer_.owner == XCB_WINDOW_NONE || !offer_.frontmost || offer_.hasFocusMoved) return false;
  if (isTakenByUs_ && !offer_.text) return false;
  const auto frontmost = workspace_.frontmostApplication();
  if (!frontmost || !isSameWindow(*frontmost, *offer_.frontmost) || !isOwnerIn(*frontmost)) return false;
  const xcb_timestamp_t gestureStart = input_.gestureStartTime();
  return gestureStart == 0 || !X11ServerClock::isBefore(offer_.time, gestureStart);
}

bool X11SelectionBuffer::isOwnerIn(const RunningApplication& application) const {
  const auto window = static_cast<xcb_window_t>(application.window);
  return isSameClient(connection_, offer_.owner, window) || offer_.process == application.processIdentifier;
}

Job X11SelectionBuffer::freshText(std::function<void(std::optional<QString>)> done) {
  if (!isFresh() || (!offer_.text && !round_->reading && offer_.readsLeft == 0)) {
    return scheduler_.after(0ms, [done = std::move(done)] { done(std::nullopt); });
  }
  if (offer_.text) return scheduler_.after(0ms, [done = std::move(done), text = offer_.text] { done(text); });

  const uint64_t id = nextWaiter_++;
  round_->waiters.emplace(id, std::move(done));
  if (!round_->reading) {
    --offer_.readsLeft;
    round_->reading = content_.readText([this](std::optional<QString> text) { answer(std::move(text)); });
  }
  return Job([weak = std::weak_ptr(round_), id] {
    const auto round = weak.lock();
    if (round && round->waiters.erase(id) > 0 && round->waiters.empty()) round->reading = {};
  });
}

void X11SelectionBuffer::answer(std::optional<QString> text) {
  const Job finished = std::exchange(round_->reading, {});
  offer_.text = std::move(text);
  const std::optional<QString> result = isFresh() ? offer_.text : std::nullopt;
  // Taken out one by one: the one just told may cancel others, ask again, or be the end of this object.
  const auto round = round_;
  const uint64_t end = nextWaiter_;
  while (!round->waiters.empty() && round->waiters.begin()->first < end) {
    const auto waiter = round->waiters.extract(round->waiters.begin());
    waiter.mapped()(result);
  }
}

Subscription X11SelectionBuffer::onChange(std::function<void()> handler) {
  return change_.connect(std::move(handler));
}

}  // namespace lumeno
