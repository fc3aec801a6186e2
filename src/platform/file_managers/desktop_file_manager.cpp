#include "platform/file_managers/desktop_file_manager.h"

#include <QElapsedTimer>
#include <QThread>
#include <algorithm>
#include <map>
#include <utility>

#include "platform/file_managers/content_reader.h"
#include "platform/file_managers/file_manager_recipe.h"
#include "platform/file_managers/selection_reports.h"
#include "records/file_selection.h"

namespace lumeno {

using namespace std::chrono_literals;

namespace {

using Answer = std::optional<std::vector<QUrl>>;
using Paths = std::optional<std::vector<QByteArray>>;
using Effort = ContentReader::Effort;
using Target = ContentReader::Target;

constexpr Effort quickEffort{1000ms, 250ms, 300, false, false};
constexpr Effort thoroughEffort{5000ms, 1500ms, std::nullopt, true, false};
constexpr Effort primingEffort{5000ms, 1500ms, std::nullopt, true, true};
// The limits bound the questions to others, but the disk may hang. So much later nobody waits any more.
constexpr auto grace = 500ms;
constexpr unsigned long quitWait = 200;  // milliseconds

// A file manager may answer an event late, and not every one tells of a change: an answer is relied upon only
// when so many reads in a row have confirmed it, and even then it is renewed after so many quick reads, or
// the more the longer a read takes.
constexpr int confirmationsNeeded = 3;
constexpr int leastReadsAnswered = 16;
constexpr int readsAnsweredPerMillisecond = 2;

}  // namespace

/// Does the reading on its own thread.
class FileManagerWorker final : public QObject {
 public:
  ContentReader reader;
};

/// Takes in on the main thread what the worker has read. The worker may still be at it when the file manager
/// has gone; `take` is empty by then.
class FileManagerAnswers final : public QObject {
 public:
  std::function<void(uint64_t reading, const Paths& paths, int milliseconds)> take;
};

class DesktopFileManager::Private final {
 public:
  Private(Workspace& workspace, WindowGeometry& geometry, Accessibility& accessibility, Scheduler& scheduler)
      : workspace_(workspace), geometry_(geometry), accessibility_(accessibility), scheduler_(scheduler) {
    answers_->take = [this](uint64_t id, const Paths& paths, int milliseconds) {
      finish(id, paths, milliseconds);
    };
    const auto remember = [this](const std::optional<RunningApplication>& front) {
      if (isFileManager(front)) lastInFront_ = front;
    };
    activations_ = workspace.onActivation(remember);
    remember(workspace.frontmostApplication());
  }

  ~Private() {
    answers_->take = nullptr;
    answers_.reset();
    if (!worker_) return;
    QMetaObject::invokeMethod(worker_, [worker = worker_] {
      worker->reader.disconnect();
      worker->deleteLater();
      worker->thread()->quit();
    });
    // A bus or a disk that hangs must not keep the program from ending. A thread that is inside of it can be
    // neither waited for nor ended safely: it is left behind on purpose and touches nothing of this object.
    if (thread_->wait(quitWait)) delete thread_;
  }

  Job readSelection(Read read, std::function<void(Answer)> done) {
    if (read == Read::priming) return prime(std::move(done));
    const auto application = frontFileManager();
    if (!application) return answer(std::nullopt, std::move(done));
    if (const auto reported = reports_.selection(application->processIdentifier, application->window)) {
      return answer(reported, std::move(done));
    }
    const auto recipe = recipeFor(application->applicationId);
    if (!recipe || !accessibility_.isTrusted()) return answer(std::nullopt, std::move(done));
    if (read == Read::quick && isKnownToHold(*application)) return answer(known_.answer, std::move(done));

    const auto underWay = readings_.find(latestQuick_);
    const bool isJoined = read == Read::quick && underWay != readings_.end() && !underWay->second.isOverdue &&
                          underWay->second.isFor(*application);
    if (!isJoined && isHung(read)) return answer(std::nullopt, std::move(done), deadlineOf(read));
    const auto request = std::make_shared<Request>(Request{std::move(done)});
    if (isJoined) {
      auto& requests = underWay->second.requests;
      std::erase_if(requests, [](const auto& other) { return !other->done; });
      requests.push_back(request);
    } else {
      const Target target{*recipe, application->processIdentifier};
      begin(readingOf(*application, read), request,
            [target, read](ContentReader& reader) { return reader.read(target, effortOf(read)); });
    }
    return Job([request] { request->done = nullptr; });
  }

