#include "request_surroundings.h"

namespace lumeno::probe {

using namespace Qt::StringLiterals;

namespace {

QTimeZone readTimeZone(const QString& name) {
  const QTimeZone zone(name.toUtf8());
  if (name.isEmpty() || !zone.isValid()) throw RequestError{u"unknown time zone \"%1\""_s.arg(name)};
  return zone;
}

/// Language, script and territory codes joined by "_" or "-"; QLocale alone would quietly replace what it
/// does not know.
QLocale readLocale(const QString& name) {
  QString codes = name;
  const QStringList parts = codes.replace(u'-', u'_').split(u'_');
  bool isKnown = parts.size() <= 3 && QLocale::codeToLanguage(parts.front()) != QLocale::AnyLanguage;
  for (qsizetype i = 1; i < parts.size(); ++i) {
    const bool isScript = i == 1 && QLocale::codeToScript(parts[i]) != QLocale::AnyScript;
    const bool isTerritory =
        i == parts.size() - 1 && QLocale::codeToTerritory(parts[i]) != QLocale::AnyTerritory;
    isKnown = isKnown && (isScript || isTerritory);
  }
  if (!isKnown) throw RequestError{u"unknown locale \"%1\""_s.arg(name)};
  return QLocale(codes);
}

QDateTime readNow(const QString& iso, const QTimeZone& zone) {
  const QDateTime moment = QDateTime::fromString(iso, Qt::ISODateWithMs);
  if (!moment.isValid()) throw RequestError{u"no ISO time \"%1\""_s.arg(iso)};
  // Without an offset of its own it is a wall clock time of the zone.
  return moment.timeSpec() == Qt::LocalTime ? QDateTime(moment.date(), moment.time(), zone) : moment;
}

}  // namespace

detect::Surroundings surroundingsOf(const Request& request) {
  const QTimeZone zone = readTimeZone(request.optionalString("timeZone"_L1).value_or(u"UTC"_s));
  const QLocale locale = readLocale(request.optionalString("locale"_L1).value_or(u"en_US"_s));
  const auto now = request.optionalString("now"_L1);
  return {now ? readNow(*now, zone) : QDateTime::currentDateTimeUtc(), zone, locale};
}

}  // namespace lumeno::probe
