#include "files/caution/unseen_characters.h"

namespace lumeno {

namespace {

bool isJoiner(QChar c) {
  return c == u'\u200C' || c == u'\u200D';
}

bool joinsNeighbours(QStringView text, qsizetype i) {
  return i > 0 && i + 1 < text.size() && text[i - 1].unicode() > 0x7F && text[i + 1].unicode() > 0x7F &&
         !isUnseen(text[i - 1]) && !isUnseen(text[i + 1]);
}

}  // namespace

bool isUnseen(QChar c) {
  const char16_t u = c.unicode();
  if (u < 0x20) return u != u'\t' && u != u'\n';
  return (u >= 0x7F && u < 0xA0) || u == 0xAD || u == 0x61C || u == 0x115F || u == 0x1160 || u == 0x180E ||
         (u >= 0x200B && u <= 0x200F) || (u >= 0x2028 && u <= 0x202E) || (u >= 0x2060 && u <= 0x206F) ||
         u == 0x3164 || u == 0xFEFF || u == 0xFFA0 || (u >= 0xFFF9 && u <= 0xFFFC);
}

std::optional<shell::Span> unseenCharacters(QStringView text) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (!isUnseen(text[i]) || (isJoiner(text[i]) && joinsNeighbours(text, i))) continue;
    qsizetype end = i + 1;
    while (end < text.size() && isUnseen(text[end])) ++end;
    return shell::Span{i, end - i};
  }
  return std::nullopt;
}

}  // namespace lumeno
