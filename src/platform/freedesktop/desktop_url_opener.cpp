// The toolkit's own way of opening URLs may block, and cannot tell that nothing has opened one. So the
// handler is found here, by the rules that all desktops share.

#include "platform/freedesktop/desktop_url_opener.h"

#include <algorithm>

#include "base/aside.h"
#include "platform/freedesktop/desktop_pages.h"
#include "platform/freedesktop/detached_process.h"
#include "platform/freedesktop/mime_handlers.h"
#include "platform/freedesktop/portal_open_request.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

bool startHandler(const QUrl& url) {
  const auto handler = defaultHandler("x-scheme-handler/"_L1 + url.scheme());
  return handler && startDetached(handler->commandFor(QString::fromLatin1(url.toEncoded())));
}

}  // namespace

void DesktopUrlOpener::open(const QUrl& url, std::function<void(bool opened)> done) {
  if (!done) done = [](bool) {};
  if (url.scheme() == "x-apple.systempreferences"_L1) {
    finishAside(
        *QThreadPool::globalInstance(), [url] { return startDetached(settingsPageCommand(url)); }, done);
    return;
  }
  const auto candidates = url.scheme() == "maps"_L1 ? mapUrls(url) : std::vector{url};
  finishAside(
      *QThreadPool::globalInstance(),
      [candidates] { return std::any_of(candidates.begin(), candidates.end(), startHandler); },
      [done, last = candidates.back()](bool started) {
        if (started) {
          done(true);
        } else {
          PortalOpenRequest::start(last, done);
        }
      });
}

}  // namespace lumeno
