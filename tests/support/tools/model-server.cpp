// The model server stand-in as a program, for end-to-end tests and demonstrations.
// Prints "listening on PORT" when ready, then one JSON line for each request when its exchange ends.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <cstdio>

#include "support/model_server.h"

using namespace Qt::StringLiterals;
using lumeno::ModelServer;

namespace {

struct Options {
  std::optional<QStringList> pieces;
  std::vector<std::pair<QString, QString>> answers;  ///< a part of the prompt, and what is then answered
  int status = 200;
  std::chrono::milliseconds delay{0};
  bool stall = false;
  QStringList models;
};

/// Words with the blank before each, as a model's pieces come.
QStringList wordPieces(const QString& text) {
  static const QRegularExpression word(u"\\s*\\S+"_s);
  QStringList pieces;
  for (const auto& match : word.globalMatch(text)) pieces += match.captured();
  return pieces;
}

QString between(const QString& text, const QString& begin, const QString& end) {
  const auto from = text.indexOf(begin);
  return from < 0 ? QString() : text.mid(from + begin.size()).section(end, 0, 0);
}

QString answerTo(const QString& prompt, const Options& options) {
  for (const auto& [part, answer] : options.answers) {
    if (prompt.contains(part)) return answer;
  }
  const QString selected = between(prompt, u"\"\"\"\n"_s, u"\n\"\"\""_s);
  const QString task = between(prompt, u"Task: "_s, u"\n"_s);
  if (task.contains("professional"_L1, Qt::CaseInsensitive)) {
    return u"Thank you for your message. I would be grateful if you could review this at your earliest "
           u"convenience "
           "and let me know how you would like to proceed."_s;
  }
  if (prompt.contains("User request: "_L1)) return u"ls -l"_s;
  return u"Answer to: "_s + selected.simplified().section(u' ', 0, 7);
}

ModelServer::Reply reply(const Options& options, const ModelServer::Request& request) {
  ModelServer::Reply reply;
  if (request.path == "/api/tags" && request.method == "GET") {
    reply = lumeno::tagsReply(options.models);
  } else if (request.path == "/api/generate" && request.method == "POST") {
    const QJsonObject body = QJsonDocument::fromJson(request.body).object();
    const QStringList pieces =
        options.pieces.value_or(wordPieces(answerTo(body["prompt"_L1].toString(), options)));
    reply = body["stream"_L1].toBool(true) ? lumeno::streamedReply(pieces)
                                           : lumeno::wholeReply(pieces.join(QString()));
    reply.status = options.status;
    reply.partDelay = options.delay;
    if (options.stall) {
      // Half of the answer, then silence.
      reply.parts.resize(reply.parts.size() / 2);
      reply.ending = ModelServer::Reply::Ending::silence;
    }
  } else {
    reply.status = 404;
  }
  return reply;
}

void logExchange(const ModelServer::Exchange& exchange) {
  const QJsonObject body = QJsonDocument::fromJson(exchange.request.body).object();
  const QJsonObject entry{{"method"_L1, QString::fromLatin1(exchange.request.method)},
                          {"path"_L1, QString::fromLatin1(exchange.request.path)},
                          {"model"_L1, body["model"_L1]},
                          {"prompt"_L1, body["prompt"_L1]},
                          {"stream"_L1, body["stream"_L1]},
                          {"cancelled"_L1, exchange.cancelled}};
  std::printf("%s\n", QJsonDocument(entry).toJson(QJsonDocument::Compact).constData());
  std::fflush(stdout);
}

QJsonDocument readJson(const QString& path) {
  QFile file(path);
  return file.open(QFile::ReadOnly) ? QJsonDocument::fromJson(file.readAll()) : QJsonDocument();
}

std::optional<QStringList> readPieces(const QString& path) {
  const QJsonDocument document = readJson(path);
  if (!document.isArray()) return std::nullopt;
  QStringList pieces;
  for (const auto& piece : document.array().toVariantList()) pieces += piece.toString();
  return pieces;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  parser.addHelpOption();
  parser.addOptions({
      {u"port"_s, u"Port on 127.0.0.1; 0 takes any free one."_s, u"number"_s, u"11434"_s},
      {u"answer"_s, u"The answer to every prompt, sent word by word."_s, u"text"_s},
      {u"answers-file"_s,
       u"Answers by what the prompt holds: a JSON array of arrays of two strings. The first that fits counts."_s,
       u"path"_s},
      {u"pieces-file"_s, u"The pieces of the answer to every prompt: a JSON array of strings."_s, u"path"_s},
      {u"delay-ms"_s, u"Wait before each piece."_s, u"milliseconds"_s, u"0"_s},
      {u"status"_s, u"HTTP status of every answer to a prompt."_s, u"code"_s, u"200"_s},
      {u"stall"_s, u"Fall silent in the middle of every answer."_s},
      {u"models"_s, u"Installed models, separated by commas."_s, u"names"_s, u"llama3.2,qwen2.5"_s},
  });
  parser.process(application);

  Options options;
  options.status = parser.value(u"status"_s).toInt();
  options.delay = std::chrono::milliseconds(parser.value(u"delay-ms"_s).toInt());
  options.stall = parser.isSet(u"stall"_s);
  options.models = parser.value(u"models"_s).split(u',', Qt::SkipEmptyParts);
  if (parser.isSet(u"answer"_s)) options.pieces = wordPieces(parser.value(u"answer"_s));
  if (parser.isSet(u"answers-file"_s)) {
    const QJsonDocument document = readJson(parser.value(u"answers-file"_s));
    if (!document.isArray()) qFatal("the answers file is no JSON array");
    for (const auto& entry : document.array())
      options.answers.emplace_back(entry[0].toString(), entry[1].toString());
  }
  if (parser.isSet(u"pieces-file"_s)) {
    options.pieces = readPieces(parser.value(u"pieces-file"_s));
    if (!options.pieces) qFatal("the pieces file is no JSON array of strings");
  }

  ModelServer server([&options](const ModelServer::Request& request) { return reply(options, request); });
  server.onEnded = logExchange;
  if (!server.listen(static_cast<quint16>(parser.value(u"port"_s).toUInt()))) qFatal("the port is taken");
  std::printf("listening on %d\n", server.port());
  std::fflush(stdout);
  return QCoreApplication::exec();
}
