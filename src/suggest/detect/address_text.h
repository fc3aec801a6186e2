#pragma once

#include <QStringView>

namespace lumeno::detect {

/// A word of an address: letters and digits of any script with hyphens, apostrophes and the inner full stops
/// of initials. A full stop behind it is told apart (`dotted`), as it may end an abbreviation or a sentence.
struct AddressWord {
  QStringView text;  ///< without the final full stop
  qsizetype start = 0;
  qsizetype end = 0;  ///< behind the final full stop, if there is one
  bool dotted = false;

  [[nodiscard]] bool isEmpty() const { return text.isEmpty(); }
  [[nodiscard]] bool isCapitalised() const;
  [[nodiscard]] bool isNumber() const;
  /// 42nd, 5th
  [[nodiscard]] bool isOrdinal() const;
  /// A full stop that ends a sentence rather than an abbreviation.
  [[nodiscard]] bool endsSentence() const { return dotted && text.size() > 4; }
};

/// The word that starts at `i` (empty when none does); reads at most some fifty characters.
[[nodiscard]] AddressWord readAddressWord(QStringView text, qsizetype i);

enum class Separator { none, blank, comma, line };

/// What separates the parts of an address at `i`, and where the next part starts. Reads a bounded number of
/// blanks.
struct AddressGap {
  Separator kind = Separator::none;
  qsizetype end = 0;
};
[[nodiscard]] AddressGap readAddressGap(QStringView text, qsizetype i);

/// The end of a house number at `i` (12, 221B, 10-12, 12/3, 4 1/2), or 0.
[[nodiscard]] qsizetype houseNumberEnd(QStringView text, qsizetype i);

/// The number of digits in the row at `i`, at most 9.
[[nodiscard]] qsizetype digitCount(QStringView text, qsizetype i);

}  // namespace lumeno::detect
