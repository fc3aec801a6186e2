#pragma once

#include <QJsonObject>

#include "platform/preferences_store.h"

namespace lumeno {

/// Preferences in memory. `writes` lists the keys in the order of their writes.
class FakePreferences final : public PreferencesStore {
 public:
  explicit FakePreferences(QJsonObject initial = {}) : values(std::move(initial)) {}

  [[nodiscard]] QJsonValue value(const QString& key) const override { return values.value(key); }
  void setValue(const QString& key, const QJsonValue& value) override {
    values.insert(key, value);
    writes += key;
  }
  void remove(const QString& key) override {
    values.remove(key);
    writes += key;
  }

  QJsonObject values;
  QStringList writes;
};

}  // namespace lumeno
