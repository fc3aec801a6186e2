#pragma once

#include <QJsonValue>
#include <QString>
#include <functional>

#include "base/observable.h"

namespace lumeno {

/// Typed user preferences under string keys. Main thread.
class PreferencesStore {
 public:
  virtual ~PreferencesStore() = default;
  /// `QJsonValue::Undefined` when the key is absent. Types are kept: a string is never read as a boolean.
  [[nodiscard]] virtual QJsonValue value(const QString& key) const = 0;
  /// Stored at once. Other keys, also unknown ones and ones changed from outside meanwhile, are kept.
  virtual void setValue(const QString& key, const QJsonValue& value) = 0;
  virtual void remove(const QString& key) = 0;
};

}  // namespace lumeno
