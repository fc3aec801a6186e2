#include "platform/posix/supervisor/process_tree.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "platform/posix/file_descriptor.h"

namespace lumeno::supervision {
namespace {

/// Reads /proc/NAME/stat; false when the process has gone. One whose first thread has ended looks dead there
/// while others run, so the state does not count.
bool readProcess(int proc, const std::string& name, Process& process) {
  const FileDescriptor file(openat(proc, (name + "/stat").c_str(), O_RDONLY | O_CLOEXEC));
  char text[512];
  const ssize_t length = file.isOpen() ? read(file.number(), text, sizeof text - 1) : -1;
  if (length <= 0) return false;
  text[length] = '\0';
  // The name of the program stands in brackets and may itself hold blanks and brackets.
  const char* afterName = std::strrchr(text, ')');
  return afterName && std::sscanf(text, "%d", &process.id) == 1 &&
         std::sscanf(afterName + 1, " %*c %d %d", &process.parent, &process.group) == 2;
}

std::vector<Process> allProcesses() {
  std::vector<Process> processes;
  const std::unique_ptr<DIR, int (*)(DIR*)> proc(opendir("/proc"), closedir);
  if (!proc) return processes;
  while (const dirent* entry = readdir(proc.get())) {
    Process process{};
    if (std::isdigit(static_cast<unsigned char>(entry->d_name[0])) &&
        readProcess(dirfd(proc.get()), entry->d_name, process)) {
      processes.push_back(process);
    }
  }
  return processes;
}

}  // namespace

std::vector<Process> descendants() {
  std::vector<Process> all = allProcesses();
  std::ranges::sort(all, {}, &Process::parent);
  std::vector<Process> found;
  pid_t parent = getpid();
  for (size_t next = 0;; ++next) {
    const auto children = std::ranges::equal_range(all, parent, {}, &Process::parent);
    found.insert(found.end(), children.begin(), children.end());
    if (next == found.size()) return found;
    parent = found[next].id;
  }
}

}  // namespace lumeno::supervision
