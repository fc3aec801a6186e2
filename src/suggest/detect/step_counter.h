#pragma once

#include <cstdint>

/// Counts the work the detectors do, so that tests can prove linear cost without a clock: a test compares the
/// steps taken for a text with the steps taken for eight times that text.
namespace lumeno::detect {

namespace internal {
inline thread_local std::uint64_t steps = 0;
}

/// Called from loops with the number of elementary steps (characters looked at, entries tried).
inline void countSteps(std::uint64_t n) {
  internal::steps += n;
}

/// The steps this thread has taken so far.
[[nodiscard]] inline std::uint64_t stepsTaken() {
  return internal::steps;
}

}  // namespace lumeno::detect
