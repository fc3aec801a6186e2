#include "base/text.h"
#include "files/planning/planning.h"
#include "fuzz_text.h"

// A model's answer on its way to a command: what is left is a trimmed piece of the answer, on one line unless
// a line is continued, and what is blocked stays blocked when more is written behind it on lines of its own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace lumeno;
  for (const QString& answer : fuzz::texts(data, size)) {
    const QString command = sanitizeCommand(answer);
    fuzz::require(text::trimmed(command) == command && answer.contains(command));
    fuzz::require(!command.contains(u'\n') || command.contains(QStringLiteral("\\\n")));
    const auto reason = screenCommand(command);
    fuzz::require(screenCommand(QStringLiteral(" \n") + command + QStringLiteral("\n ")) == reason);
    if (reason) fuzz::require(screenCommand(command + QStringLiteral("\nls")).has_value());
    if (!reason) fuzz::require(!screenCommand(QStringLiteral("ls\n") + command));
  }
  return 0;
}
