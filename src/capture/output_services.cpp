#include "capture/output_services.h"

#include <utility>

#include "capture/current_step.h"

using namespace Qt::StringLiterals;

namespace lumeno {

using namespace std::chrono_literals;

SelectionReplacer::SelectionReplacer(Pasteboard& pasteboard, KeystrokeSender& keystrokes,
                                     Scheduler& scheduler)
    : pasteboard_(pasteboard), keystrokes_(keystrokes), scheduler_(scheduler) {}

Job SelectionReplacer::replace(const QString& text, const std::optional<SelectionSource>& source,
                               std::function<void(Outcome)> done) {
  pasteboard_.setString(text);
  const auto step = std::make_shared<CurrentStep>();
  const auto paste = [this, source, done = std::move(done), weak = std::weak_ptr(step)] {
    const auto current = weak.lock();
    if (!source || source->isTerminal) {
      done(Outcome::selectionGone);
      return;
    }
    current->begin([&] {
      return keystrokes_.sendPaste(source->window, [done](KeystrokeSender::Outcome outcome) {
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
