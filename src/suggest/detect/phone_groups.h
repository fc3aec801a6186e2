#pragma once

#include <QStringView>
#include <vector>

namespace lumeno::detect {

/// One unbroken row of digits in a text, with what stands before it within the same stretch of phone
/// characters.
struct DigitGroup {
  qsizetype start = 0;
  qsizetype end = 0;
  char16_t separator = 0;  ///< what separates it from the group before: ' ', '-', '.', '/' or 0
  bool opensWord = false;  ///< a blank, bracket, plus sign or the start of the stretch stands before it
  bool bracketed = false;  ///< written in round brackets: "(030)"
  bool afterPlus = false;  ///< "+" (or "(+") stands directly before it

  [[nodiscard]] qsizetype size() const { return end - start; }
};

/// The digit groups of the stretch of digits and phone punctuation that begins at `start` (a digit, "+" or
/// "("), and where the stretch ends (a very long one is cut). Linear in the stretch.
struct DigitStretch {
  std::vector<DigitGroup> groups;
  qsizetype end = 0;
};
void readDigitStretch(QStringView text, qsizetype start, DigitStretch& stretch);

[[nodiscard]] bool isPhoneDigit(char16_t c);
[[nodiscard]] bool isPhonePlus(char16_t c);
[[nodiscard]] int phoneDigitValue(char16_t c);

/// A run of neighbouring groups.
struct GroupSpan {
  const DigitGroup* first = nullptr;
  const DigitGroup* last = nullptr;  ///< inclusive

  [[nodiscard]] qsizetype count() const { return last - first + 1; }
};

/// Whether the groups have the shape of a date, IPv4 address, decimal or grouped number, card number or ISBN.
/// `text` is what they were read from.
[[nodiscard]] bool isOtherNumberShape(QStringView text, GroupSpan span);

/// [1] 3-3-4, or as one row of ten digits or in two.
[[nodiscard]] bool isGroupedAsInNorthAmerica(QStringView text, GroupSpan span);

/// 20260501
[[nodiscard]] bool isDateInDigits(QStringView text, const DigitGroup& group);

/// The limits of 32 bits and the row of all digits, which stand in every other program and log.
[[nodiscard]] bool isStockNumber(QStringView digits);

}  // namespace lumeno::detect
