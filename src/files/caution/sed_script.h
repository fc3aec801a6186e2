#pragma once

#include <QStringView>

namespace lumeno {

/// Whether a script of sed may run commands or write files: `e`, `w` and the flags of that name.
[[nodiscard]] bool sedScriptReachesOut(QStringView script);

/// Whether a program of awk may: `system`, pipes, output to files.
[[nodiscard]] bool awkProgramReachesOut(QStringView program);

}  // namespace lumeno
