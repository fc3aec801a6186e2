#include "core/app/termination.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <csignal>

namespace lumeno {

namespace {

// A handler may do little more than write to a file; the event loop reads the other end. Blocking the signals
// instead would be inherited by every program we start.
int writeEnd = -1;

void handle(int) {
  const char byte = 0;
  [[maybe_unused]] const auto written = write(writeEnd, &byte, 1);
}

constexpr int handledSignals[] = {SIGTERM, SIGINT, SIGHUP};

}  // namespace

Termination::Termination(std::function<void()> onSignal) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0) return;
  writeEnd = ends[0];
  signalFile_ = ends[1];
  notifier_ = std::make_unique<QSocketNotifier>(signalFile_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this, onSignal = std::move(onSignal)] {
                     char byte = 0;
                     while (read(signalFile_, &byte, 1) > 0) {
                     }
                     onSignal();
                   });
  struct sigaction action = {};
  action.sa_handler = handle;
  action.sa_flags = SA_RESTART;
  for (const int number : handledSignals) {
    struct sigaction before = {};
    // What was to be ignored from the start (nohup) stays ignored.
    if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) continue;
    sigaction(number, &action, nullptr);
  }
}

Termination::~Termination() {
  for (const int number : handledSignals) {
    struct sigaction current = {};
    if (sigaction(number, nullptr, &current) == 0 && current.sa_handler == handle)
      std::signal(number, SIG_DFL);
  }
  if (signalFile_ >= 0) close(signalFile_);
  if (writeEnd >= 0) close(writeEnd);
  writeEnd = -1;
}

}  // namespace lumeno
