#pragma once

#include <QStringView>

namespace lumeno::detect {

/// Where the part of a URL after its host (or, without one, after its scheme) ends, as people write URLs in
/// running text: balanced brackets belong to it, closing ones of the surrounding text, quotes, guillemets and
/// trailing punctuation do not. `opening` is the unit before the whole URL (0 at the start of the text).
/// Linear in the part read.
[[nodiscard]] qsizetype urlTailEnd(QStringView text, qsizetype start, char16_t opening);

/// The end of [:port][path][?query][#fragment] behind the host that ends at `hostEnd`.
[[nodiscard]] qsizetype urlEndAfterHost(QStringView text, qsizetype hostEnd, char16_t opening);

}  // namespace lumeno::detect
