#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "base/job.h"

namespace lumeno {

/// What was on the pasteboard, with every readable type in the order in which it was offered.
struct PasteboardSnapshot {
  struct Item {
    std::vector<std::pair<QByteArray, QByteArray>> dataByType;  ///< type name, data
    bool operator==(const Item&) const = default;
  };
  std::vector<Item> items;  ///< empty when the pasteboard was empty
  int64_t changeCount = 0;  ///< the pasteboard's count when the snapshot was taken
};

/// The general pasteboard (the clipboard). Main thread; nothing here blocks on the application that owns the
/// content: reads are asynchronous, with a deadline and a cap on the size.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  /// Grows with every change of owner or content.
  [[nodiscard]] virtual int64_t changeCount() = 0;

  /// Saves the content. Absent when it could not be saved whole (too large, too slow, marked secret): then
  /// nothing may be done that would replace it.
  [[nodiscard]] virtual Job snapshot(std::function<void(std::optional<PasteboardSnapshot>)> done) = 0;

  /// Puts a snapshot back. Where the content is still the saved one nothing is done; where it has been
  /// changed more than once since, by somebody newer, it is left alone.
  virtual void restore(const PasteboardSnapshot& snapshot) = 0;

  /// The plain text on the pasteboard; absent when there is none or it is marked secret.
  [[nodiscard]] virtual Job readString(std::function<void(std::optional<QString>)> done) = 0;

  /// The local files that were copied in a file manager, in its order and byte for byte; absent when there
  /// are none, one of them is not on this machine or not told exactly, or the content is marked secret.
  [[nodiscard]] virtual Job readFileUrls(std::function<void(std::optional<std::vector<QUrl>>)> done) = 0;

  /// Clears the pasteboard and puts plain text on it.
  virtual void setString(const QString& text) = 0;
};

}  // namespace lumeno
