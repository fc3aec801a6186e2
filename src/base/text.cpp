#include "base/text.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

#include <QStringDecoder>
#include <memory>

namespace lumeno::text {

namespace {

bool isLineBreak(char16_t c) {
  return (c >= u'\n' && c <= u'\r') || c == u'\u0085' || c == u'\u2028' || c == u'\u2029';
}

// Every White_Space character lies in the basic plane, so UTF-16 units are enough.
bool isWhiteSpace(char16_t c) {
  return u_isUWhiteSpace(c);
}

/// Calls `visit` with the end offset of each grapheme cluster until it returns false.
template <typename Visit>
void forEachCharacter(QStringView s, Visit visit) {
  UErrorCode status = U_ZERO_ERROR;
  static thread_local const std::unique_ptr<icu::BreakIterator> iterator(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  if (!iterator) return;
  status = U_ZERO_ERROR;
  UText* utext = utext_openUChars(nullptr, s.utf16(), s.size(), &status);
  if (U_FAILURE(status)) return;
  iterator->setText(utext, status);
  for (int32_t end = iterator->next(); end != icu::BreakIterator::DONE; end = iterator->next()) {
    if (!visit(static_cast<qsizetype>(end))) break;
  }
  utext_close(utext);
}

template <typename IsSeparator>
std::vector<QStringView> split(QStringView s, IsSeparator isSeparator) {
  std::vector<QStringView> pieces;
  qsizetype start = -1;
  for (qsizetype i = 0; i <= s.size(); ++i) {
    const bool separator = i == s.size() || isSeparator(s[i].unicode());
    if (separator && start >= 0) {
      pieces.push_back(s.sliced(start, i - start));
      start = -1;
    } else if (!separator && start < 0) {
      start = i;
    }
  }
  return pieces;
}

}  // namespace

char32_t characterAt(QStringView s, qsizetype position) {
  const QChar unit = s[position];
  const bool isPair = unit.isHighSurrogate() && position + 1 < s.size() && s[position + 1].isLowSurrogate();
  return isPair ? QChar::surrogateToUcs4(unit, s[position + 1]) : unit.unicode();
}

bool isUnseen(char32_t c) {
  if (c >= 0x20 && c < 0x7F) return false;
  switch (QChar::category(c)) {
    case QChar::Other_Control:
      return c != U'\n' && c != U'\t';
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
      return true;
    default:
      // The fillers of Hangul and the mark of an object that is not there.
      return c == 0x115F || c == 0x1160 || c == 0x3164 || c == 0xFFA0 || c == 0xFFFC;
  }
}

bool isTrimmable(char16_t c) {
  return isLineBreak(c) || c == u'\t' || u_charType(c) == U_SPACE_SEPARATOR;
}

QStringView trimmed(QStringView s) {
  qsizetype start = 0;
  qsizetype end = s.size();
  while (start < end && isTrimmable(s[start].unicode())) ++start;
  while (end > start && isTrimmable(s[end - 1].unicode())) --end;
  return s.sliced(start, end - start);
}

qsizetype characterCount(QStringView s) {
  qsizetype count = 0;
  forEachCharacter(s, [&](qsizetype) {
    ++count;
    return true;
  });
  return count;
}

bool hasMoreCharactersThan(QStringView s, qsizetype limit) {
  // A cluster takes at least one unit, so a short text cannot have more.
  if (s.size() <= limit) return false;
  qsizetype count = 0;
  forEachCharacter(s, [&](qsizetype) { return ++count <= limit; });
  return count > limit;
}

QStringView firstCharacters(QStringView s, qsizetype count) {
  if (s.size() <= count) return s;
  qsizetype seen = 0;
  qsizetype end = 0;
  forEachCharacter(s, [&](qsizetype clusterEnd) {
    if (seen == count) return false;
    ++seen;
    end = clusterEnd;
    return true;
  });
  return s.first(end);
}

std::vector<QStringView> words(QStringView s) {
  return split(s, isWhiteSpace);
}

qsizetype wordCount(QStringView s) {
  qsizetype count = 0;
  bool inside = false;
  for (const QChar c : s) {
    const bool blank = isWhiteSpace(c.unicode());
    if (!blank && !inside) ++count;
    inside = !blank;
  }
  return count;
}

std::vector<QStringView> lines(QStringView s) {
  return split(s, isLineBreak);
}

std::optional<QString> decodedUtf8(QByteArrayView bytes) {
  using Flag = QStringConverter::Flag;
  QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
  QString text = decoder.decode(bytes);
  return decoder.hasError() ? std::nullopt : std::optional(std::move(text));
}

}  // namespace lumeno::text
