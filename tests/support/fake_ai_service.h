#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "ai/ai_service.h"
#include "base/scheduler.h"

namespace lumeno {

/// What the fake services made by one factory share: how they answer, and what they were asked.
struct FakeAIScript {
  bool available = true;
  /// Delivered one after the other, each `elementTime` after the one before; then the stream ends.
  std::vector<QString> elements;
  std::chrono::milliseconds elementTime{100};
  std::optional<AIFailure> failure;

  std::vector<std::pair<AIBackend, QString>> made;  ///< backend and model of each service
  std::vector<QString> prompts;
  int runningStreams = 0;
};

/// A backend that plays a script on the given scheduler.
class FakeAIService final : public AIService {
 public:
  FakeAIService(Scheduler& scheduler, std::shared_ptr<FakeAIScript> script)
      : scheduler_(scheduler), script_(std::move(script)) {}

  /// A factory of services that play the same script.
  static AIServiceFactory factory(Scheduler& scheduler, std::shared_ptr<FakeAIScript> script) {
    return [&scheduler, script = std::move(script)](AIBackend backend, const QString& model) {
      script->made.emplace_back(backend, model);
      return std::make_unique<FakeAIService>(scheduler, script);
    };
  }

  Job isAvailable(std::function<void(bool)> done) override {
    return scheduler_.after(std::chrono::milliseconds(0),
                            [script = script_, done = std::move(done)] { done(script->available); });
  }

  Job complete(const QString& prompt, std::function<void(std::variant<QString, AIFailure>)> done) override {
    script_->prompts.push_back(prompt);
    return scheduler_.after(script_->elementTime, [script = script_, done = std::move(done)] {
      if (script->failure) {
        done(*script->failure);
      } else if (script->elements.empty()) {
        done(AIFailure::of(AIServiceError::empty));
      } else {
        done(script->elements.back());
      }
    });
  }

  Job stream(const QString& prompt, std::function<void(const QString&)> onElement,
             std::function<void(std::optional<AIFailure>)> onEnd) override {
    script_->prompts.push_back(prompt);
    ++script_->runningStreams;
    const auto playing = std::make_shared<Playing>(
        Playing{scheduler_, script_, std::move(onElement), std::move(onEnd), 0, true, {}});
    playNext(playing);
    return Job([playing] { stop(*playing); });
  }

 private:
  struct Playing {
    Scheduler& scheduler;
    std::shared_ptr<FakeAIScript> script;
    std::function<void(const QString&)> onElement;
    std::function<void(std::optional<AIFailure>)> onEnd;
    std::size_t position;
    bool isRunning;
    Job step;
  };

  static void playNext(const std::shared_ptr<Playing>& playing) {
    playing->step = playing->scheduler.after(playing->script->elementTime, [weak = std::weak_ptr(playing)] {
      const auto current = weak.lock();
      if (current->position == current->script->elements.size()) {
        stop(*current);
        current->onEnd(current->script->failure);
        return;
      }
      current->onElement(current->script->elements[current->position++]);
      if (current->isRunning) playNext(current);
    });
  }

  static void stop(Playing& playing) {
    if (!std::exchange(playing.isRunning, false)) return;
    --playing.script->runningStreams;
    playing.step.cancel();
  }

  Scheduler& scheduler_;
  std::shared_ptr<FakeAIScript> script_;
};

}  // namespace lumeno
