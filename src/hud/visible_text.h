#pragma once

#include <QString>
#include <QStringView>

namespace lumeno {

/// The text with everything that would be invisible, or would rearrange its neighbours, made to be seen:
/// control characters as their pictures (␀, ␛, ␡), others by number (⟨U+202E⟩), halves of characters as
/// U+FFFD. Line feeds and tabs stay, as do the joiners that scripts and emoji are written with. Linear.
[[nodiscard]] QString visibleText(QStringView text);

/// The length of the terminal escape sequence (colours, cursor movements, window titles) at the start of
/// `text`; 0 when there is none, or none that ends within its line.
[[nodiscard]] qsizetype escapeSequenceLength(QStringView text);

/// A piece of what a command wrote, as it is shown: without escape sequences, then as `visibleText`.
[[nodiscard]] QString visibleOutput(QStringView text);

}  // namespace lumeno
