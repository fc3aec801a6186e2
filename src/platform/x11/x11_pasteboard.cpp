#include "platform/x11/x11_pasteboard.h"

#include <algorithm>
#include <utility>

#include "platform/x11/x11_selection_watch.h"

namespace lumeno {

namespace {

using namespace std::chrono_literals;

constexpr auto handOverTime = 1s;

bool isLatin1(const QString& text) {
  return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() <= 0xff; });
}

}  // namespace

X11Pasteboard::X11Pasteboard(X11Connection& connection, Scheduler& scheduler)
    : connection_(connection),
      scheduler_(scheduler),
      clipboard_(connection.atom("CLIPBOARD")),
      content_(connection, scheduler, clipboard_),
      owner_(connection, scheduler, clipboard_),
      transfers_(connection, scheduler),
      clock_(connection),
      watch_(watchSelectionOwner(connection, clipboard_, [this](const auto&) { ownerChanged(); })) {}

void X11Pasteboard::ownerChanged() {
  ++changeCount_;
  content_.ownerChanged();
}

Job X11Pasteboard::snapshot(std::function<void(std::optional<PasteboardSnapshot>)> done) {
  if (const auto* offers = ownOffers()) {
    PasteboardSnapshot saved = snapshotOf(*offers);
    // The change that the claim still brings is no news: what it puts there is what is saved.
    if (claimed_) ++saved.changeCount;
    return scheduler_.after(0ms, [done = std::move(done), saved = std::move(saved)] { done(saved); });
  }
  return content_.readAll([this, done = std::move(done)](const auto& offers) {
    done(offers ? std::optional(snapshotOf(*offers)) : std::nullopt);
  });
}

void X11Pasteboard::restore(const PasteboardSnapshot& snapshot) {
  const int64_t changed = snapshot.changeCount + 1;
  if (changeCount_ != changed || claimed_) return;
  if (!snapshot.items.empty()) claimed_ = offersOf(snapshot);
  claim_ = clock_.now([this, changed](xcb_timestamp_t time) {
    auto offers = std::exchange(claimed_, std::nullopt);
    if (changeCount_ != changed) return;
    offers ? static_cast<void>(owner_.own(std::move(*offers), time)) : owner_.clear(time);
  });
}

Job X11Pasteboard::readString(std::function<void(std::optional<QString>)> done) {
  if (const auto* offers = ownOffers()) {
    return scheduler_.after(0ms, [done = std::move(done), text = content_.textIn(*offers)] { done(text); });
  }
  return content_.readText(std::move(done));
}

Job X11Pasteboard::readFileUrls(std::function<void(std::optional<std::vector<QUrl>>)> done) {
  if (const auto* offers = ownOffers()) {
    return scheduler_.after(0ms,
                            [done = std::move(done), urls = content_.fileUrlsIn(*offers)] { done(urls); });
  }
  return content_.readFileUrls(std::move(done));
}

void X11Pasteboard::setString(const QString& text) {
  // Counted besides the change of owner that it brings: a capture under way must not take it for the copy it
  // waits for, nor put something older in its place.
  ++changeCount_;
  const QByteArray utf8 = text.toUtf8();
  const xcb_atom_t utf8String = connection_.atom("UTF8_STRING");
  const auto offer = [this](const char* target, xcb_atom_t type, const QByteArray& bytes) {
    return SelectionOffer{connection_.atom(target), {type, 8, bytes}};
  };
  std::vector<SelectionOffer> offers{offer("UTF8_STRING", utf8String, utf8)};
  for (const char* target : {"text/plain;charset=utf-8", "text/plain"}) {
    offers.push_back(offer(target, connection_.atom(target), utf8));
  }
  offers.push_back(offer("TEXT", utf8String, utf8));
  if (isLatin1(text)) offers.push_back(offer("STRING", XCB_ATOM_STRING, text.toLatin1()));

  claimed_ = std::move(offers);
  claim_ = clock_.now([this](xcb_timestamp_t time) {
    auto claimed = std::exchange(claimed_, std::nullopt);
    owner_.own(std::move(*claimed), time);
  });
}

void X11Pasteboard::handOver(std::function<void()> done) {
  if (!ownOffers()) {
    handOver_ = scheduler_.after(0ms, std::move(done));
    return;
  }
  // What has been put on the clipboard just now is ours once the server has told the time.
  handOver_ = clock_.now([this, done = std::move(done)](xcb_timestamp_t) {
    std::vector<xcb_atom_t> targets;
    for (const SelectionOffer& offer : owner_.offers()) targets.push_back(offer.target);
    TransferRequest request{connection_.atom("CLIPBOARD_MANAGER"), connection_.atom("SAVE_TARGETS"),
                            QDeadlineTimer(handOverTime, Qt::PreciseTimer)};
    request.argument = std::move(targets);
    handOver_ = transfers_.start(request, [done](const TransferResult&) { done(); });
  });
}

/// What is on the clipboard, if it is ours or about to be.
const std::vector<SelectionOffer>* X11Pasteboard::ownOffers() const {
  if (claimed_) return &*claimed_;
  return owner_.isOwner() ? &owner_.offers() : nullptr;
}

PasteboardSnapshot X11Pasteboard::snapshotOf(const std::vector<SelectionOffer>& offers) {
  PasteboardSnapshot snapshot;
  snapshot.changeCount = changeCount_;
  wireTypes_.clear();
  if (offers.empty()) return snapshot;
  PasteboardSnapshot::Item& item = snapshot.items.emplace_back();
  for (const SelectionOffer& offer : offers) {
    const QByteArray name = connection_.atomName(offer.target);
    wireTypes_.insert(name, {offer.value.type, offer.value.format});
    item.dataByType.emplace_back(name, offer.value.bytes);
  }
  return snapshot;
}

std::vector<SelectionOffer> X11Pasteboard::offersOf(const PasteboardSnapshot& snapshot) {
  std::vector<SelectionOffer> offers;
  for (const auto& item : snapshot.items) {
    for (const auto& [name, bytes] : item.dataByType) {
      const xcb_atom_t target = connection_.atom(name);
      const WireType wire = wireTypes_.value(name, {target, 8});
      offers.push_back({target, {wire.type, wire.format, bytes}});
    }
  }
  return offers;
}

}  // namespace lumeno
