#include "platform/posix/supervisor/supervisor.h"

#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

#include "platform/posix/supervisor/process_tree.h"

namespace lumeno::supervision {
namespace {

// Between two rounds of killing: what forks as fast as it can is caught sooner or later.
constexpr std::chrono::milliseconds killInterval{10};
// After that only what belongs to another user is left, or hangs in the kernel with the kill on its way.
constexpr std::chrono::seconds killingTime{10};

/// Reads away what is there; closes the descriptor at its end.
void drain(FileDescriptor& pipe) {
  static char ignored[1 << 16];
  const ssize_t length = read(pipe.number(), ignored, sizeof ignored);
  if (length == 0 || (length < 0 && errno != EINTR && errno != EAGAIN)) pipe.close();
}

/// SIGCONT lets also a paused process act on it.
void askToEnd(pid_t processOrGroup) {
  kill(processOrGroup, SIGTERM);
  kill(processOrGroup, SIGCONT);
}

/// Their groups as well: a signal to a group reaches also what is forked at that moment. Nobody else is in
/// them, since this process has a session of its own.
void killDescendants() {
  const pid_t ownGroup = getpgrp();
  for (const Process& process : descendants()) {
    kill(process.id, SIGKILL);
    if (process.group > 1 && process.group != ownGroup) kill(-process.group, SIGKILL);
  }
}

}  // namespace

Supervisor::Supervisor(pid_t shell, Clock::time_point limit, FileDescriptor control, FileDescriptor output,
                       FileDescriptor errors, FileDescriptor signals)
    : shell_(shell),
      limit_(limit),
      control_(std::move(control)),
      output_(std::move(output)),
      errors_(std::move(errors)),
      signals_(std::move(signals)) {}

void Supervisor::run() {
  while (phase_ != Phase::over) {
    wait();
    reap();
    advance();
  }
}

void Supervisor::wait() {
  // As long as somebody is at the other end of the control socket, the pipes are theirs to read.
  const bool isAlone = !control_.isOpen();
  pollfd watched[] = {{signals_.number(), POLLIN, 0},
                      {control_.number(), POLLIN, 0},
                      {isAlone ? output_.number() : -1, POLLIN, 0},
                      {isAlone ? errors_.number() : -1, POLLIN, 0}};
  timespec span{};
  const auto moment = nextMoment();
  if (moment) {
    const auto left = std::max(*moment - Clock::now(), Clock::duration::zero());
    span.tv_sec = std::chrono::duration_cast<std::chrono::seconds>(left).count();
    span.tv_nsec = (left % std::chrono::seconds(1)).count();
  }
  if (ppoll(watched, std::size(watched), moment ? &span : nullptr, nullptr) <= 0) return;
  if (watched[0].revents) readSignals();
  if (watched[1].revents) readControl();
  if (watched[2].revents) drain(output_);
  if (watched[3].revents) drain(errors_);
}

std::optional<Clock::time_point> Supervisor::nextMoment() const {
  switch (phase_) {
    case Phase::running:
      return limit_;
    case Phase::asked:
      return stopped_ + grace;
    case Phase::killed:
      return Clock::now() + killInterval;
    case Phase::shellEnded:
    case Phase::over:
      break;
  }
  return std::nullopt;
}

void Supervisor::readSignals() {
  signalfd_siginfo signal{};
  while (read(signals_.number(), &signal, sizeof signal) == sizeof signal) {
    if (signal.ssi_signo != SIGTERM) continue;
    if (phase_ == Phase::running) stop(Reason::foreignEnd);
    if (phase_ == Phase::shellEnded) phase_ = Phase::over;
  }
}

void Supervisor::readControl() {
  char request = 0;
  const ssize_t length = recv(control_.number(), &request, sizeof request, MSG_DONTWAIT);
  if (length > 0) {
    if (phase_ == Phase::running || phase_ == Phase::shellEnded) stop(Reason::request);
  } else if (length == 0 || (errno != EINTR && errno != EAGAIN)) {
    control_.close();
  }
}

void Supervisor::reap() {
  for (;;) {
    int status = 0;
    const pid_t ended = waitpid(-1, &status, WNOHANG);
    if (ended <= 0) {
      // Orphans come to this process, so without a child there is no descendant either.
      hasChildren_ = ended == 0 || errno != ECHILD;
      return;
    }
    if (ended == shell_) status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }
}

void Supervisor::advance() {
  const auto now = Clock::now();
  switch (phase_) {
    case Phase::running:
      // A command that ends exactly at its limit has ended by itself.
      if (!status_) {
        if (now >= limit_) stop(Reason::limit);
        break;
      }
      report(Reason::itself);
      phase_ = Phase::shellEnded;
      [[fallthrough]];
    case Phase::shellEnded:
      // Until the last writer is gone: a program that was opened must not die of what it writes.
      if (!control_.isOpen() && !output_.isOpen() && !errors_.isOpen()) phase_ = Phase::over;
      break;
    case Phase::asked:
      if (hasChildren_ && now < stopped_ + grace) break;
      phase_ = Phase::killed;
      [[fallthrough]];
    case Phase::killed:
      if (!status_) kill(-shell_, SIGKILL);
      killDescendants();
      if (!hasChildren_ || now >= stopped_ + killingTime) phase_ = Phase::over;
      if (phase_ == Phase::over || now >= stopped_ + reportAfterStop) endStop();
      break;
    case Phase::over:
      break;
  }
}

void Supervisor::stop(Reason reason) {
  phase_ = Phase::asked;
  reason_ = reason;
  stopped_ = Clock::now();
  // Once the shell has been waited for, the number of its group could be somebody else's.
  const pid_t group = status_ ? 0 : shell_;
  if (group) askToEnd(-group);
  for (const Process& process : descendants()) {
    if (process.group != group) askToEnd(process.id);
  }
}

void Supervisor::endStop() {
  if (!isStopReported_) report(reason_);
  isStopReported_ = true;
}

void Supervisor::report(Reason reason) {
  if (!control_.isOpen()) return;
  Report report{.kind = Report::Kind::ended, .reason = reason, .status = status_.value_or(128 + SIGKILL)};
  // A stopped command may have tidied up and ended with 0: it has not succeeded.
  if (reason != Reason::itself && report.status == 0) report.status = 128 + SIGTERM;
  send(control_.number(), &report, sizeof report, MSG_NOSIGNAL | MSG_DONTWAIT);
}

}  // namespace lumeno::supervision
