#include "ai/ollama_service.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkProxy>

#include "ai/http_exchange.h"
#include "support/model_server.h"
#include "support/wait_until.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Reply = ModelServer::Reply;

/// A service that talks to a server with one scripted reply.
struct Fixture {
  explicit Fixture(Reply reply = {})
      : reply(std::move(reply)), server([this](const ModelServer::Request&) { return this->reply; }) {
    EXPECT_TRUE(server.listen());
    service.endpoint = server.url(u"/api/generate"_s);
    service.tagsEndpoint = server.url(u"/api/tags"_s);
  }

  bool isAvailable() {
    std::optional<bool> result;
    const Job job = service.isAvailable([&](bool available) { result = available; });
    EXPECT_FALSE(result) << "answered before the call returned";
    EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
    return result.value_or(false);
  }

  QStringList listModels() {
    std::optional<QStringList> result;
    const Job job = service.listModels([&](const QStringList& names) { result = names; });
    EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
    return result.value_or(QStringList());
  }

  std::variant<QString, AIFailure> complete() {
    std::optional<std::variant<QString, AIFailure>> result;
    const Job job = service.complete(u"prompt"_s, [&](const auto& answer) { result = answer; });
    EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
    return result.value_or(QString());
  }

  struct Streamed {
    QStringList elements;
    std::optional<AIFailure> failure;
    int ends = 0;
  };
  Streamed stream() {
    Streamed result;
    const Job job = service.stream(
        u"prompt"_s, [&](const QString& element) { result.elements += element; },
        [&](const std::optional<AIFailure>& failure) {
          result.failure = failure;
          ++result.ends;
        });
    EXPECT_EQ(result.elements.size() + result.ends, 0) << "answered before the call returned";
    EXPECT_TRUE(waitUntil([&] { return result.ends > 0; }));
    runFor(5ms);
    return result;
  }

  Reply reply;
  ModelServer server;
  OllamaService service{u"llama3.2"_s};
};

Reply lines(std::vector<QByteArray> parts, Reply::Ending ending = Reply::Ending::proper) {
  return {.parts = std::move(parts), .ending = ending};
}
Reply withStatus(int status, Reply reply) {
  reply.status = status;
  return reply;
}
Reply cut(int bytesPerWrite, Reply reply) {
  reply.bytesPerWrite = bytesPerWrite;
  return reply;
}

enum class End { normal, unavailable, empty, transport };

End endOf(const std::optional<AIFailure>& failure) {
  if (!failure) return End::normal;
  EXPECT_FALSE(failure->message.isEmpty());
  if (!failure->serviceError) return End::transport;
  return *failure->serviceError == AIServiceError::empty ? End::empty : End::unavailable;
}

