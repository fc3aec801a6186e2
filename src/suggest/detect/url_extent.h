#pragma once

#include <QStringView>

namespace lumeno::detect {

/// Where the part of a URL after its host ends, as people write URLs in running text: balanced brackets
/// belong to it, closing ones of the surrounding text, quotes, guillemets and trailing punctuation do not.
/// `start` is the position of the first "/", "?" or "#"; `opening` is the unit before the whole URL (0 at the
/// start of the text). Linear in the part read.
[[nodiscard]] qsizetype urlTailEnd(QStringView text, qsizetype start, char16_t opening);

/// `end` moved back over punctuation that ends a sentence or an emphasis, but not before `start`.
[[nodiscard]] qsizetype withoutTrailingPunctuation(QStringView text, qsizetype start, qsizetype end,
                                                   char16_t opening);

}  // namespace lumeno::detect
