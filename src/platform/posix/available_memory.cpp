#include "platform/posix/available_memory.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace lumeno {
namespace {

/// The number in a file that holds nothing else; nothing for "max" and for missing files.
std::optional<uint64_t> numberIn(const std::string& path) {
  std::ifstream file(path);
  uint64_t number = 0;
  if (file >> number) return number;
  return std::nullopt;
}

/// The number after `key` in a file of lines such as "key 12" or "key 12 kB".
std::optional<uint64_t> numberAfter(const std::string& path, const std::string& key) {
  std::ifstream file(path);
  std::string line;
  while (std::getline(file, line)) {
    std::istringstream words(line);
    std::string name;
    uint64_t number = 0;
    if (words >> name >> number && name == key) return number;
  }
  return std::nullopt;
}

/// The names that one version of control groups gives its files.
struct Version {
  const char* folder;
  const char* limit;
  const char* usage;
  const char* reclaimable;
};
constexpr Version first{"/sys/fs/cgroup/memory", "memory.limit_in_bytes", "memory.usage_in_bytes",
                        "total_inactive_file"};
constexpr Version second{"/sys/fs/cgroup", "memory.max", "memory.current", "inactive_file"};

/// What one group leaves. Files that are only kept as a cache count as used, but give way.
std::optional<uint64_t> leftIn(const std::string& folder, const Version& version) {
  const auto limit = numberIn(folder + '/' + version.limit);
  const auto usage = numberIn(folder + '/' + version.usage);
  if (!limit || !usage) return std::nullopt;
  const uint64_t cache = numberAfter(folder + "/memory.stat", version.reclaimable).value_or(0);
  const uint64_t firmlyUsed = *usage - std::min(*usage, cache);
  return *limit - std::min(*limit, firmlyUsed);
}

/// A line of /proc/self/cgroup is "number:controllers:path"; the second version has no controllers.
std::optional<std::pair<Version, std::string>> groupOf(const std::string& line) {
  const size_t one = line.find(':');
  const size_t two = one == std::string::npos ? one : line.find(':', one + 1);
  if (two == std::string::npos) return std::nullopt;
  const std::string controllers = ',' + line.substr(one + 1, two - one - 1) + ',';
  const std::string path = line.substr(two + 1);
  if (controllers == ",,") return std::pair(second, path);
  if (controllers.find(",memory,") != std::string::npos) return std::pair(first, path);
  return std::nullopt;
}

}  // namespace

std::optional<uint64_t> availableMemory(const std::string& root) {
  std::optional<uint64_t> least;
  const auto consider = [&least](std::optional<uint64_t> bytes) {
    if (bytes) least = std::min(least.value_or(*bytes), *bytes);
  };
  if (const auto kilobytes = numberAfter(root + "/proc/meminfo", "MemAvailable:"))
    consider(*kilobytes * 1024);
  std::ifstream groups(root + "/proc/self/cgroup");
  std::string line;
  while (std::getline(groups, line)) {
    const auto group = groupOf(line);
    if (!group) continue;
    // Every group above limits too. In a container the path may not exist, but its top does.
    std::string path = group->second == "/" ? "" : group->second;
    for (;;) {
      consider(leftIn(root + group->first.folder + path, group->first));
      const size_t slash = path.rfind('/');
      if (slash == std::string::npos) break;
      path.resize(slash);
    }
  }
  return least;
}

}  // namespace lumeno
