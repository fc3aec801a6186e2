#include "platform/posix/command_run.h"

#include <poll.h>
#include <signal.h>
#include <sys/socket.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <new>

namespace lumeno {
namespace {

using namespace supervision;
using Kind = CommandEnd::Kind;

constexpr qsizetype readSize = 1 << 16;
// Asking for the available memory costs some file reads.
constexpr qsizetype memoryCheckInterval = 1 << 22;
// What an ended shell's children may still write before the answer.
constexpr std::chrono::seconds lingerAfterExit{2};
// A stopped command has nobody left who writes: what is in the pipes is read at once.
constexpr std::chrono::milliseconds lingerAfterStop{200};

class CommandRun {
 public:
  CommandRun(const CommandRequest& request, int leave, const MemoryGauge& availableMemory)
      : request_(request),
        leave_(leave),
        availableMemory_(availableMemory),
        command_(launchSupervised(request)),
        answerBy_(request.limit + answerAfterStop) {}

  std::optional<CommandEnd> run() {
    if (!command_.problem.isEmpty()) return commandNotStarted(command_.problem);
    while (!isOver()) {
      pollfd watched[] = {{leave_, POLLIN, 0},
                          {command_.control.number(), POLLIN, 0},
                          {command_.output.number(), POLLIN, 0},
                          {command_.errors.number(), POLLIN, 0}};
      if (poll(watched, std::size(watched), timeout()) < 0) continue;
      if (watched[0].revents) return std::nullopt;
      if (watched[2].revents) read(command_.output, end_.standardOutput);
      if (watched[3].revents) read(command_.errors, end_.standardError);
      if (watched[1].revents) readReport();
    }
    return answer();
  }

 private:
  [[nodiscard]] bool isOver() const {
    const bool isAllRead = !command_.output.isOpen() && !command_.errors.isOpen();
    return isNotStarted_ || (ended_ && isAllRead) || Clock::now() >= answerBy_;
  }

  [[nodiscard]] int timeout() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(answerBy_ - Clock::now());
    return static_cast<int>(std::clamp<int64_t>(left.count(), 0, 60'000));
  }

  void read(FileDescriptor& pipe, QByteArray& into) {
    char ignored[readSize];
    const qsizetype before = into.size();
    if (!isFull_ && !makeRoom(into)) askToStop();
    char* const target = isFull_ ? ignored : into.data() + before;
    const ssize_t length = ::read(pipe.number(), target, readSize);
    const int error = errno;
    if (!isFull_) into.resize(before + std::max<ssize_t>(length, 0));
    if (length == 0 || (length < 0 && error != EINTR && error != EAGAIN)) pipe.close();
    if (length > 0 && !isFull_ && wouldTakeTooMuch()) askToStop();
  }

  /// The space grows by doubling, and what is not written takes no memory.
  static bool makeRoom(QByteArray& bytes) {
    try {
      bytes.resize(bytes.size() + readSize);
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  }

  /// The bytes become text, and are shown: that is counted as four times their size, of which at most a
  /// quarter of the memory may be taken.
  bool wouldTakeTooMuch() {
    const qsizetype captured = end_.standardOutput.size() + end_.standardError.size();
    if (captured < nextMemoryCheck_) return false;
    nextMemoryCheck_ = captured + memoryCheckInterval;
    const auto available = availableMemory_();
    return available && 4 * static_cast<uint64_t>(captured) > (*available + captured) / 4;
  }

  /// From here on what the command writes is read, so that it can end, but not kept.
  void askToStop() {
    isFull_ = true;
    const bool isStopped = ended_ && *ended_ != Reason::itself;
    if (isStopped || !command_.control.isOpen()) return;
    send(command_.control.number(), &stopRequest, sizeof stopRequest, MSG_NOSIGNAL | MSG_DONTWAIT);
    ended_.reset();
    answerBy_ = std::min(request_.limit, Clock::now()) + answerAfterStop;
  }

  void readReport() {
    Report report{};
    const ssize_t length = recv(command_.control.number(), &report, sizeof report, MSG_DONTWAIT);
    if (length < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (length != sizeof report) return supervisorEnded();
    switch (report.kind) {
      case Report::Kind::started:
        shell_ = report.shell;
        break;
      case Report::Kind::notStarted:
        isNotStarted_ = true;
        end_ = commandNotStarted(report.step == Step::folder  ? cannotEnter(request_.folder, report.error)
                                 : report.step == Step::shell ? cannotRun(request_.shell, report.error)
                                                              : cannotStartProcess(report.error));
        break;
      case Report::Kind::ended:
        // A request that crossed this report is answered by a second one.
        if (isFull_ && report.reason == Reason::itself) break;
        ended(report.reason, report.status);
        break;
    }
  }

  void ended(Reason reason, int status) {
    ended_ = reason;
    end_.exitCode = status;
    const auto linger = reason == Reason::itself ? lingerAfterExit : lingerAfterStop;
    answerBy_ = std::min<Clock::time_point>(answerBy_, Clock::now() + linger);
  }

  void supervisorEnded() {
    command_.control.close();
    if (ended_) return;
    if (shell_ < 0) {
      isNotStarted_ = true;
      end_ = commandNotStarted(QStringLiteral("“%1” ended before the command was started")
                                   .arg(QFile::decodeName(request_.supervisor)));
      return;
    }
    killGroup();
    ended(Reason::foreignEnd, 128 + SIGKILL);
  }

  void killGroup() const {
    if (shell_ > 0) kill(-shell_, SIGKILL);
  }

  CommandEnd answer() {
    if (isNotStarted_) return std::move(end_);
    if (!ended_) {  // the supervisor itself hangs
      killGroup();
      end_.exitCode = 128 + SIGKILL;
    }
    const Reason reason = ended_.value_or(Reason::limit);
    if (isFull_) {
      end_.kind = Kind::tookTooMuch;
    } else if (reason == Reason::limit) {
      end_.kind = Kind::timedOut;
    } else if (reason == Reason::foreignEnd) {
      end_.kind = Kind::stopped;
      end_.problem = QStringLiteral("The command was stopped because its supervisor was ended.");
    }
    return std::move(end_);
  }

  const CommandRequest& request_;
  const int leave_;
  const MemoryGauge& availableMemory_;
  SupervisedCommand command_;
  Clock::time_point answerBy_;
  CommandEnd end_;
  pid_t shell_ = -1;
  std::optional<Reason> ended_;
  bool isNotStarted_ = false;
  bool isFull_ = false;
  qsizetype nextMemoryCheck_ = 1 << 20;
};

}  // namespace

CommandEnd commandNotStarted(const QString& problem) {
  CommandEnd end;
  end.kind = Kind::notStarted;
  end.exitCode = -1;
  end.problem = problem;
  return end;
}

std::optional<CommandEnd> runCommand(const CommandRequest& request, int leave,
                                     const MemoryGauge& availableMemory) {
  return CommandRun(request, leave, availableMemory).run();
}

}  // namespace lumeno
