#pragma once

#include <QString>
#include <QStringView>

namespace lumeno::shell {

/// The end of a `$'…'` text: the position of its closing quote, or -1. `start` is that of its first unit.
[[nodiscard]] qsizetype dollarQuoteEnd(QStringView text, qsizetype start);

/// The text between the quotes of `$'…'` with its escapes decoded.
[[nodiscard]] QString decodeDollarQuotes(QStringView content);

}  // namespace lumeno::shell
