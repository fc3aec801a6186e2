#pragma once

#include <xcb/xcb.h>

#include <QString>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "base/job.h"
#include "base/scheduler.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_selection_transfer.h"

namespace lumeno {

/// Reads what other applications have put into one selection, respecting the mark by which password managers
/// ask for their content not to be kept. Main thread; answers come from the event loop.
class X11SelectionContent {
 public:
  X11SelectionContent(X11Connection& connection, Scheduler& scheduler, xcb_atom_t selection);

  /// The text; absent when there is none, it is secret, or it has more than 16 MB.
  [[nodiscard]] Job readText(std::function<void(std::optional<QString>)> done);

  /// The local files in the selection; absent when there are none, some are not local or not told exactly, or
  /// it is secret.
  [[nodiscard]] Job readFileUrls(std::function<void(std::optional<std::vector<QUrl>>)> done);

  /// Everything that can be read and put back, in the order in which it is offered; empty when there is no
  /// owner; absent when there is an owner but nothing can be read, when the image is refused, when it is
  /// secret, or has more than 32 MB in all or more than 500 types. Of several image formats of the same
  /// picture one is enough.
  [[nodiscard]] Job readAll(std::function<void(std::optional<std::vector<SelectionOffer>>)> done);

  /// The text among offers that are at hand already, chosen and decoded as by `readText`.
  [[nodiscard]] std::optional<QString> textIn(const std::vector<SelectionOffer>& offers) const;
  /// The files, likewise.
  [[nodiscard]] std::optional<std::vector<QUrl>> fileUrlsIn(const std::vector<SelectionOffer>& offers) const;

  /// To be called when the selection has a new owner: reads that are under way begin again with that one,
  /// within their first deadline.
  void ownerChanged();

 private:
  class Reading;
  template <typename Answer>
  class ReadingOf;
  template <typename Answer>
  class BestReading;
  class TextReading;
  class FileReading;
  class FullReading;

  Job begin(std::shared_ptr<Reading> reading);
  [[nodiscard]] std::vector<xcb_atom_t> targetsNamed(std::span<const char* const> names,
                                                     const std::vector<xcb_atom_t>& targets) const;
  [[nodiscard]] std::vector<xcb_atom_t> textTargets(const std::vector<xcb_atom_t>& targets) const;
  [[nodiscard]] std::vector<xcb_atom_t> fileTargets(const std::vector<xcb_atom_t>& targets) const;
  [[nodiscard]] std::optional<std::vector<QUrl>> decodeFiles(xcb_atom_t target,
                                                             const SelectionValue& value) const;
  [[nodiscard]] std::optional<QString> decode(xcb_atom_t target, const SelectionValue& value) const;

  X11Connection& connection_;
  const xcb_atom_t selection_;
  X11SelectionTransfers transfers_;
  std::vector<std::weak_ptr<Reading>> readings_;
};

}  // namespace lumeno
