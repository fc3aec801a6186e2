// Runs one shell command on behalf of a program that may quit meanwhile. See supervisor_protocol.h.

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>

#include "platform/posix/supervisor/shell_start.h"
#include "platform/posix/supervisor/supervisor.h"

namespace {

using namespace lumeno;
using namespace lumeno::supervision;

bool send(int control, const Report& report) {
  return ::send(control, &report, sizeof report, MSG_NOSIGNAL) == sizeof report;
}

/// Goes on as a child in a session of its own: nobody has to wait for it, and nothing that ends the program's
/// session or group ends it.
bool detach() {
  const pid_t child = fork();
  if (child > 0) _exit(0);
  return child == 0 && setsid() >= 0;
}

FileDescriptor takeSignals() {
  sigset_t wanted;
  sigemptyset(&wanted);
  sigaddset(&wanted, SIGCHLD);
  sigaddset(&wanted, SIGTERM);
  signal(SIGCHLD, SIG_DFL);  // an inherited "ignore" would lose the statuses
  signal(SIGTERM, SIG_DFL);
  sigprocmask(SIG_SETMASK, &wanted, nullptr);
  for (const int ignored : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE}) signal(ignored, SIG_IGN);
  return FileDescriptor(signalfd(-1, &wanted, SFD_CLOEXEC | SFD_NONBLOCK));
}

/// The command alone holds the writing ends, so that they close with it.
bool letGoOfStandardStreams() {
  const FileDescriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
  for (const int stream : {0, 1, 2}) {
    if (dup2(nothing.number(), stream) < 0) return false;
  }
  return true;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 5) {
    std::fputs("This program is started by Lumeno, for each command that it runs.\n", stderr);
    return 2;
  }
  const char* limitText = arguments[1];
  int64_t limit = 0;
  const auto end = limitText + std::strlen(limitText);
  if (std::from_chars(limitText, end, limit).ptr != end) return 2;

  close_range(errorDescriptor + 1, ~0U, 0);
  FileDescriptor control(controlDescriptor), output(outputDescriptor), errors(errorDescriptor);
  if (fcntl(0, F_GETFD) < 0) open("/dev/null", O_RDONLY);  // a missing standard input is an empty one

  FileDescriptor signals = takeSignals();
  if (!detach() || prctl(PR_SET_CHILD_SUBREAPER, 1) != 0 || !signals.isOpen()) {
    send(control.number(), {.kind = Report::Kind::notStarted, .step = Step::process, .error = errno});
    return 1;
  }
  const ShellStart start = startShell(arguments[3], arguments[2], arguments[4]);
  if (start.shell < 0) {
    send(control.number(), {.kind = Report::Kind::notStarted, .step = start.step, .error = start.error});
    return 1;
  }
  // Without this the pipes would never end: the command must not be left running unseen.
  if (!letGoOfStandardStreams()) {
    send(control.number(), {.kind = Report::Kind::notStarted, .step = Step::process, .error = errno});
    kill(-start.shell, SIGKILL);
    return 1;
  }
  [[maybe_unused]] const int atRoot = chdir("/");  // so that the folder's disk can be unmounted
  send(control.number(), {.kind = Report::Kind::started, .shell = start.shell});
  Supervisor(start.shell, Clock::time_point(std::chrono::nanoseconds(limit)), std::move(control),
             std::move(output), std::move(errors), std::move(signals))
      .run();
  return 0;
}
