#pragma once

#include <gtest/gtest.h>

#include "files/file_action_service.h"
#include "support/fake_ai_service.h"
#include "support/fake_command_shell.h"
#include "support/manual_scheduler.h"
#include "support/wait_until.h"

namespace lumeno::testing {

/// The real service on a model that plays a script and a shell that only remembers.
class FileActionTest : public ::testing::Test {
 protected:
  /// Lets the model answer.
  void letModelAnswer() { scheduler.advance(ai->elementTime); }

  [[nodiscard]] FileActionService service(Scheduler& clock) {
    return {FakeAIService::factory(scheduler, ai), shell, clock, AIBackend::ollama, QStringLiteral("qwen")};
  }
  [[nodiscard]] FileActionService service() { return service(scheduler); }

  ManualScheduler scheduler;
  std::shared_ptr<FakeAIScript> ai = std::make_shared<FakeAIScript>();
  FakeCommandShell shell{scheduler};
  FileSelection selection{{fileUrl("/tmp/two words/a.txt"), fileUrl("/tmp/two words/b.txt")}, {}, {}};
};

}  // namespace lumeno::testing
