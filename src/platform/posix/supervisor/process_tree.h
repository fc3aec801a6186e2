#pragma once

#include <sys/types.h>

#include <vector>

namespace lumeno::supervision {

struct Process {
  pid_t id;
  pid_t parent;
  pid_t group;
};

/// Every process below this one, in no order. The kernel lists processes one after the other, so a
/// process whose parent ends meanwhile can be missing; the next call finds it.
[[nodiscard]] std::vector<Process> descendants();

}  // namespace lumeno::supervision
