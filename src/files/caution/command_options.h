#pragma once

#include <QString>
#include <QStringView>
#include <optional>
#include <span>
#include <vector>

#include "files/caution/shell_script.h"

namespace lumeno {

/// Which options of a command take a value from the next word.
struct OptionForms {
  QStringView letters;        ///< of short options
  QStringView longNames;      ///< of long ones, without dashes, separated by blanks
  bool endAtOperand = false;  ///< the first operand ends the options
};

/// The words after a command, told apart the usual way: `-rf`, `-o FILE`, `-oFILE`, `--name[=value]`, `--`.
/// Refers to the words it was made from.
class CommandOptions {
 public:
  CommandOptions(std::span<const shell::Word> arguments, const OptionForms& forms);

  /// Whether an option was given, by its letter or by its long name or the beginning of that.
  [[nodiscard]] bool has(QChar letter, QStringView longName = {}) const;
  [[nodiscard]] bool hasLong(QStringView longName) const { return has(QChar(), longName); }
  /// The last value of an option.
  [[nodiscard]] std::optional<shell::Word> value(QChar letter, QStringView longName = {}) const;
  [[nodiscard]] const std::vector<const shell::Word*>& operands() const { return operands_; }
  /// Where the first operand stands among the words, their number when there is none.
  [[nodiscard]] std::size_t firstOperand() const { return firstOperand_; }

 private:
  struct Option {
    QString name;
    std::optional<shell::Word> value;
  };

  [[nodiscard]] const Option* find(QChar letter, QStringView longName) const;
  void addLetters(std::span<const shell::Word> arguments, std::size_t& index, QStringView withValue);

  std::vector<Option> options_;
  std::vector<const shell::Word*> operands_;
  std::size_t firstOperand_ = 0;
};

/// Whether `words`, separated by blanks, has `word`.
[[nodiscard]] bool listHas(QStringView words, QStringView word);

/// Whether one of the words after a command begins like that.
[[nodiscard]] bool hasArgumentBeginning(std::span<const shell::Word> arguments, QStringView beginning);

}  // namespace lumeno
