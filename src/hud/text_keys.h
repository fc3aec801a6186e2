#pragma once

#include <QObject>

class QQuickTextDocument;

namespace lumeno {

/// What fields that select by themselves (the toolkit's own way of doing it offers every selection to other
/// applications as the one the user made last) need besides: where the keys that select text lead to, and an
/// end to what can be undone.
class TextKeys : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;

  /// The place that a key press (`key` and `modifiers` as in Qt) extends the selection to from `position`; -1
  /// when it is not one that selects.
  Q_INVOKABLE int selectionTarget(QQuickTextDocument* document, int position, int key, int modifiers) const;

  /// Nothing that was typed before can be undone or redone any more.
  Q_INVOKABLE void forgetChanges(QQuickTextDocument* document) const;
};

}  // namespace lumeno
