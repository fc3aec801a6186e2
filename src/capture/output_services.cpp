#include "capture/output_services.h"

#include <utility>

#include "capture/current_step.h"

using namespace Qt::StringLiterals;

namespace lumeno {

using namespace std::chrono_literals;

namespace {

bool isInFront(const std::optional<SelectionSource>& source, Workspace& workspace) {
  const auto front = workspace.frontmostApplication();
  return source && front && front->processIdentifier == source->process && front->window == source->window;
}

}  // namespace

SelectionReplacer::SelectionReplacer(Pasteboard& pasteboard, KeystrokeSender& keystrokes,
                                     Workspace& workspace, Scheduler& scheduler)
    : pasteboard_(pasteboard), keystrokes_(keystrokes), workspace_(workspace), scheduler_(scheduler) {}

Job SelectionReplacer::replace(const QString& text, const std::optional<SelectionSource>& source,
                               std::function<void(Outcome)> done) {
  pasteboard_.setString(text);
  const auto step = std::make_shared<CurrentStep>();
  const auto paste = [this, source, done = std::move(done), weak = std::weak_ptr(step)] {
    const auto current = weak.lock();
    if (!isInFront(source, workspace_) || source->isTerminal) {
      done(Outcome::selectionGone);
      return;
    }
    current->begin([&] {
      return keystrokes_.sendPaste([done](KeystrokeSender::Outcome outcome) {
        done(outcome == KeystrokeSender::Outcome::sent ? Outcome::pasted : Outcome::selectionGone);
      });
    });
  };
  // The application needs a moment to have the keyboard again.
  step->begin([&] { return scheduler_.after(50ms, paste); });
  return Job([step] { step->end(); });
}

void FeedbackService::play(bool sound, bool haptic) {
  if (haptic) haptics_.performGeneric();
  if (sound) sound_.play(u"Tink"_s);
}

}  // namespace lumeno
