#pragma once

#include <QByteArray>

namespace lumeno::probe {

/// The answer to one line of input: one line of compact JSON, without its line break. Every input has an
/// answer.
[[nodiscard]] QByteArray answer(const QByteArray& line);

}  // namespace lumeno::probe
