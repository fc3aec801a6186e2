#pragma once

#include <QByteArray>
#include <QString>

namespace lumeno {

/// Replaces a file's content as a whole or not at all, and makes its folder where there is none. An existing
/// file keeps its permissions. False when it could not be done.
[[nodiscard]] bool writeFileAtomically(const QString& path, const QByteArray& content);

}  // namespace lumeno
