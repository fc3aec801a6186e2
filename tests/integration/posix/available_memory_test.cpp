#include "platform/posix/available_memory.h"

#include "support/temporary_desktop.h"

namespace lumeno {
namespace {

constexpr const char* meminfo = "MemTotal: 9000 kB\nMemFree: 10 kB\nMemAvailable:     4000 kB\n";

TEST(AvailableMemory, IsTheLeastOfWhatTheSystemAndItsControlGroupsLeave) {
  const struct {
    const char* name;
    std::vector<std::pair<const char*, const char*>> files;
    std::optional<uint64_t> expected;
  } cases[] = {
      {"nothing is known", {}, std::nullopt},
      {"no groups", {{"proc/meminfo", meminfo}}, 4'096'000},
      {"a group without a limit",
       {{"proc/meminfo", meminfo},
        {"proc/self/cgroup", "0::/user/app\n"},
        {"sys/fs/cgroup/user/app/memory.max", "max\n"},
        {"sys/fs/cgroup/user/app/memory.current", "1000\n"}},
       4'096'000},
      {"a group above limits; its cache gives way",
       {{"proc/meminfo", meminfo},
        {"proc/self/cgroup", "0::/user/app\n"},
        {"sys/fs/cgroup/user/memory.max", "1000000\n"},
        {"sys/fs/cgroup/user/memory.current", "900000\n"},
        {"sys/fs/cgroup/user/memory.stat", "anon 1\ninactive_file 300000\n"}},
       400'000},
      {"more is used than allowed",
       {{"proc/self/cgroup", "0::/\n"},
        {"sys/fs/cgroup/memory.max", "1000\n"},
        {"sys/fs/cgroup/memory.current", "2000\n"}},
       0},
      {"first version, in a container that shows only its top",
       {{"proc/meminfo", meminfo},
        {"proc/self/cgroup", "5:cpu:/x\n4:memory:/not/visible\n0::/\n"},
        {"sys/fs/cgroup/memory/memory.limit_in_bytes", "50000\n"},
        {"sys/fs/cgroup/memory/memory.usage_in_bytes", "20000\n"}},
       30'000},
  };
  for (const auto& test : cases) {
    const TemporaryDesktop system;
    for (const auto& [path, content] : test.files) system.write(QString::fromLatin1(path), content);
    EXPECT_EQ(availableMemory(system.path(QStringLiteral(".")).toStdString()), test.expected) << test.name;
  }
  EXPECT_GT(availableMemory().value_or(0), 0u) << "of this machine";
}

}  // namespace
}  // namespace lumeno
