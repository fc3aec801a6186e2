#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lumeno {

/// How many more bytes this process can use before something has to give: what the system has available, or
/// what the control groups of this process leave where that is less. Nothing when the system does not say.
/// Any thread; reads a few small files below `root` (tests give a folder of their own).
[[nodiscard]] std::optional<uint64_t> availableMemory(const std::string& root = "");

}  // namespace lumeno
