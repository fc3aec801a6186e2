#include "platform/freedesktop/desktop_application_launcher.h"

#include <QDir>
#include <QUrl>

#include "base/aside.h"
#include "platform/freedesktop/detached_process.h"
#include "platform/freedesktop/mime_handlers.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

/// Starts the handler of a type with a URL, or with nothing when it is empty.
void startHandlerOf(const QString& mimeType, const QString& url, std::function<void(bool)> done) {
  const auto start = [mimeType, url] {
    const auto handler = defaultHandler(mimeType);
    return handler && startDetached(handler->commandFor(url));
  };
  finishAside(
      *QThreadPool::globalInstance(), start, done ? std::move(done) : [](bool) {});
}

}  // namespace

void DesktopApplicationLauncher::openTextEditor(std::function<void(bool opened)> done) {
  startHandlerOf(u"text/plain"_s, {}, std::move(done));
}

void DesktopApplicationLauncher::openHomeFolder(std::function<void(bool opened)> done) {
  const QString home = QString::fromLatin1(QUrl::fromLocalFile(QDir::homePath()).toEncoded());
  startHandlerOf(u"inode/directory"_s, home, std::move(done));
}

}  // namespace lumeno
