#pragma once

#include <QHashFunctions>
#include <QString>
#include <QUuid>

namespace lumeno {

/// The input to classification and suggestion building. Two contexts made from the same text differ unless
/// they share the `id`.
struct SelectedContext {
  QUuid id;
  QString selectedText;
  QString sourceApp;
  QString windowTitle;  ///< empty when unknown
  bool operator==(const SelectedContext&) const = default;
};

[[nodiscard]] inline size_t qHash(const SelectedContext& c, size_t seed = 0) {
  return qHashMulti(seed, c.id, c.selectedText, c.sourceApp, c.windowTitle);
}

}  // namespace lumeno
