#include "records/hotkey_config.h"

#include <cmath>
#include <limits>

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

std::optional<uint64_t> wholeNumber(const QJsonValue& value, double limit) {
  if (!value.isDouble()) return std::nullopt;
  const double number = value.toDouble();
  if (!(number >= 0 && number <= limit) || std::floor(number) != number) return std::nullopt;
  return static_cast<uint64_t>(number);
}

}  // namespace

QJsonObject toJson(const HotkeyConfig& config) {
  return {{"keyCode"_L1, config.keyCode}, {"modifiers"_L1, static_cast<qint64>(config.modifiers)}};
}

std::optional<HotkeyConfig> hotkeyConfigFromJson(const QJsonObject& object) {
  // Beyond 2^53 a JSON number no longer holds every bit of a mask.
  const auto keyCode = wholeNumber(object["keyCode"_L1], std::numeric_limits<uint16_t>::max());
  const auto modifiers = wholeNumber(object["modifiers"_L1], 9007199254740992.0);
  if (!keyCode || !modifiers) return std::nullopt;
  return HotkeyConfig{static_cast<uint16_t>(*keyCode), *modifiers};
}

}  // namespace lumeno
