#pragma once

#include "platform/url_opener.h"

namespace lumeno {

/// Opens URLs with the desktop's default handler for their scheme, or through the desktop portal where no
/// handler is to be seen. Handlers are looked up and started on a worker thread.
class DesktopUrlOpener final : public UrlOpener {
 public:
  void open(const QUrl& url, std::function<void(bool opened)> done) override;
};

}  // namespace lumeno
