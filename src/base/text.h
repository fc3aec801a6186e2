#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <optional>
#include <vector>

/// Text helpers shared by everything that looks at a selection. All are linear in the text.
namespace lumeno::text {

/// White space and line breaks as trimming understands them: tab, line feed, vertical tab, form feed,
/// carriage return, U+0085, every space separator, U+2028 and U+2029.
[[nodiscard]] bool isTrimmable(char16_t c);

/// `s` without leading and trailing white space and line breaks (a view into `s`).
[[nodiscard]] QStringView trimmed(QStringView s);

/// The character at `position`, which half a character alone counts as too.
[[nodiscard]] char32_t characterAt(QStringView s, qsizetype position);

/// Whether a character shows nothing of its own or rearranges what is around it: controls (the line feed and
/// the tab are seen), formats, joiners among them, halves of characters, fillers.
[[nodiscard]] bool isUnseen(char32_t c);

/// The number of user-perceived characters (grapheme clusters).
[[nodiscard]] qsizetype characterCount(QStringView s);

/// Whether `s` has more than `limit` user-perceived characters, at a cost of at most about `limit`
/// characters.
[[nodiscard]] bool hasMoreCharactersThan(QStringView s, qsizetype limit);

/// The first `count` user-perceived characters of `s` (all of it when it has no more).
[[nodiscard]] QStringView firstCharacters(QStringView s, qsizetype count);

/// The maximal runs of characters that are not Unicode White_Space.
[[nodiscard]] std::vector<QStringView> words(QStringView s);
[[nodiscard]] qsizetype wordCount(QStringView s);

/// The text that `bytes` are the UTF-8 form of, with a byte order mark if they begin with one; absent when
/// they are not valid UTF-8.
[[nodiscard]] std::optional<QString> decodedUtf8(QByteArrayView bytes);

/// The text split at line breaks (U+000A to U+000D, U+0085, U+2028, U+2029), empty pieces dropped.
[[nodiscard]] std::vector<QStringView> lines(QStringView s);

}  // namespace lumeno::text
