#include "suggest/listed_words.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <QStringList>
#include <algorithm>

namespace lumeno::scan {

using namespace Qt::StringLiterals;

namespace {

bool dropPrefix(QStringView& text, QStringView prefix) {
  if (!text.startsWith(prefix)) return false;
  text = text.sliced(prefix.size());
  return true;
}

bool dropSuffix(QStringView& text, QStringView suffix) {
  if (!text.endsWith(suffix)) return false;
  text.chop(suffix.size());
  return true;
}

/// The spellings of a literal with escaped characters and optional ones ("a\.m\.", "means?").
QStringList spellings(const QString& literal) {
  QStringList texts = {QString()};
  for (qsizetype i = 0; i < literal.size(); ++i) {
    if (literal[i] == u'\\') ++i;
    const QStringList without = texts;
    for (QString& text : texts) text += literal[i].toLower();
    if (i + 1 < literal.size() && literal[i + 1] == u'?') {
      texts += without;
      ++i;
    }
  }
  return texts;
}

}  // namespace

std::vector<ListedPhrase> spellOut(QStringView source, CueSet pattern) {
  using Start = ListedPhrase::Start;
  using End = ListedPhrase::End;
  const Start start = dropPrefix(source, uR"((?m)^\s*)") ? Start::lineStart : Start::wordStart;
  dropPrefix(source, uR"(\b)");
  const End end = dropSuffix(source, uR"(\b)") ? End::wordBoundary : End::anywhere;

  QStringList literals;
  const qsizetype open = source.indexOf(u'(');
  const qsizetype close = source.indexOf(u')');
  if (open < 0) {
    literals = {source.toString()};
  } else {
    for (const QStringView alternative : source.sliced(open + 1, close - open - 1).split(u'|')) {
      literals +=
          source.first(open).toString() + alternative.toString() + source.sliced(close + 1).toString();
    }
  }

  std::vector<ListedPhrase> phrases;
  for (const QString& literal : literals) {
    for (const QString& text : spellings(literal)) phrases.push_back({text, start, end, pattern});
  }
  return phrases;
}

ListedWords::ListedWords() {
  CueSet pattern = 1;
  for (const CuePattern& cue : cuePatterns()) {
    if (cue.form == CueForm::listedWords) {
      for (const ListedPhrase& phrase : spellOut(cue.source, pattern)) {
        auto& phrases = byFirstLetter_[phrase.text.front().unicode() - u'a'];
        const auto same = std::ranges::find_if(phrases, [&](const ListedPhrase& other) {
          return other.text == phrase.text && other.start == phrase.start && other.end == phrase.end;
        });
        if (same == phrases.end()) {
          phrases.push_back(phrase);
        } else {
          same->patterns |= pattern;
        }
      }
    }
    pattern <<= 1;
  }
}

const ListedWords& ListedWords::shared() {
  static const ListedWords words;
  return words;
}

Folding foldNonAscii(char32_t c) {
  std::array<char16_t, 2> source{};
  int32_t length = 0;
  U16_APPEND_UNSAFE(source, length, c);
  Folding folding;
  UErrorCode status = U_ZERO_ERROR;
  folding.size = u_strFoldCase(folding.units.data(), static_cast<int32_t>(folding.units.size()),
                               source.data(), length, U_FOLD_CASE_DEFAULT, &status);
  return folding;
}

}  // namespace lumeno::scan
