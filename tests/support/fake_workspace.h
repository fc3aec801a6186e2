#pragma once

#include <utility>

#include "platform/workspace.h"

namespace lumeno {

class FakeWorkspace final : public Workspace {
 public:
  std::optional<RunningApplication> frontmostApplication() override { return frontmost; }
  Subscription onActivation(std::function<void(const std::optional<RunningApplication>&)> handler) override {
    return activation_.connect(std::move(handler));
  }
  std::optional<QString> ownBundleIdentifier() override { return own; }

  /// Brings an application to the front and tells so.
  void activate(std::optional<RunningApplication> application) {
    frontmost = std::move(application);
    activation_.emit(frontmost);
  }
  [[nodiscard]] bool hasListeners() const { return activation_.hasListeners(); }

  std::optional<RunningApplication> frontmost;
  std::optional<QString> own = QStringLiteral("org.lumeno.Lumeno");

 private:
  Signal<const std::optional<RunningApplication>&> activation_;
};

}  // namespace lumeno
