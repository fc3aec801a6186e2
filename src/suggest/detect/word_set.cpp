#include "suggest/detect/word_set.h"

#include <array>

namespace lumeno::detect {

namespace {
constexpr qsizetype capacity = 48;
}

WordSet::WordSet(const QString& words, QChar separator) : storage_(words) {
  for (const QStringView word : QStringView(storage_).tokenize(separator, Qt::SkipEmptyParts)) {
    words_.insert(word);
    longest_ = std::max(longest_, word.size());
  }
  Q_ASSERT(longest_ <= capacity);
}

bool WordSet::contains(QStringView word) const {
  if (word.isEmpty() || word.size() > longest_) return false;
  std::array<QChar, capacity> lower;
  for (qsizetype i = 0; i < word.size(); ++i) lower[size_t(i)] = word[i].toLower();
  return words_.contains(QStringView(lower.data(), word.size()));
}

}  // namespace lumeno::detect
