#pragma once

#include <QString>

namespace lumeno {

/// Where the program's helper executable of that name is: beside the program, as it was built, or where it is
/// installed (../libexec/lumeno). Needs the application object.
[[nodiscard]] QString helperProgram(const QString& name);

}  // namespace lumeno
