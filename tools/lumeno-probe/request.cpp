#include "request.h"

namespace lumeno::probe {

using namespace Qt::StringLiterals;

RequestError Request::mistyped(QLatin1StringView name, QLatin1StringView expected) const {
  if (!has(name)) return {u"missing field \"%1\""_s.arg(name)};
  return {u"field \"%1\" is not %2"_s.arg(name, expected)};
}

std::optional<QString> Request::optionalString(QLatin1StringView name) const {
  return has(name) ? std::optional(string(name)) : std::nullopt;
}

QString Request::string(QLatin1StringView name) const {
  const QJsonValue value = fields_[name];
  if (!value.isString()) throw mistyped(name, "a string"_L1);
  return value.toString();
}

double Request::number(QLatin1StringView name) const {
  const QJsonValue value = fields_[name];
  if (!value.isDouble()) throw mistyped(name, "a number"_L1);
  return value.toDouble();
}

bool Request::boolean(QLatin1StringView name) const {
  const QJsonValue value = fields_[name];
  if (!value.isBool()) throw mistyped(name, "true or false"_L1);
  return value.toBool();
}

QJsonArray Request::array(QLatin1StringView name) const {
  const QJsonValue value = fields_[name];
  if (!value.isArray()) throw mistyped(name, "a list"_L1);
  return value.toArray();
}

IntentKind Request::kind(QLatin1StringView name) const {
  const auto kind = intentKindFromRawValue(string(name));
  if (!kind) throw mistyped(name, "a kind"_L1);
  return *kind;
}

std::vector<double> Request::numbers(QLatin1StringView name, size_t count) const {
  std::vector<double> numbers;
  for (const QJsonValue value : array(name)) {
    if (!value.isDouble()) throw mistyped(name, "a list of numbers"_L1);
    numbers.push_back(value.toDouble());
  }
  if (numbers.size() != count) throw mistyped(name, "a list of the right length"_L1);
  return numbers;
}

Point Request::point(QLatin1StringView name) const {
  const auto values = numbers(name, 2);
  return {values[0], values[1]};
}

Rect Request::rect(QLatin1StringView name) const {
  const auto values = numbers(name, 4);
  return {values[0], values[1], values[2], values[3]};
}

SelectedContext Request::context() const {
  return {.id = {},
          .selectedText = string("text"_L1),
          .sourceApp = optionalString("app"_L1).value_or(QString()),
          .windowTitle = optionalString("window"_L1).value_or(QString())};
}

}  // namespace lumeno::probe
