#pragma once

#include <QStringView>

namespace lumeno::detect {

/// What the words just before a number say about it.
enum class NumberCue { none, phone, other };

/// Reads back at most a few dozen characters from `start`; the nearest telling word decides ("order no.",
/// "Tel.:").
[[nodiscard]] NumberCue cueBefore(QStringView text, qsizetype start);

/// Whether the number [start, end) is a part of something else: glued to letters, an amount of money or
/// units, a member of a list of numbers, an operand in code.
[[nodiscard]] bool isGluedBefore(QStringView text, qsizetype start);
[[nodiscard]] bool isGluedAfter(QStringView text, qsizetype end);

/// Whether the number at `start` is an element of a list in square or curly brackets ("[2127365000,
/// 2127365001]").
[[nodiscard]] bool isInNumberList(QStringView text, qsizetype start);

/// Whether the groups before `start` in the same line are the head of an IBAN.
[[nodiscard]] bool continuesBankAccount(QStringView text, qsizetype start);

/// The end of an extension ("ext. 12", "x12", "Durchwahl -12") that follows a number ending at `end`, else
/// `end`.
[[nodiscard]] qsizetype extensionEnd(QStringView text, qsizetype end);

}  // namespace lumeno::detect
