#pragma once

#include <QHash>
#include <QString>
#include <QStringView>
#include <unordered_set>

namespace lumeno::detect {

/// A fixed set of lower-case words, asked without regard to case and without allocating.
class WordSet {
 public:
  /// `words` in lower case, separated by `separator`.
  explicit WordSet(const QString& words, QChar separator = u' ');

  [[nodiscard]] bool contains(QStringView word) const;

 private:
  QString storage_;
  std::unordered_set<QStringView> words_;
  qsizetype longest_ = 0;
};

}  // namespace lumeno::detect
