#pragma once

#include <QUrl>
#include <functional>

namespace lumeno {

/// Opens URLs with the user's default handler for their scheme.
class UrlOpener {
 public:
  virtual ~UrlOpener() = default;
  /// `done` (may be empty) is told on the main thread whether something took the URL. Never blocks. Addresses
  /// come as "maps://?q=…" and go to the user's map application, or to a map page where there is none.
  virtual void open(const QUrl& url, std::function<void(bool opened)> done) = 0;
};

}  // namespace lumeno
