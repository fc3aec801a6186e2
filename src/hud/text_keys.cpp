#include "hud/text_keys.h"

#include <QKeyEvent>
#include <QQuickTextDocument>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <array>

namespace lumeno {

namespace {

struct SelectionKey {
  QKeySequence::StandardKey key;
  QTextCursor::MoveOperation move;
};

constexpr std::array selectionKeys = {
    SelectionKey{QKeySequence::SelectNextChar, QTextCursor::Right},
    SelectionKey{QKeySequence::SelectPreviousChar, QTextCursor::Left},
    SelectionKey{QKeySequence::SelectNextWord, QTextCursor::WordRight},
    SelectionKey{QKeySequence::SelectPreviousWord, QTextCursor::WordLeft},
    SelectionKey{QKeySequence::SelectNextLine, QTextCursor::Down},
    SelectionKey{QKeySequence::SelectPreviousLine, QTextCursor::Up},
    SelectionKey{QKeySequence::SelectStartOfLine, QTextCursor::StartOfLine},
    SelectionKey{QKeySequence::SelectEndOfLine, QTextCursor::EndOfLine},
    SelectionKey{QKeySequence::SelectStartOfBlock, QTextCursor::StartOfBlock},
    SelectionKey{QKeySequence::SelectEndOfBlock, QTextCursor::EndOfBlock},
    SelectionKey{QKeySequence::SelectStartOfDocument, QTextCursor::Start},
    SelectionKey{QKeySequence::SelectEndOfDocument, QTextCursor::End},
    SelectionKey{QKeySequence::SelectPreviousPage, QTextCursor::Start},
    SelectionKey{QKeySequence::SelectNextPage, QTextCursor::End},
};

}  // namespace

int TextKeys::selectionTarget(QQuickTextDocument* document, int position, int key, int modifiers) const {
  const QKeyEvent event(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers));
  const auto found = std::find_if(selectionKeys.begin(), selectionKeys.end(),
                                  [&event](const SelectionKey& each) { return event.matches(each.key); });
  if (found == selectionKeys.end()) return -1;
  QTextCursor cursor(document->textDocument());
  cursor.setPosition(position);
  if (!cursor.movePosition(found->move)) {
    // Up in the first line and down in the last go to the very end.
    if (found->move == QTextCursor::Up) cursor.movePosition(QTextCursor::Start);
    if (found->move == QTextCursor::Down) cursor.movePosition(QTextCursor::End);
  }
  return cursor.position();
}

void TextKeys::forgetChanges(QQuickTextDocument* document) const {
  document->textDocument()->clearUndoRedoStacks();
}

}  // namespace lumeno
