#pragma once

#include <QString>
#include <optional>

#include "records/file_selection.h"

namespace lumeno {

/// What the language model is asked, to turn a request about the selected items into one shell command. Names
/// with control characters (and names that are not text) are written as the shell's $'…', so that each item
/// stays one line; all others stand as they are.
[[nodiscard]] QString planPrompt(const QString& instruction, const FileSelection& selection);

/// The one command line in a model's answer, without fences, prompt signs and remarks; may be empty.
[[nodiscard]] QString sanitizeCommand(const QString& output);

/// Why the command must not be run, as a whole sentence; absent when no rule speaks against it.
[[nodiscard]] std::optional<QString> screenCommand(const QString& command);

}  // namespace lumeno
