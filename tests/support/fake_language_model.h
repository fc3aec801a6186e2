#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "base/qt_scheduler.h"
#include "platform/language_model.h"

namespace lumeno {

/// An on-device model that plays a script from the event loop: the snapshots, then the end or the error.
class FakeLanguageModel final : public LanguageModel {
 public:
  bool available = true;
  std::vector<QString> snapshots;
  std::optional<QString> error;
  bool endless = false;  ///< stays silent after the snapshots

  /// What was asked, in order.
  std::vector<QString> prompts;
  std::vector<int> tokenLimits;
  int cancelledCount = 0;  ///< requests dropped before their end

  [[nodiscard]] bool isAvailable() override { return available; }

  [[nodiscard]] Job streamResponse(const QString& prompt, Options options,
                                   std::function<void(const QString&)> onSnapshot,
                                   std::function<void(std::optional<QString>)> onEnd) override {
    prompts.push_back(prompt);
    tokenLimits.push_back(options.maximumResponseTokens);
    struct Play {
      bool cancelled = false;
      bool ended = false;
      Job timer;
    };
    const auto play = std::make_shared<Play>();
    play->timer = QtScheduler().after(std::chrono::milliseconds(0),
                                      [this, onSnapshot, onEnd, weak = std::weak_ptr(play)] {
                                        const auto running = weak.lock();
                                        for (const QString& snapshot : snapshots) {
                                          if (!running->cancelled) onSnapshot(snapshot);
                                        }
                                        if (running->cancelled || endless) return;
                                        running->ended = true;
                                        onEnd(error);
                                      });
    return Job([this, play] {
      play->cancelled = true;
      if (!play->ended) ++cancelledCount;
      play->timer.cancel();
    });
  }
};

}  // namespace lumeno
