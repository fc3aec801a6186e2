#pragma once

#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QVariant>

#include "platform/appearance.h"

namespace lumeno {

/// The look that the desktop's settings portal tells, followed as it changes. Where the portal has no
/// opinion, or there is none, dark or light follows the toolkit's own palette.
class PortalAppearance final : public QObject, public Appearance {
  Q_OBJECT
 public:
  /// Asks the portal and returns at once.
  PortalAppearance();
  [[nodiscard]] Observable<AppearancePreferences>& preferences() override { return preferences_; }

 private Q_SLOTS:
  void settingChanged(const QDBusMessage& signal);

 private:
  void publish();

  QHash<QString, QVariant> settings_;  ///< what the portal has told, by group and key
  Observable<AppearancePreferences> preferences_;
};

}  // namespace lumeno