  std::optional<Rect> frontWindowFrame() {
    const auto application = frontFileManager();
    const auto frame = application ? geometry_.deviceFrame(application->window) : std::nullopt;
    if (!frame) return std::nullopt;
    return geometry_.accessibilitySpaceConverter()(*frame);
  }

 private:
  struct Request {
    std::function<void(Answer)> done;  ///< empty once nobody waits any more
  };
  /// A read on the worker, and who waits for it.
  struct Reading {
    Read kind = Read::quick;
    ProcessId process = 0;
    uint64_t window = 0;
    uint64_t serial = 0;  ///< of what happened before it began
    std::vector<std::shared_ptr<Request>> requests{};
    Job deadline{};
    bool isOverdue = false;  ///< nobody waits for it any more

    [[nodiscard]] bool isFor(const RunningApplication& application) const {
      return process == application.processIdentifier && window == application.window;
    }
  };
  /// What the last read of a window said.
  struct Known {
    ProcessId process = 0;
    uint64_t window = 0;
    uint64_t serial = 0;
    Answer answer;
    int confirmations = 0;
    int quickReadsLeft = 0;
  };

  std::optional<RunningApplication> frontFileManager() {
    auto application = workspace_.frontmostApplication();
    return isFileManager(application) ? application : std::nullopt;
  }

  static std::chrono::milliseconds deadlineOf(Read read) { return effortOf(read).limit + grace; }
  static const Effort& effortOf(Read read) {
    switch (read) {
      case Read::quick:
        return quickEffort;
      case Read::thorough:
        return thoroughEffort;
      case Read::priming:
        break;
    }
    return primingEffort;
  }

  Job prime(std::function<void(Answer)> done) {
    constexpr Read read = Read::priming;
    if (!accessibility_.isTrusted()) return answer(std::nullopt, std::move(done));
    if (isHung(read)) return answer(std::nullopt, std::move(done), deadlineOf(read));
    std::optional<Target> preferred;
    const auto recipe = lastInFront_ ? recipeFor(lastInFront_->applicationId) : std::nullopt;
    if (recipe) preferred = {*recipe, lastInFront_->processIdentifier};
    const auto request = std::make_shared<Request>(Request{std::move(done)});
    begin({.kind = read}, request,
          [preferred](ContentReader& reader) { return reader.readAny(preferred, primingEffort); });
    return Job([request] { request->done = nullptr; });
  }

  /// Whether the worker is so late with another read that this one would only wait behind it.
  bool isHung(Read read) const {
    return std::any_of(readings_.begin(), readings_.end(), [read](const auto& entry) {
      const Reading& other = entry.second;
      return other.isOverdue && (other.kind != Read::quick || read == Read::quick);
    });
  }

  Reading readingOf(const RunningApplication& application, Read read) {
    return {.kind = read,
            .process = application.processIdentifier,
            .window = application.window,
            .serial = accessibility_.activitySerial()};
  }

  Job answer(Answer value, std::function<void(Answer)> done, std::chrono::milliseconds delay = 0ms) {
    return scheduler_.after(delay, [value = std::move(value), done = std::move(done)] { done(value); });
  }

  /// Each call uses up one of the quick reads that what is known may answer.
  bool isKnownToHold(const RunningApplication& application) {
    const bool isSame = known_.process == application.processIdentifier &&
                        known_.window == application.window &&
                        known_.serial == accessibility_.activitySerial();
    return isSame && known_.confirmations >= confirmationsNeeded && known_.quickReadsLeft-- > 0;
  }

