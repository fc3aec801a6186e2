#pragma once

#include <QHash>
#include <QJsonObject>
#include <QString>
#include <optional>

#include "platform/preferences_store.h"

namespace lumeno {

/// Preferences in one flat JSON object in one file, written atomically at each assignment.
///
/// Each write reads the file again first and changes only what was assigned, so that what others have written
/// meanwhile, and what newer versions keep there, survives. A file that went or was emptied meanwhile is made
/// again from what is known. A damaged file is set aside under another name. A file that cannot be read is
/// never overwritten. What cannot be stored holds until the program ends, and is stored with the next write
/// that succeeds.
class JsonPreferencesStore final : public PreferencesStore {
 public:
  explicit JsonPreferencesStore(QString path);

  [[nodiscard]] QJsonValue value(const QString& key) const override;
  void setValue(const QString& key, const QJsonValue& value) override;
  void remove(const QString& key) override;

  /// A sentence for the user when a file was set aside or the settings cannot be stored (until they can
  /// again), empty as long as all is well. Every trouble is told once.
  [[nodiscard]] Observable<QString>& problem() { return problem_; }

 private:
  /// What the file holds. Absent when it must not be overwritten, which has been told then.
  [[nodiscard]] std::optional<QJsonObject> read();
  void assign(const QString& key, const QJsonValue& value);
  void tellUnstorable(const QString& text);

  const QString path_;
  QJsonObject values_;
  QHash<QString, QJsonValue> unstored_;  ///< assigned, but not in the file; undefined when removed
  bool isUnstorable_ = false;            ///< and that is what `problem_` says
  Observable<QString> problem_;
};

}  // namespace lumeno
