#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <optional>
#include <vector>

#include "base/geometry.h"
#include "records/intent_kind.h"
#include "records/selected_context.h"

/// One line of input, with typed access to its fields.
namespace lumeno::probe {

/// Why a request cannot be answered. Thrown by what reads a request, caught where it is answered.
struct RequestError {
  QString message;
};

class Request {
 public:
  explicit Request(QJsonObject fields) : fields_(std::move(fields)) {}

  /// Absent when the field is missing; all others throw for a missing or mistyped field.
  [[nodiscard]] std::optional<QString> optionalString(QLatin1StringView name) const;
  [[nodiscard]] QString string(QLatin1StringView name) const;
  [[nodiscard]] double number(QLatin1StringView name) const;
  [[nodiscard]] bool boolean(QLatin1StringView name) const;
  [[nodiscard]] QJsonArray array(QLatin1StringView name) const;
  [[nodiscard]] IntentKind kind(QLatin1StringView name) const;
  [[nodiscard]] Point point(QLatin1StringView name) const;
  [[nodiscard]] Rect rect(QLatin1StringView name) const;

  [[nodiscard]] bool has(QLatin1StringView name) const { return fields_.contains(name); }
  [[nodiscard]] bool isNull(QLatin1StringView name) const { return fields_[name].isNull(); }
  [[nodiscard]] const QJsonObject& fields() const { return fields_; }

  /// The selection that "text", "app" and "window" describe.
  [[nodiscard]] SelectedContext context() const;

 private:
  [[nodiscard]] std::vector<double> numbers(QLatin1StringView name, size_t count) const;
  [[nodiscard]] RequestError mistyped(QLatin1StringView name, QLatin1StringView expected) const;

  QJsonObject fields_;
};

}  // namespace lumeno::probe