TEST(OllamaStream, DeliversTheGrowingAnswerWhateverTheServerDoes) {
  const QByteArray wide = pieceLine(u"Zürich – 日本 🎉"_s);
  const QByteArray crlf = pieceLine(u"a"_s).chopped(1) + "\r\n\r\n" + pieceLine(u"b"_s).chopped(1) + "\r";
  const struct {
    const char* name;
    Reply reply;
    QStringList elements;
    End end;
  } cases[] = {
      {"pieces join, and blanks between them stay",
       lines({pieceLine(u"Hel"_s), pieceLine(u"lo"_s), pieceLine(u" world"_s, true)}),
       {u"Hel"_s, u"Hello"_s, u"Hello world"_s},
       End::normal},
      {"elements are trimmed, the answer is not",
       lines({pieceLine(u"\n "_s), pieceLine(u" a"_s), pieceLine(u" \n"_s), pieceLine(u"b\u2003"_s)}),
       {u""_s, u"a"_s, u"a"_s, u"a \nb"_s},
       End::normal},
      {"characters cut into single bytes", cut(1, lines({wide})), {u"Zürich – 日本 🎉"_s}, End::normal},
      {"CRLF, CR, blank lines", lines({crlf, pieceLine(u"c"_s)}), {u"a"_s, u"ab"_s, u"abc"_s}, End::normal},
      {"foreign, broken and mistyped lines are skipped",
       lines({pieceLine(u"a"_s), "rubbish\n", "{\"response\":\"b\n", "{\"response\":7}\n", "[\"b\"]\n",
              "{\"response\":\"b\",\"done\":\"yes\"}\n", "{\"response\":\"\xff\"}\n", pieceLine(u"c"_s)}),
       {u"a"_s, u"ac"_s},
       End::normal},
      {"other members and a null mark do not matter",
       lines({"{\"done\":null,\"context\":[1],\"response\":\"a\"}\n"}),
       {u"a"_s},
       End::normal},
      {"nothing is read after the last piece",
       lines({pieceLine(u"a"_s, true) + pieceLine(u"b"_s), pieceLine(u"c"_s)}),
       {u"a"_s},
       End::normal},
      {"the last line needs no line break",
       lines({pieceLine(u"a"_s), pieceLine(u"b"_s).chopped(1)}),
       {u"a"_s, u"ab"_s},
       End::normal},
      {"an empty body", lines({}), {}, End::normal},
      {"closed early: what came stands, an unfinished line does not",
       lines({pieceLine(u"a"_s), pieceLine(u"b"_s).chopped(1)}, Reply::Ending::drop),
       {u"a"_s},
       End::transport},
      {"closed without an answer",
       {.parts = {}, .raw = ""_ba, .ending = Reply::Ending::drop},
       {},
       End::transport},
      {"no HTTP",
       {.parts = {}, .raw = "220 smtp ready\r\n\r\n"_ba, .ending = Reply::Ending::drop},
       {},
       End::transport},
      {"404", withStatus(404, streamedReply({u"a"_s})), {}, End::unavailable},
      {"500 that never ends",
       withStatus(500, lines({pieceLine(u"a"_s)}, Reply::Ending::silence)),
       {},
       End::unavailable},
      {"a redirect is not followed",
       {.parts = {}, .raw = "HTTP/1.1 302 Found\r\nLocation: /api/tags\r\nContent-Length: 0\r\n\r\n"_ba},
       {},
       End::unavailable},
      {"a status of success that is not 200", withStatus(204, lines({})), {}, End::unavailable},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    Fixture f(test.reply);
    const auto streamed = f.stream();
    EXPECT_EQ(streamed.elements, test.elements) << streamed.elements.join(u'|').toStdString();
    EXPECT_EQ(endOf(streamed.failure), test.end);
    EXPECT_EQ(streamed.ends, 1);
  }
}

TEST(OllamaStream, TakesOneVeryLongLine) {
  const QString text(16 * 1024 * 1024, u'x');
  Fixture f(lines({pieceLine(text), pieceLine({}, true)}));
  const auto streamed = f.stream();
  ASSERT_EQ(streamed.elements.size(), 2);
  EXPECT_TRUE(streamed.elements[0] == text);
}

TEST(OllamaStream, DroppingTheJobStopsDeliveryAndTheServer) {
  Reply reply = streamedReply(QStringList(2000, u"word "_s));
  reply.partDelay = 2ms;
  for (const int wanted : {0, 1, 3}) {
    SCOPED_TRACE(wanted);
    Fixture f(reply);
    int elements = 0;
    int ends = 0;
    Job job = f.service.stream(
        u"prompt"_s,
        [&](const QString&) {
          if (++elements == wanted) job.cancel();
        },
        [&](const auto&) { ++ends; });
    if (wanted == 0) {
      ASSERT_TRUE(waitUntil([&] { return f.server.exchanges().size() == 1; }));
      job = {};
    }
    ASSERT_TRUE(
        waitUntil([&] { return f.server.exchanges().size() == 1 && f.server.exchanges()[0]->ended; }));
    EXPECT_TRUE(f.server.exchanges()[0]->cancelled);
    EXPECT_LT(f.server.exchanges()[0]->writes, 200);
    runFor(20ms);
    EXPECT_EQ(elements, wanted);
    EXPECT_EQ(ends, 0);
  }
}

