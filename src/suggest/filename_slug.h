#pragma once

#include <QString>
#include <QStringView>

namespace lumeno {

/// A cleaned file name: the words of `text` ("_" and "-" count as blanks) joined with "-", in lowercase.
/// Empty when there are none.
[[nodiscard]] QString filenameSlug(QStringView text);

}  // namespace lumeno
