#include "files/caution/unseen_characters.h"

#include "base/text.h"

namespace lumeno {

namespace {

qsizetype lengthAt(QStringView text, qsizetype i) {
  return QChar::requiresSurrogates(text::characterAt(text, i)) ? 2 : 1;
}

/// Half of a pair counts as the character that it belongs to.
bool isJoinable(QChar c) {
  return c.unicode() > 0x7F && (c.isSurrogate() || !text::isUnseen(c.unicode()));
}

bool joinsNeighbours(QStringView text, qsizetype i) {
  const bool isJoiner = text[i] == u'\u200C' || text[i] == u'\u200D';
  return isJoiner && i > 0 && i + 1 < text.size() && isJoinable(text[i - 1]) && isJoinable(text[i + 1]);
}

}  // namespace

std::optional<shell::Span> unseenCharacters(QStringView text) {
  for (qsizetype i = 0; i < text.size(); i += lengthAt(text, i)) {
    if (!text::isUnseen(text::characterAt(text, i)) || joinsNeighbours(text, i)) continue;
    qsizetype end = i;
    while (end < text.size() && text::isUnseen(text::characterAt(text, end))) end += lengthAt(text, end);
    return shell::Span{i, end - i};
  }
  return std::nullopt;
}

}  // namespace lumeno
