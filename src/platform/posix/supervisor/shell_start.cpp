#include "platform/posix/supervisor/shell_start.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/file_descriptor.h"

namespace lumeno::supervision {
namespace {

struct Failure {
  Step step;
  int error;
};

[[noreturn]] void fail(int report, Step step) {
  const Failure failure{step, errno};
  [[maybe_unused]] const ssize_t written = write(report, &failure, sizeof failure);
  _exit(127);
}

void resetSignals() {
  for (int signal = 1; signal <= SIGRTMAX; ++signal) ::signal(signal, SIG_DFL);  // refused for some: fine
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void becomeShell(pid_t supervisor, int report, const char* shell, const char* folder,
                              const char* command) {
  // Should the supervisor be killed, nobody would watch the limit any more.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != supervisor) _exit(127);
  setsid();
  resetSignals();
  close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
  if (chdir(folder) != 0) fail(report, Step::folder);
  execl(shell, shell, "-lc", command, nullptr);
  fail(report, Step::shell);
}

}  // namespace

ShellStart startShell(const char* shell, const char* folder, const char* command) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return {-1, Step::process, errno};
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  const pid_t supervisor = getpid();
  const pid_t child = fork();
  if (child < 0) return {-1, Step::process, errno};
  if (child == 0) becomeShell(supervisor, writing.number(), shell, folder, command);
  writing.close();
  // Starting the shell closes the pipe.
  Failure failure{};
  ssize_t length = 0;
  while ((length = read(reading.number(), &failure, sizeof failure)) < 0 && errno == EINTR) {
  }
  if (length == sizeof failure) {
    waitpid(child, nullptr, 0);
    return {-1, failure.step, failure.error};
  }
  return {child, Step::process, 0};
}

}  // namespace lumeno::supervision
