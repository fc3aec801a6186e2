#include "platform/file_managers/desktop_file_manager.h"

#include <QElapsedTimer>
#include <QThread>
#include <algorithm>
#include <utility>

#include "platform/file_managers/content_reader.h"
#include "platform/file_managers/file_manager_recipe.h"
#include "platform/file_managers/selection_reports.h"
#include "records/file_selection.h"

namespace lumeno {

using namespace std::chrono_literals;

namespace {

using Answer = std::optional<std::vector<QUrl>>;
using Effort = ContentReader::Effort;

constexpr Effort quickEffort{1000ms, 250ms, 300, false};
constexpr Effort thoroughEffort{5000ms, 1500ms, std::nullopt, true};

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

class DesktopFileManager::Private final : public QObject {
 public:
  Private(Workspace& workspace, WindowGeometry& geometry, Accessibility& accessibility, Scheduler& scheduler)
      : workspace_(workspace), geometry_(geometry), accessibility_(accessibility), scheduler_(scheduler) {}

  ~Private() override {
    if (!worker_) return;
    QMetaObject::invokeMethod(worker_, [worker = worker_] {
      worker->reader.disconnect();
      worker->deleteLater();
    });
    thread_.quit();
    // A bus that hangs while it is being connected to must not keep the program from ending.
    if (!thread_.wait(3000)) {
      thread_.terminate();
      thread_.wait();
    }
  }

  Job readSelection(Read read, std::function<void(Answer)> done) {
    const auto application = frontFileManager();
    if (!application) return answer(std::nullopt, std::move(done));
    if (const auto reported = reports_.selection(application->processIdentifier, application->window)) {
      return answer(reported, std::move(done));
    }
    const auto recipe = recipeFor(application->applicationId);
    if (!recipe || !accessibility_.isTrusted()) return answer(std::nullopt, std::move(done));
    if (read == Read::quick && isKnownToHold(*application)) return answer(known_.answer, std::move(done));

    const auto request = std::make_shared<Request>(Request{std::move(done)});
    if (read == Read::quick && reading_ && reading_->isFor(*application)) {
      reading_->requests.push_back(request);
    } else {
      begin(*application, *recipe, read, request);
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
    ProcessId process = 0;
    uint64_t window = 0;
    uint64_t serial = 0;  ///< of what happened before it began
    std::vector<std::shared_ptr<Request>> requests;
    int milliseconds = 0;  ///< how long it took; the worker's until it is finished

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
    if (!application || application->bundleIdentifier != fileManagerBundleIdentifier) return std::nullopt;
    return application;
  }

  Job answer(Answer value, std::function<void(Answer)> done) {
    return scheduler_.after(0ms, [value = std::move(value), done = std::move(done)] { done(value); });
  }

  /// Each call uses up one of the quick reads that what is known may answer.
  bool isKnownToHold(const RunningApplication& application) {
    const bool isSame = known_.process == application.processIdentifier &&
                        known_.window == application.window &&
                        known_.serial == accessibility_.activitySerial();
    return isSame && known_.confirmations >= confirmationsNeeded && known_.quickReadsLeft-- > 0;
  }

  void begin(const RunningApplication& application, const FileManagerRecipe& recipe, Read read,
             const std::shared_ptr<Request>& request) {
    if (!worker_) startWorker();
    const auto reading = std::make_shared<Reading>(Reading{
        application.processIdentifier, application.window, accessibility_.activitySerial(), {request}, 0});
    if (read == Read::quick) reading_ = reading;
    const Effort& effort = read == Read::quick ? quickEffort : thoroughEffort;
    QMetaObject::invokeMethod(worker_, [this, worker = worker_, reading, recipe, effort] {
      QElapsedTimer clock;
      clock.start();
      auto paths = worker->reader.read(recipe, reading->process, effort);
      reading->milliseconds = static_cast<int>(clock.elapsed());
      QMetaObject::invokeMethod(this, [this, reading, paths = std::move(paths)] { finish(*reading, paths); });
    });
  }

  void finish(const Reading& reading, const std::optional<std::vector<QByteArray>>& paths) {
    if (reading_.get() == &reading) reading_.reset();
    Answer found;
    if (paths) {
      found.emplace();
      for (const QByteArray& path : *paths) found->push_back(fileUrl(path));
    }
    remember(reading, found);
    // Meanwhile another window may have come to the front, or trust may have gone.
    const auto application = frontFileManager();
    const bool holds = application && reading.isFor(*application) && accessibility_.isTrusted();
    const auto requests = reading.requests;
    for (const auto& request : requests) {
      if (const auto done = std::exchange(request->done, nullptr)) done(holds ? found : std::nullopt);
    }
  }

  void remember(const Reading& reading, const Answer& found) {
    const bool isConfirmed = known_.process == reading.process && known_.window == reading.window &&
                             known_.serial == reading.serial && known_.answer == found;
    const int confirmations = isConfirmed ? known_.confirmations + 1 : 1;
    known_ = {
        reading.process, reading.window,
        reading.serial,  found,
        confirmations,   std::max(leastReadsAnswered, reading.milliseconds * readsAnsweredPerMillisecond)};
  }

  void startWorker() {
    worker_ = new FileManagerWorker;
    worker_->moveToThread(&thread_);
    thread_.setObjectName(QStringLiteral("file manager"));
    thread_.start();
  }

  Workspace& workspace_;
  WindowGeometry& geometry_;
  Accessibility& accessibility_;
  Scheduler& scheduler_;
  SelectionReports reports_;
  Known known_;
  std::shared_ptr<Reading> reading_;  ///< the quick read under way
  QThread thread_;
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
