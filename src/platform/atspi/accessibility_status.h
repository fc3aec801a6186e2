#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include "base/observable.h"

namespace lumeno::atspi {

/// Whether the desktop's accessibility is on and the user has granted this program its use. The grant is a
/// marker file, written only when the user asks for access. Main thread; never blocks.
class AccessibilityStatus final : public QObject {
  Q_OBJECT
 public:
  /// `markerPath`: where the grant is kept.
  explicit AccessibilityStatus(QString markerPath, QObject* parent = nullptr);

  /// Accessibility is on and access was granted, as last known.
  [[nodiscard]] bool isTrusted() const { return isEnabled_ && isGranted_; }
  /// Keeps the grant and switches accessibility on.
  void grant();

  /// Told true when trust is there and the service has come, anew or for the first time; false when trust has
  /// gone.
  [[nodiscard]] Subscription onTrust(std::function<void(bool)> handler) {
    return trust_.connect(std::move(handler));
  }

 private Q_SLOTS:
  void propertiesChanged(const QString& interface, const QVariantMap& changed,
                         const QStringList& invalidated);

 private:
  void askForState();
  void setEnabled(bool enabled);
  void switchOn();

  QString markerPath_;
  QDBusServiceWatcher watcher_;
  bool isEnabled_ = false;
  bool isGranted_ = false;
  Signal<bool> trust_;
};

}  // namespace lumeno::atspi
