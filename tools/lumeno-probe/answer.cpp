#include "answer.h"

#include <QJsonDocument>
#include <algorithm>
#include <array>

#include "operations.h"

namespace lumeno::probe {

using namespace Qt::StringLiterals;

namespace {

struct Operation {
  QLatin1StringView name;
  QJsonObject (*run)(const Request&);
};

constexpr auto operations = std::to_array<Operation>({
    {"suggest"_L1, suggest},
    {"detect"_L1, detectAll},
    {"features"_L1, features},
    {"template"_L1, localTemplate},
    {"prompt"_L1, prompt},
    {"draftTitle"_L1, draftTitle},
    {"planPrompt"_L1, planPrompt},
    {"sanitize"_L1, sanitize},
    {"screen"_L1, screen},
    {"shortcut"_L1, shortcut},
    {"place"_L1, place},
});

QJsonObject error(const QString& message) {
  return {{"error"_L1, message}};
}

QJsonObject run(const Request& request) {
  try {
    const QString name = request.string("op"_L1);
    const auto operation = std::ranges::find(operations, name, &Operation::name);
    return operation == operations.end() ? error(u"unknown operation \"%1\""_s.arg(name))
                                         : operation->run(request);
  } catch (const RequestError& failure) {
    return error(failure.message);
  }
}

QJsonObject answerObject(const QByteArray& line) {
  QJsonParseError parseError;
  const QJsonDocument document = QJsonDocument::fromJson(line, &parseError);
  if (parseError.error != QJsonParseError::NoError) return error(parseError.errorString());
  if (!document.isObject()) return error(u"not an object"_s);

  const Request request(document.object());
  QJsonObject answer = run(request);
  if (request.has("id"_L1)) answer["id"_L1] = request.fields()["id"_L1];
  return answer;
}

}  // namespace

QByteArray answer(const QByteArray& line) {
  return QJsonDocument(answerObject(line)).toJson(QJsonDocument::Compact);
}

}  // namespace lumeno::probe
