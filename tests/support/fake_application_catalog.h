#pragma once

#include <memory>
#include <utility>

#include "platform/application_catalog.h"

namespace lumeno {

/// A catalog that answers when it is told to.
class FakeApplicationCatalog final : public ApplicationCatalog {
 public:
  using Done = std::function<void(std::vector<InstalledApplication>)>;

  Job list(Done done) override {
    ++asked;
    auto question = std::make_shared<Done>(std::move(done));
    question_ = question;
    return Job([question] { *question = nullptr; });
  }

  /// Whether somebody waits for the list.
  [[nodiscard]] bool isWanted() const { return question_ && *question_; }
  void answer(std::vector<InstalledApplication> applications) {
    if (!isWanted()) return;
    const auto done = std::exchange(*question_, nullptr);
    done(std::move(applications));
  }

  int asked = 0;

 private:
  std::shared_ptr<Done> question_;
};

}  // namespace lumeno
