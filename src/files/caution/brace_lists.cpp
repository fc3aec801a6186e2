#include <algorithm>

#include "files/caution/shell_script.h"

namespace lumeno::shell {

namespace {

constexpr std::size_t maximumWords = 64;

/// A brace list in a word: positions of its braces and of the commas between its items.
struct BraceList {
  qsizetype open = -1;
  qsizetype close = -1;
  std::vector<qsizetype> commas;
};

/// The ends of `{a..e}` and `{1..9}`.
struct Range {
  int first = 0;
  int last = 0;
  bool letters = false;
  qsizetype digits = 0;  ///< with zeros in front up to this many
};

std::optional<Range> rangeOf(QStringView content) {
  const qsizetype dots = content.indexOf(u"..");
  if (dots < 0 || content.size() > 12) return std::nullopt;
  const QStringView first = content.first(dots);
  const QStringView last = content.sliced(dots + 2);
  if (first.size() == 1 && last.size() == 1 && !first[0].isDigit() && !last[0].isDigit()) {
    return Range{first[0].unicode(), last[0].unicode(), true};
  }
  bool firstOk = false;
  bool lastOk = false;
  Range range{first.toInt(&firstOk), last.toInt(&lastOk), false};
  if (first.startsWith(u'0') || last.startsWith(u'0')) range.digits = std::max(first.size(), last.size());
  if (!firstOk || !lastOk) return std::nullopt;
  return range;
}

/// The first list that is one: closed, with a comma of its own or a range.
std::optional<BraceList> firstList(const Word& word) {
  std::vector<BraceList> open;
  std::optional<BraceList> found;
  for (qsizetype i = 0; i < word.text.size(); ++i) {
    if (word.isPlain(i, u'{')) {
      open.push_back({i, -1, {}});
    } else if (word.isPlain(i, u',') && !open.empty()) {
      open.back().commas.push_back(i);
    } else if (word.isPlain(i, u'}') && !open.empty()) {
      BraceList list = std::move(open.back());
      open.pop_back();
      list.close = i;
      const bool isList =
          !list.commas.empty() || rangeOf(QStringView(word.text).sliced(list.open + 1, i - list.open - 1));
      if (isList && (!found || list.open < found->open)) found = std::move(list);
      if (found && open.empty()) break;
    }
  }
  return found;
}

void appendPart(Word& word, const Word& source, qsizetype from, qsizetype to) {
  word.text += QStringView(source.text).sliced(from, to - from);
  word.kinds.append(source.kinds, std::size_t(from), std::size_t(to - from));
}

std::vector<Word> alternatives(const Word& word, const BraceList& list) {
  std::vector<Word> items;
  const auto begin = [&] {
    Word item = word.sliced(0, list.open);
    return item;
  };
  const auto finish = [&](Word item) {
    appendPart(item, word, list.close + 1, word.text.size());
    items.push_back(std::move(item));
  };
  if (list.commas.empty()) {
    const auto range = *rangeOf(QStringView(word.text).sliced(list.open + 1, list.close - list.open - 1));
    const int count = std::min(std::abs(range.last - range.first), int(maximumWords)) + 1;
    for (int i = 0; i < count; ++i) {
      const int value = range.first + (range.last < range.first ? -i : i);
      Word item = begin();
      const QString text = range.letters ? QString(QChar(char16_t(value)))
                                         : QString::number(value).rightJustified(range.digits, u'0');
      for (const QChar unit : text) item.append(unit, UnitKind::quoted);
      finish(std::move(item));
    }
    return items;
  }
  qsizetype from = list.open + 1;
  for (std::size_t i = 0; i <= list.commas.size() && i <= maximumWords; ++i) {
    const qsizetype to = i < list.commas.size() ? list.commas[i] : list.close;
    Word item = begin();
    appendPart(item, word, from, to);
    finish(std::move(item));
    from = to + 1;
  }
  return items;
}

}  // namespace

std::vector<Word> expandBraces(Word word) {
  std::vector<Word> result;
  qsizetype effort = 0;
  const qsizetype limit = word.text.size() * 16 + 4096;
  std::vector<Word> open;
  open.push_back(word);
  while (!open.empty()) {
    Word next = std::move(open.back());
    open.pop_back();
    const auto list = firstList(next);
    effort += next.text.size() + 1;
    if (!list) {
      result.push_back(std::move(next));
    } else {
      const std::size_t count = list->commas.empty() ? 2 : list->commas.size() + 1;
      effort += qsizetype(std::min(count, maximumWords)) * next.text.size();
      if (effort <= limit) {
        std::vector<Word> items = alternatives(next, *list);
        std::ranges::reverse(items);
        std::ranges::move(items, std::back_inserter(open));
      }
    }
    if (effort > limit || result.size() > maximumWords) {
      word.overflowing = true;
      return {std::move(word)};
    }
  }
  return result;
}

}  // namespace lumeno::shell
