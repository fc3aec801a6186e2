#include "suggest/needle_finder.h"

#include <QtGlobal>
#include <limits>

namespace lumeno::scan {

NeedleFinder::NeedleFinder(std::initializer_list<std::span<const QStringView>> groups) {
  std::uint64_t bit = 1;
  for (const auto& group : groups) {
    std::uint64_t members = 0;
    for (const QStringView needle : group) {
      Q_ASSERT(bit != 0);
      add(needle, bit);
      members |= bit;
      bit <<= 1;
    }
    groups_.push_back(members);
  }
  Q_ASSERT(states_.size() <= std::numeric_limits<std::uint8_t>::max());
  completeTransitions();
}

void NeedleFinder::add(QStringView needle, std::uint64_t bit) {
  std::uint8_t state = 0;
  for (const QChar c : needle) {
    Q_ASSERT(c.unicode() < 128);
    if (states_[state].next[c.unicode()] == 0) {
      states_[state].next[c.unicode()] = static_cast<std::uint8_t>(states_.size());
      states_.emplace_back();
    }
    state = states_[state].next[c.unicode()];
  }
  states_[state].found |= bit;
}

// Breadth first: where a state has no child for a character, it does what its longest proper suffix does.
void NeedleFinder::completeTransitions() {
  struct Pending {
    std::uint8_t state;
    std::uint8_t suffix;
  };
  std::vector<Pending> queue = {{0, 0}};
  for (std::size_t head = 0; head < queue.size(); ++head) {
    const auto [state, suffix] = queue[head];
    states_[state].found |= states_[suffix].found;
    for (std::size_t c = 0; c < states_[state].next.size(); ++c) {
      std::uint8_t& next = states_[state].next[c];
      // The root is its own suffix, so what it lacks stays with it.
      const std::uint8_t fallback = state == 0 ? std::uint8_t{0} : states_[suffix].next[c];
      if (next != 0) {
        queue.push_back({next, fallback});
      } else {
        next = fallback;
      }
    }
  }
}

}  // namespace lumeno::scan
