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

  /// Called when the desktop's accessibility service has come, anew or for the first time.
  [[nodiscard]] Subscription onServiceAvailable(std::function<void()> handler) {
    return serviceAvailable_.connect(std::move(handler));
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
  Signal<> serviceAvailable_;
};

}  // namespace lumeno::atspi
