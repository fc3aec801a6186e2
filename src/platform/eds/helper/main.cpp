// lumeno-calendar: does one thing with the user's calendar and exits. It reads one JSON object from standard
// input and writes one to standard output.
//
//   {"request": "defaultCalendar"}            the calendar that new events go to
//   {"request": "save", "uid": "…", "title": "…", "start": "20261116T150000", "end": "20261116T160000",
//    "zone": "Europe/Berlin"}                 saves an event in it, and tells which it was; times are on the
//                                             wall clock of the zone, or end in Z and are UTC
//
//   {"calendar": {"title": "Personal", "isWritable": true}}
//   {"failure": "refused" | "noCalendar" | "other", "message": "…"}

#include <unistd.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <clocale>
#include <csignal>
#include <cstdio>

#include "evolution_calendar.h"

using namespace Qt::StringLiterals;
using namespace lumeno::evolution;

namespace {

// Whoever asked gives up earlier. This ends the program also when nobody is left to end it.
constexpr unsigned longestLife = 60;  // seconds

QJsonObject toJson(const Failure& failure) {
  switch (failure.reason) {
    case Failure::Reason::refused:
      return {{"failure"_L1, "refused"_L1}};
    case Failure::Reason::noCalendar:
      return {{"failure"_L1, "noCalendar"_L1}};
    case Failure::Reason::other:
      break;
  }
  return {{"failure"_L1, "other"_L1}, {"message"_L1, failure.message}};
}

QJsonObject toJson(const std::variant<Calendar, Failure>& answer) {
  if (const auto* failure = std::get_if<Failure>(&answer)) return toJson(*failure);
  const auto& calendar = std::get<Calendar>(answer);
  return {{"calendar"_L1, QJsonObject{{"title"_L1, calendar.title}, {"isWritable"_L1, calendar.isWritable}}}};
}

Event eventIn(const QJsonObject& request) {
  const auto text = [&](QLatin1StringView field) { return request[field].toString().toUtf8(); };
  return {text("uid"_L1), text("title"_L1), text("start"_L1), text("end"_L1), text("zone"_L1)};
}

QJsonObject answerTo(const QJsonObject& request) {
  const QString name = request["request"_L1].toString();
  if (name == "defaultCalendar"_L1) return toJson(defaultCalendar());
  if (name == "save"_L1) return toJson(save(eventIn(request)));
  return toJson(Failure{Failure::Reason::other, u"Unknown request."_s});
}

}  // namespace

int main() {
  alarm(longestLife);
  // A save is carried out also when nobody waits for its answer any more.
  std::signal(SIGPIPE, SIG_IGN);
  std::setlocale(LC_ALL, "");
  QFile input;
  QFile output;
  if (!input.open(stdin, QFile::ReadOnly) || !output.open(stdout, QFile::WriteOnly)) return 1;
  const QByteArray answer = QJsonDocument(answerTo(QJsonDocument::fromJson(input.readAll()).object()))
                                .toJson(QJsonDocument::Compact);
  return output.write(answer) == answer.size() ? 0 : 1;
}