TEST(OllamaStream, PiecesThatArriveTogetherStopAtOnceToo) {
  Fixture f(lines({pieceLine(u"a"_s) + pieceLine(u"b"_s) + pieceLine(u"c"_s, true)}));
  QStringList elements;
  int ends = 0;
  Job job = f.service.stream(
      u"prompt"_s,
      [&](const QString& element) {
        elements += element;
        if (elements.size() == 2) job = {};
      },
      [&](const auto&) { ++ends; });
  ASSERT_TRUE(waitUntil([&] { return elements.size() == 2; }));
  runFor(20ms);
  EXPECT_EQ(elements, QStringList({u"a"_s, u"ab"_s}));
  EXPECT_EQ(ends, 0);
}

TEST(OllamaStream, TheJobOutlivesTheService) {
  Fixture f(streamedReply({u"a"_s, u"b"_s}));
  QStringList elements;
  Job job;
  {
    OllamaService service = f.service;
    job = service.stream(
        u"prompt"_s, [&](const QString& e) { elements += e; }, [](const auto&) {});
  }
  EXPECT_TRUE(waitUntil([&] { return elements.size() == 3; }));
}

TEST(OllamaService, SendsExactlyTheDocumentedRequests) {
  QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::HttpProxy, u"127.0.0.1"_s, 1));
  Fixture f(wholeReply(u"a"_s));
  const OllamaService fixed(u"m"_s);
  EXPECT_EQ(fixed.endpoint, QUrl(u"http://127.0.0.1:11434/api/generate"_s));
  EXPECT_EQ(fixed.tagsEndpoint, QUrl(u"http://127.0.0.1:11434/api/tags"_s));

  EXPECT_TRUE(f.isAvailable());
  f.complete();
  f.stream();
  QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
  const auto& exchanges = f.server.exchanges();
  ASSERT_EQ(exchanges.size(), 3u);
  EXPECT_EQ(exchanges[0]->request.method, "GET");
  EXPECT_EQ(exchanges[0]->request.path, "/api/tags");
  EXPECT_TRUE(exchanges[0]->request.body.isEmpty());
  for (const size_t i : {1u, 2u}) {
    const auto& request = exchanges[i]->request;
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.path, "/api/generate");
    EXPECT_EQ(request.headers["content-type"], "application/json");
    EXPECT_FALSE(request.headers.contains("upgrade"));
    const QJsonObject expected{
        {"model"_L1, u"llama3.2"_s}, {"prompt"_L1, u"prompt"_s}, {"stream"_L1, i == 2}};
    EXPECT_EQ(request.body, QJsonDocument(expected).toJson(QJsonDocument::Compact));
  }
}

TEST(OllamaService, AvailabilityIsAnAnswerOfStatus200InTime) {
  const struct {
    const char* name;
    Reply reply;
    bool expected;
  } cases[] = {
      {"any body", lines({"rubbish"}), true},
      {"the body is not waited for", lines({"{"}, Reply::Ending::silence), true},
      {"404", withStatus(404, tagsReply({})), false},
      {"500", withStatus(500, tagsReply({})), false},
      {"no answer in time", {.parts = {}, .raw = ""_ba, .ending = Reply::Ending::silence}, false},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(Fixture(test.reply).isAvailable(), test.expected) << test.name;
  }
  Fixture f;
  f.service.tagsEndpoint = QUrl(u"http://127.0.0.1:1/api/tags"_s);
  EXPECT_FALSE(f.isAvailable());
}

