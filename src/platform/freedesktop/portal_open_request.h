#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QUrl>
#include <functional>

namespace lumeno {

/// One URL handed to the desktop portal, which may let the user choose the program. It deletes itself when
/// the portal has answered, or is not there.
class PortalOpenRequest final : public QObject {
  Q_OBJECT
 public:
  /// `done` is told whether something took the URL, never before this returns. A user who was asked and
  /// decided against it counts as served.
  static void start(const QUrl& url, std::function<void(bool opened)> done);

 private Q_SLOTS:
  void responded(uint response);

 private:
  PortalOpenRequest(const QUrl& url, std::function<void(bool opened)> done);
  void finish(bool opened);

  std::function<void(bool opened)> done_;
};

}  // namespace lumeno