  void begin(Reading reading, const std::shared_ptr<Request>& request,
             std::function<Paths(ContentReader&)> read) {
    if (!worker_) startWorker();
    const uint64_t id = ++latestReading_;
    if (reading.kind == Read::quick) latestQuick_ = id;
    reading.requests = {request};
    reading.deadline = scheduler_.after(deadlineOf(reading.kind), [this, id] { giveUp(id); });
    readings_.emplace(id, std::move(reading));
    QMetaObject::invokeMethod(
        worker_, [worker = worker_, answers = std::weak_ptr(answers_), id, read = std::move(read)] {
          if (answers.expired()) return;
          QElapsedTimer clock;
          clock.start();
          auto paths = read(worker->reader);
          const auto milliseconds = static_cast<int>(clock.elapsed());
          const auto receiver = answers.lock();
          if (!receiver) return;
          const auto deliver = [to = receiver.get(), id, paths = std::move(paths), milliseconds] {
            if (to->take) to->take(id, paths, milliseconds);
          };
          QMetaObject::invokeMethod(receiver.get(), deliver, Qt::QueuedConnection);
        });
  }

  /// The reading stays known until the worker is through with it.
  void giveUp(uint64_t id) {
    Reading& reading = readings_.at(id);
    reading.isOverdue = true;
    answerAll(std::exchange(reading.requests, {}), std::nullopt);
  }

  static void answerAll(const std::vector<std::shared_ptr<Request>>& requests, const Answer& found) {
    for (const auto& request : requests) {
      if (const auto done = std::exchange(request->done, nullptr)) done(found);
    }
  }

  void finish(uint64_t id, const Paths& paths, int milliseconds) {
    const Reading reading = std::move(readings_.at(id));
    readings_.erase(id);
    // The selection may be another one by now.
    if (reading.isOverdue) return;
    Answer found;
    if (paths) {
      found.emplace();
      for (const QByteArray& path : *paths) found->push_back(fileUrl(path));
    }
    if (reading.kind == Read::priming) {
      answerAll(reading.requests, found);
      return;
    }
    remember(reading, found, milliseconds);
    // Meanwhile another window may have come to the front, or trust may have gone.
    const auto application = frontFileManager();
    const bool holds = application && reading.isFor(*application) && accessibility_.isTrusted();
    answerAll(reading.requests, holds ? found : std::nullopt);
  }

  void remember(const Reading& reading, const Answer& found, int milliseconds) {
    const bool isConfirmed = known_.process == reading.process && known_.window == reading.window &&
                             known_.serial == reading.serial && known_.answer == found;
    const int confirmations = isConfirmed ? known_.confirmations + 1 : 1;
    known_ = {reading.process, reading.window,
              reading.serial,  found,
              confirmations,   std::max(leastReadsAnswered, milliseconds * readsAnsweredPerMillisecond)};
  }

  void startWorker() {
    worker_ = new FileManagerWorker;
    thread_ = new QThread;
    worker_->moveToThread(thread_);
    thread_->setObjectName(QStringLiteral("file manager"));
    thread_->start();
  }

  Workspace& workspace_;
  WindowGeometry& geometry_;
  Accessibility& accessibility_;
  Scheduler& scheduler_;
  SelectionReports reports_;
  std::optional<RunningApplication> lastInFront_;  ///< of the file managers
  Subscription activations_;
  Known known_;
  std::map<uint64_t, Reading> readings_;  ///< that the worker has not finished, in their order
  uint64_t latestReading_ = 0;
  uint64_t latestQuick_ = 0;
  /// The worker may be the last to let go of it, but its own thread is to destroy it.
  std::shared_ptr<FileManagerAnswers> answers_{new FileManagerAnswers,
                                               [](FileManagerAnswers* gone) { gone->deleteLater(); }};
  QThread* thread_ = nullptr;  ///< destroyed only when it has ended
  FileManagerWorker* worker_ = nullptr;
};

DesktopFileManager::DesktopFileManager(Workspace& workspace, WindowGeometry& geometry,
                                       Accessibility& accessibility, Scheduler& scheduler)
    : d_(std::make_unique<Private>(workspace, geometry, accessibility, scheduler)) {}

DesktopFileManager::~DesktopFileManager() = default;

Job DesktopFileManager::readSelection(Read read, std::function<void(Answer)> done) {
  return d_->readSelection(read, std::move(done));
}

std::optional<Rect> DesktopFileManager::frontWindowFrame() {
  return d_->frontWindowFrame();
}

}  // namespace lumeno