TEST(OllamaService, ListsModelsInStringOrder) {
  const struct {
    const char* name;
    Reply reply;
    QStringList expected;
  } cases[] = {
      {"sorted",
       tagsReply({u"qwen2.5"_s, u"llama3.2"_s, u"Gemma"_s}),
       {u"Gemma"_s, u"llama3.2"_s, u"qwen2.5"_s}},
      {"none installed", tagsReply({}), {}},
      {"status", withStatus(500, tagsReply({u"a"_s})), {}},
      {"an entry without a name", lines({"{\"models\":[{\"name\":\"a\"},{}]}"}), {}},
      {"no list", lines({"{\"models\":{\"name\":\"a\"}}"}), {}},
      {"no JSON", lines({"models"}), {}},
      {"broken off", lines({"{\"models\":[{\"name\":\"a\"}]}"}, Reply::Ending::drop), {}},
  };
  for (const auto& test : cases) EXPECT_EQ(Fixture(test.reply).listModels(), test.expected) << test.name;
}

TEST(OllamaService, CompletesWithTheTrimmedAnswerOrTheReason) {
  const struct {
    const char* name;
    Reply reply;
    QString answer;
    End end;
  } cases[] = {
      {"trimmed", cut(7, wholeReply(u"\n  ls -l ü \n"_s)), u"ls -l ü"_s, End::normal},
      {"blank", wholeReply(u"\n\n"_s), {}, End::empty},
      {"status wins over the body", withStatus(500, wholeReply(u"ls"_s)), {}, End::unavailable},
      {"no JSON", lines({"ls"}), {}, End::transport},
      {"broken off", lines({pieceLine(u"ls"_s)}, Reply::Ending::drop), {}, End::transport},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    const auto result = Fixture(test.reply).complete();
    if (test.end == End::normal) {
      ASSERT_TRUE(std::holds_alternative<QString>(result));
      EXPECT_EQ(std::get<QString>(result), test.answer);
    } else {
      ASSERT_TRUE(std::holds_alternative<AIFailure>(result));
      EXPECT_EQ(endOf(std::get<AIFailure>(result)), test.end);
    }
  }
  Fixture f;
  f.service.endpoint = QUrl(u"http://127.0.0.1:1/api/generate"_s);
  const auto result = f.complete();
  ASSERT_TRUE(std::holds_alternative<AIFailure>(result));
  EXPECT_EQ(std::get<AIFailure>(result).message, u"Could not connect to the model server."_s);
}

TEST(OllamaService, SendsLongPromptsWhole) {
  const QString prompt(20'000'000, u'x');
  Fixture f(wholeReply(u"a"_s));
  bool done = false;
  const Job job = f.service.complete(prompt, [&](const auto&) { done = true; });
  ASSERT_TRUE(waitUntil([&] { return done; }));
  EXPECT_GT(f.server.exchanges()[0]->request.body.size(), prompt.size());
}

TEST(HttpExchange, TheTimeOutIsOneOfSilence) {
  Reply steady = streamedReply(QStringList(8, u"x"_s));
  steady.partDelay = 100ms;
  Reply stalling = lines({pieceLine(u"x"_s)}, Reply::Ending::silence);
  for (const bool stalls : {false, true}) {
    ModelServer server([&](const auto&) { return stalls ? stalling : steady; });
    ASSERT_TRUE(server.listen());
    std::optional<HttpOutcome> outcome;
    int lineCount = 0;
    const Job job = startHttpExchange(
        {server.url(u"/"_s), std::nullopt, 400ms, HttpRequest::Body::lines},
        [&](const QByteArray&) {
          ++lineCount;
          return true;
        },
        [&](const HttpOutcome& result) { outcome = result; });
    ASSERT_TRUE(waitUntil([&] { return outcome.has_value(); }));
    EXPECT_EQ(outcome->kind, stalls ? HttpOutcome::Kind::failed : HttpOutcome::Kind::complete);
    EXPECT_EQ(outcome->errorText, stalls ? u"The request timed out."_s : QString());
    EXPECT_EQ(lineCount, stalls ? 1 : 9);
  }
}

}  // namespace
}  // namespace lumeno
