#include "ai/ai_runner.h"

#include <gtest/gtest.h>

#include "ai/ai_service_factory.h"
#include "ai/foundation_models_service.h"
#include "ai/ollama_service.h"
#include "ai/prompt/prompt.h"
#include "support/fake_language_model.h"
#include "support/model_server.h"
#include "support/wait_until.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const ActionSuggestion suggestion{IntentKind::tone,         u"Polish"_s, {}, {}, {}, 0.5,
                                  u"Make it friendlier."_s, {}};
const SelectedContext context{{}, u"\n  send it now \n"_s, u"Mail"_s, {}};

QString localTemplate() {
  return ActionRunner().localText(IntentKind::tone, u"send it now"_s, context);
}

/// The updates of a whole run, in order.
struct Updates {
  QStringList partials;
  std::vector<AIRunner::Finished> finished;

  void add(const AIRunner::Update& update) {
    if (const auto* partial = std::get_if<AIRunner::Partial>(&update)) {
      EXPECT_TRUE(finished.empty());
      partials += partial->text;
    } else {
      finished.push_back(std::get<AIRunner::Finished>(update));
    }
  }
};

Updates runWith(const AIServiceFactory& factory) {
  Updates updates;
  Job job;
  {
    const AIRunner runner(factory, AIBackend::ollama, u"llama3.2"_s);
    job = runner.run(suggestion, context, [&](const auto& update) { updates.add(update); });
    EXPECT_EQ(updates.partials.size() + updates.finished.size(), 0u) << "answered before the call returned";
  }
  EXPECT_TRUE(waitUntil([&] { return !updates.finished.empty(); }));
  runFor(5ms);
  return updates;
}

AIServiceFactory factoryOver(FakeLanguageModel& model) {
  return [&model](AIBackend, const QString&) { return std::make_unique<FoundationModelsService>(&model); };
}

TEST(AIRunner, FinishesEveryRunWithTheAnswerOrTheTemplate) {
  const struct {
    const char* name;
    bool available;
    std::vector<QString> snapshots;
    std::optional<QString> error;
    AIRunner::Finished finished;
  } cases[] = {
      {"a whole answer", true, {u"Hel"_s, u"Hello"_s, u"Hello world\n"_s}, {}, {u"Hello world"_s, true}},
      {"broken off", true, {u"Draft"_s}, u"lost"_s, {u"Draft"_s, true}},
      {"nothing", true, {}, {}, {localTemplate(), false}},
      {"nothing, and broken off", true, {}, u"lost"_s, {localTemplate(), false}},
      {"blanks only", true, {u"a"_s, u" \n"_s}, {}, {localTemplate(), false}},
      {"not available", false, {u"a"_s}, {}, {localTemplate(), false}},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    FakeLanguageModel model;
    model.available = test.available;
    model.snapshots = test.snapshots;
    model.error = test.error;
    const Updates updates = runWith(factoryOver(model));
    const QStringList expected(test.snapshots.begin(), test.snapshots.end());
    EXPECT_EQ(updates.partials, test.available ? expected : QStringList());
    EXPECT_EQ(updates.finished, std::vector{test.finished}) << updates.finished[0].body.toStdString();
    const std::vector expectedPrompts(test.available ? 1 : 0, buildPrompt(suggestion, context));
    EXPECT_EQ(model.prompts, expectedPrompts);
  }
}

TEST(AIRunner, DroppingTheJobStopsTheRunAtAnyPoint) {
  for (const int wanted : {0, 1, 2}) {
    FakeLanguageModel model;
    model.snapshots = {u"a"_s, u"ab"_s, u"abc"_s};
    model.endless = true;
    int updates = 0;
    Job job = AIRunner(factoryOver(model), AIBackend::ollama, {}).run(suggestion, context, [&](const auto&) {
      if (++updates == wanted) job = {};
    });
    if (wanted == 0) job.cancel();
    const int cancelled = wanted == 0 ? 0 : 1;
    EXPECT_TRUE(waitUntil([&] { return updates == wanted && model.cancelledCount == cancelled; }));
    runFor(30ms);
    EXPECT_EQ(updates, wanted);
    EXPECT_EQ(model.cancelledCount, cancelled);
  }
}

