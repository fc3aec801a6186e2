#pragma once

#include <QStringView>
#include <array>
#include <bit>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

namespace lumeno::scan {

/// Finds which of some short ASCII strings occur in a text, all in one pass, however they overlap: one
/// look-up in a table of states (an Aho-Corasick automaton) per unit. The strings come in groups, which are
/// counted apart.
class NeedleFinder {
 public:
  /// At most 64 strings.
  explicit NeedleFinder(std::initializer_list<std::span<const QStringView>> groups);

  /// How far a search has come. Feeding two texts one after the other is as feeding them joined.
  struct Progress {
    std::uint64_t found = 0;
    std::uint8_t state = 0;
  };

  template <class Text>
  void feed(const Text& text, Progress& progress) const {
    std::uint8_t state = progress.state;
    for (qsizetype i = 0; i < text.size(); ++i) {
      const char16_t c = text[i];
      state = c < 128 ? states_[state].next[c] : 0;
      progress.found |= states_[state].found;
    }
    progress.state = state;
  }

  /// How many strings of a group were found, each counted once.
  [[nodiscard]] int count(const Progress& progress, std::size_t group) const {
    return std::popcount(progress.found & groups_[group]);
  }

 private:
  struct State {
    std::array<std::uint8_t, 128> next{};
    std::uint64_t found = 0;
  };

  void add(QStringView needle, std::uint64_t bit);
  void completeTransitions();

  std::vector<State> states_{1};
  std::vector<std::uint64_t> groups_;
};

}  // namespace lumeno::scan
