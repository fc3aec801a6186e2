#pragma once

#include <QObject>

class QQuickTextDocument;

namespace lumeno {

/// Where the keys that select text lead to, for fields that select by themselves: the toolkit's own way of
/// doing it offers every selection to other applications as the one the user made last.
class TextKeys : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;

  /// The place that a key press (`key` and `modifiers` as in Qt) extends the selection to from `position`; -1
  /// when it is not one that selects.
  Q_INVOKABLE int selectionTarget(QQuickTextDocument* document, int position, int key, int modifiers) const;
};

}  // namespace lumeno
