#pragma once

#include <QString>
#include <QStringView>

namespace lumeno {

/// The title of an event made from `text`: its first line that is not empty, at most 80 characters of it.
/// Never empty. Linear in the text.
[[nodiscard]] QString draftTitle(QStringView text);

}  // namespace lumeno
