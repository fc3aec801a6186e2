#include "detections.h"

#include <QJsonArray>

#include "base/text.h"
#include "operations.h"
#include "request_surroundings.h"
#include "suggest/detect/detect.h"

namespace lumeno::probe {

using namespace Qt::StringLiterals;

namespace {

QJsonValue toJson(const std::optional<detect::Language>& language) {
  if (!language) return QJsonValue::Null;
  return QJsonObject{{"code"_L1, language->code}, {"probability"_L1, language->probability}};
}

QJsonObject toJson(const detect::DateMatch& match, const QTimeZone& zone) {
  return {{"date"_L1, match.date.toTimeZone(zone).toString(u"yyyy-MM-ddTHH:mm:ss")},
          {"epoch"_L1, match.date.toSecsSinceEpoch()},
          {"duration"_L1, match.durationSeconds}};
}

QJsonObject toJson(const detect::DirectMatch& match, QStringView text) {
  QJsonObject answer = {{"text"_L1, text.sliced(match.start, match.length).toString()}};
  if (match.type == detect::DirectMatch::Type::link) {
    answer["type"_L1] = "link"_L1;
    answer["url"_L1] = match.url.toString(QUrl::FullyEncoded);
  } else {
    answer["type"_L1] = "phone"_L1;
    answer["number"_L1] = match.number;
  }
  return answer;
}

template <typename Match>
QJsonObject withRange(QJsonObject answer, const Match& match, qsizetype offset) {
  answer["start"_L1] = offset + match.start;
  answer["length"_L1] = match.length;
  return answer;
}

}  // namespace

QJsonObject detections(const QString& text, const detect::Surroundings& surroundings) {
  const QStringView trimmed = text::trimmed(text);
  const qsizetype offset = trimmed.data() - QStringView(text).data();

  QJsonArray dates;
  for (const auto& match : detect::dates(trimmed, surroundings)) {
    dates += withRange(toJson(match, surroundings.timeZone), match, offset);
  }
  QJsonArray addresses;
  for (const auto& match : detect::addresses(trimmed)) addresses += withRange({}, match, offset);
  QJsonArray direct;
  for (const auto& match : detect::directMatches(trimmed, surroundings)) {
    direct += withRange(toJson(match, trimmed), match, offset);
  }
  return {{"language"_L1, toJson(detect::dominantLanguage(trimmed))},
          {"dates"_L1, dates},
          {"addresses"_L1, addresses},
          {"direct"_L1, direct}};
}

QJsonObject detectAll(const Request& request) {
  return detections(request.string("text"_L1), surroundingsOf(request));
}

}  // namespace lumeno::probe
