#pragma once

#include <QHash>

#include "base/scheduler.h"
#include "platform/pasteboard.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_selection_content.h"
#include "platform/x11/x11_selection_owner.h"
#include "platform/x11/x11_selection_transfer.h"
#include "platform/x11/x11_server_clock.h"

namespace lumeno {

/// The CLIPBOARD selection with all its targets. A snapshot has one item; its types are the targets.
class X11Pasteboard final : public Pasteboard {
 public:
  X11Pasteboard(X11Connection& connection, Scheduler& scheduler);

  /// Counts the changes of owner, this program's own and the end of an owner included.
  [[nodiscard]] int64_t changeCount() override { return changeCount_; }
  [[nodiscard]] Job snapshot(std::function<void(std::optional<PasteboardSnapshot>)> done) override;
  void restore(const PasteboardSnapshot& snapshot) override;
  [[nodiscard]] Job readString(std::function<void(std::optional<QString>)> done) override;
  [[nodiscard]] Job readFileUrls(std::function<void(std::optional<std::vector<QUrl>>)> done) override;
  void setString(const QString& text) override;

  /// To be called before the program ends: passes what is on the clipboard to the desktop's clipboard
  /// manager, if it is ours and there is one. `done` is called once, from the event loop, within a second or
  /// so.
  void handOver(std::function<void()> done);

 private:
  /// The type and format that a target had on the wire, which a snapshot does not hold.
  struct WireType {
    xcb_atom_t type;
    uint8_t format;
  };

  void ownerChanged();
  [[nodiscard]] const std::vector<SelectionOffer>* ownOffers() const;
  [[nodiscard]] PasteboardSnapshot snapshotOf(const std::vector<SelectionOffer>& offers);
  [[nodiscard]] std::vector<SelectionOffer> offersOf(const PasteboardSnapshot& snapshot);

  X11Connection& connection_;
  Scheduler& scheduler_;
  const xcb_atom_t clipboard_;
  X11SelectionContent content_;
  X11SelectionOwner owner_;
  X11SelectionTransfers transfers_;
  X11ServerClock clock_;
  int64_t changeCount_ = 0;
  QHash<QByteArray, WireType> wireTypes_;               ///< of the latest snapshot
  std::optional<std::vector<SelectionOffer>> claimed_;  ///< waiting for the server's time
  Job claim_;
  Job handOver_;
  Subscription watch_;
};

}  // namespace lumeno
