#include "files/caution/command_options.h"

#include <algorithm>

namespace lumeno {

using shell::Word;

bool listHas(QStringView words, QStringView word) {
  if (word.isEmpty() || word.contains(u' ')) return false;
  for (qsizetype at = words.indexOf(word); at >= 0; at = words.indexOf(word, at + 1)) {
    const qsizetype end = at + word.size();
    if ((at == 0 || words[at - 1] == u' ') && (end == words.size() || words[end] == u' ')) return true;
  }
  return false;
}

bool hasArgumentBeginning(std::span<const Word> arguments, QStringView beginning) {
  return std::ranges::any_of(arguments, [&](const Word& word) { return word.text.startsWith(beginning); });
}

CommandOptions::CommandOptions(std::span<const Word> arguments, const OptionForms& forms)
    : firstOperand_(arguments.size()) {
  bool optionsEnded = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const Word& word = arguments[i];
    const QString& text = word.text;
    if (optionsEnded || text.size() < 2 || text[0] != u'-') {
      if (operands_.empty()) firstOperand_ = i;
      operands_.push_back(&word);
      if (forms.endAtOperand) optionsEnded = true;
    } else if (text == u"--") {
      optionsEnded = true;
    } else if (text[1] != u'-') {
      addLetters(arguments, i, forms.letters);
    } else if (const qsizetype equals = text.indexOf(u'='); equals > 0) {
      options_.push_back({text.sliced(2, equals - 2), word.sliced(equals + 1)});
    } else {
      options_.push_back({text.sliced(2), std::nullopt});
      if (listHas(forms.longNames, QStringView(text).sliced(2)) && i + 1 < arguments.size()) {
        options_.back().value = arguments[++i];
      }
    }
  }
}

void CommandOptions::addLetters(std::span<const Word> arguments, std::size_t& index, QStringView withValue) {
  // No command has more letters than this.
  constexpr qsizetype mostLetters = 64;
  const Word& word = arguments[index];
  const qsizetype end = std::min(word.text.size(), mostLetters);
  for (qsizetype i = 1; i < end; ++i) {
    options_.push_back({QString(word.text[i]), std::nullopt});
    if (!withValue.contains(word.text[i])) continue;
    if (i + 1 < word.text.size()) {
      options_.back().value = word.sliced(i + 1);
    } else if (index + 1 < arguments.size()) {
      options_.back().value = arguments[++index];
    }
    return;
  }
}

const CommandOptions::Option* CommandOptions::find(QChar letter, QStringView longName) const {
  constexpr qsizetype shortestBeginning = 3;
  const auto matches = [&](const Option& option) {
    if (option.name.size() == 1) return !letter.isNull() && option.name[0] == letter;
    return option.name == longName ||
           (option.name.size() >= shortestBeginning && longName.startsWith(option.name));
  };
  const auto last = std::find_if(options_.rbegin(), options_.rend(), matches);
  return last == options_.rend() ? nullptr : &*last;
}

bool CommandOptions::has(QChar letter, QStringView longName) const {
  return find(letter, longName) != nullptr;
}

std::optional<Word> CommandOptions::value(QChar letter, QStringView longName) const {
  const Option* option = find(letter, longName);
  return option == nullptr ? std::nullopt : option->value;
}

}  // namespace lumeno
