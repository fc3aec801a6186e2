#pragma once

#include <QString>
#include <QStringView>

namespace lumeno {

/// `QString::toLower` of valid text, but quick for text that is mostly ASCII, as selections are.
[[nodiscard]] QString lowercased(QStringView text);

}  // namespace lumeno
