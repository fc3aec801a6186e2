#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "settings_ui/settings_state.h"
#include "support/fake_application_catalog.h"
#include "support/fake_feedback_devices.h"
#include "support/fake_key_recorder.h"
#include "support/fake_login_item.h"
#include "support/fake_preferences.h"
#include "support/print_text.h"

namespace lumeno {

/// The real store on fakes of the system, and a model server that answers when it is told to.
class SettingsFixture : public testing::Test {
 protected:
  [[nodiscard]] SettingsState::Services services() {
    return {.settings = settings,
            .keyRecorder = keys,
            .sound = devices,
            .applications = catalog,
            .modelLister =
                [this](const QString& model, std::function<void(const QStringList&)> done) {
                  askedWith += model;
                  auto question = std::make_shared<std::function<void(const QStringList&)>>(std::move(done));
                  questions.push_back(question);
                  return Job([question] { *question = nullptr; });
                },
            .preferenceProblem = problem};
  }
  /// Whether somebody still waits for the answer to a question (0 is the first).
  [[nodiscard]] bool isWaiting(size_t question) const {
    return question < questions.size() && *questions[question] != nullptr;
  }
  void answer(size_t question, const QStringList& names) {
    if (const auto done = *questions.at(question)) done(names);
  }
  [[nodiscard]] QJsonValue stored(const char* key) const {
    return preferences.values.value(QLatin1StringView("Lumeno.") + QLatin1StringView(key));
  }

  FakePreferences preferences;
  FakeLoginItem loginItem;
  SettingsStore settings{preferences, loginItem};
  FakeKeyRecorder keys;
  FakeFeedbackDevices devices;
  FakeApplicationCatalog catalog;
  Observable<QString> problem;
  QStringList askedWith;
  std::vector<std::shared_ptr<std::function<void(const QStringList&)>>> questions;
};

}  // namespace lumeno
