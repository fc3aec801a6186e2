#include "ai/ai_runner.h"

#include "ai/prompt/prompt.h"
#include "base/text.h"

namespace lumeno {

namespace {

/// One run, from the availability check to its `Finished`. It lives in its job; the backend's callbacks hold
/// it only weakly, and for the time of a call, so that the consumer may drop the job from inside an update.
class Run : public std::enable_shared_from_this<Run> {
 public:
  Run(std::unique_ptr<AIService> service, ActionRunner templates, ActionSuggestion suggestion,
      SelectedContext context, std::function<void(const AIRunner::Update&)> onUpdate)
      : service_(std::move(service)),
        templates_(templates),
        suggestion_(std::move(suggestion)),
        context_(std::move(context)),
        onUpdate_(std::move(onUpdate)) {}

  void start() {
    request_ = service_->isAvailable([weak = weak_from_this()](bool available) {
      const auto run = weak.lock();
      if (!run || run->stopped_) return;
      if (available) {
        run->stream();
      } else {
        run->finishWithTemplate();
      }
    });
  }

  void stop() {
    stopped_ = true;
    request_.cancel();
  }

 private:
  void stream() {
    request_ = service_->stream(
        buildPrompt(suggestion_, context_),
        [weak = weak_from_this()](const QString& element) {
          const auto run = weak.lock();
          if (!run || run->stopped_) return;
          run->latest_ = element;
          run->onUpdate_(AIRunner::Partial{element});
        },
        // Why a stream broke is not told: what was received stands, else the template does.
        [weak = weak_from_this()](const std::optional<AIFailure>&) {
          const auto run = weak.lock();
          if (!run || run->stopped_) return;
          const QString body = text::trimmed(run->latest_).toString();
          if (body.isEmpty()) {
            run->finishWithTemplate();
          } else {
            run->finish({body, true});
          }
        });
  }

  void finishWithTemplate() {
    const QString selectedText = text::trimmed(context_.selectedText).toString();
    finish({templates_.localText(suggestion_.kind, selectedText, context_), false});
  }

  void finish(const AIRunner::Finished& finished) {
    stopped_ = true;
    onUpdate_(finished);
  }

  const std::unique_ptr<AIService> service_;
  const ActionRunner templates_;
  const ActionSuggestion suggestion_;
  const SelectedContext context_;
  const std::function<void(const AIRunner::Update&)> onUpdate_;
  QString latest_;
  bool stopped_ = false;
  Job request_;
};

}  // namespace

AIRunner::AIRunner(const AIServiceFactory& factory, AIBackend backend, const QString& ollamaModel)
    : factory_(factory), backend_(backend), ollamaModel_(ollamaModel) {}

Job AIRunner::run(const ActionSuggestion& suggestion, const SelectedContext& context,
                  std::function<void(const Update&)> onUpdate) const {
  const auto run = std::make_shared<Run>(factory_(backend_, ollamaModel_), templates_, suggestion, context,
                                         std::move(onUpdate));
  run->start();
  return Job([run] { run->stop(); });
}

}  // namespace lumeno