TEST(AIRunner, RunsOverTheServerAndStopsItWhenDropped) {
  ModelServer::Reply answer = streamedReply(QStringList(500, u"word "_s));
  answer.partDelay = 2ms;
  ModelServer server([&](const ModelServer::Request& request) {
    return request.path == "/api/tags" ? tagsReply({}) : answer;
  });
  ASSERT_TRUE(server.listen());
  const AIServiceFactory factory = [&](AIBackend, const QString& model) {
    auto service = std::make_unique<OllamaService>(model);
    service->endpoint = server.url(u"/api/generate"_s);
    service->tagsEndpoint = server.url(u"/api/tags"_s);
    return service;
  };
  int updates = 0;
  Job job = AIRunner(factory, AIBackend::ollama, u"llama3.2"_s).run(suggestion, context, [&](const auto&) {
    if (++updates == 2) job.cancel();
  });
  ASSERT_TRUE(waitUntil([&] { return server.exchanges().size() == 2 && server.exchanges()[1]->ended; }));
  EXPECT_TRUE(server.exchanges()[1]->cancelled);
  runFor(20ms);
  EXPECT_EQ(updates, 2);

  answer = streamedReply({u"Good"_s, u" morning"_s});
  const Updates whole = runWith(factory);
  EXPECT_EQ(whole.partials, QStringList({u"Good"_s, u"Good morning"_s, u"Good morning"_s}));
  EXPECT_EQ(whole.finished, (std::vector{AIRunner::Finished{u"Good morning"_s, true}}));

  answer.status = 500;
  EXPECT_EQ(runWith(factory).finished, (std::vector{AIRunner::Finished{localTemplate(), false}}));
}

TEST(AIServiceFactory, ChoosesTheServiceOfTheBackend) {
  const AIServiceFactory factory = aiServiceFactory(nullptr);
  const auto ollama = factory(AIBackend::ollama, u"qwen2.5"_s);
  ASSERT_TRUE(dynamic_cast<OllamaService*>(ollama.get()));
  EXPECT_EQ(static_cast<OllamaService&>(*ollama).model, u"qwen2.5"_s);
  EXPECT_TRUE(dynamic_cast<FoundationModelsService*>(factory(AIBackend::appleIntelligence, {}).get()));
}

TEST(FoundationModelsService, WithoutAModelItIsUnavailable) {
  FoundationModelsService service(nullptr);
  std::optional<bool> available;
  std::optional<std::variant<QString, AIFailure>> completed;
  std::optional<AIFailure> streamed;
  const Job probe = service.isAvailable([&](bool answer) { available = answer; });
  const Job completion = service.complete({}, [&](const auto& answer) { completed = answer; });
  const Job stream = service.stream(
      {}, [](const QString&) { FAIL(); }, [&](const auto& end) { streamed = end; });
  EXPECT_FALSE(available || completed || streamed) << "answered before the calls returned";
  ASSERT_TRUE(waitUntil([&] { return available && completed && streamed; }));
  EXPECT_FALSE(*available);
  EXPECT_EQ(std::get<AIFailure>(*completed).message, u"This AI backend isn't available right now."_s);
  EXPECT_EQ(streamed->serviceError, AIServiceError::unavailable);
}

TEST(FoundationModelsService, AnswersFromAFreshRequestEach) {
  const struct {
    std::vector<QString> snapshots;
    std::optional<QString> error;
    QString answer;
    QString message;
  } cases[] = {
      {{u"ls"_s, u" ls -l\n"_s}, {}, u"ls -l"_s, {}},
      {{u" \n"_s}, {}, {}, u"The model returned an empty response."_s},
      {{u"ls"_s}, u"too long"_s, {}, u"too long"_s},
  };
  FakeLanguageModel model;
  FoundationModelsService service(&model);
  for (const auto& test : cases) {
    model.snapshots = test.snapshots;
    model.error = test.error;
    std::optional<std::variant<QString, AIFailure>> result;
    const Job job = service.complete(u"p"_s, [&](const auto& answer) { result = answer; });
    ASSERT_TRUE(waitUntil([&] { return result.has_value(); }));
    const auto* answer = std::get_if<QString>(&*result);
    EXPECT_EQ(answer ? *answer : QString(), test.answer);
    EXPECT_EQ(answer ? QString() : std::get<AIFailure>(*result).message, test.message);
  }
  EXPECT_EQ(model.tokenLimits, std::vector<int>(3, 1500));
  EXPECT_EQ(model.prompts, std::vector<QString>(3, u"p"_s));
}

}  // namespace
}  // namespace lumeno
