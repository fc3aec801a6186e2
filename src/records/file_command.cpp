#include "records/file_command.h"

#include "base/text.h"

namespace lumeno {

using namespace Qt::StringLiterals;

QString FileActionOutcome::summary() const {
  if (const auto text = text::trimmed(stdoutText); !text.isEmpty()) return text.toString();
  if (const auto text = text::trimmed(stderrText); !text.isEmpty()) return text.toString();
  if (exitCode != 0) return u"Command failed (exit %1)."_s.arg(exitCode);
  return u"Done."_s;
}

}  // namespace lumeno
