// A cheap test rules out nearly every token; at the few others the grammar is tried, and what it finds counts
// if it stands by itself in the text and means a real moment. Digits glued into a longer chain (a version, a
// phone number, an address) that is no date as a whole are passed over as a whole.

#include "suggest/detect/date_calendar.h"
#include "suggest/detect/date_grammar.h"
#include "suggest/detect/date_tokens.h"
#include "suggest/detect/detect.h"

namespace lumeno::detect {

namespace {

using Kind = DateToken::Kind;
using Gap = DateToken::Gap;

bool isWordLike(char16_t c) {
  return c == u'_' || QChar(c).isLetterOrNumber() || QChar(c).isMark() || QChar::isSurrogate(c);
}

class DateFinder {
 public:
  DateFinder(QStringView text, const Surroundings& surroundings)
      : tokens_(text),
        calendar_(surroundings),
        grammar_(tokens_, calendar_, DateHabits::of(surroundings.locale)) {}

  std::optional<DateMatch> next() {
    while (tokens_.at(index_).kind != Kind::end) {
      const unsigned languages = grammar_.mayBegin(index_);
      if (languages == 0) {
        ++index_;
        continue;
      }
      if (isLabelled(index_) || !mayStandAfter(index_)) {
        pass();
        continue;
      }
      const auto expression = grammar_.parse(index_, languages);
      if (!expression) {
        pass();
        continue;
      }
      const qsizetype start = tokens_.at(expression->begin).start;
      const qsizetype end = tokens_.at(expression->end - 1).end;
      index_ = expression->end;
      if (!mayStandBefore(start, end)) {
        --index_;
        pass();
        continue;
      }
      if (auto resolved = calendar_.resolve(*expression)) {
        return DateMatch{start, end - start, std::move(resolved->start), resolved->durationSeconds};
      }
    }
    return std::nullopt;
  }

 private:
  // Moves past the current token, and past everything glued to it when it is a number.
  void pass() {
    const bool digits = tokens_.at(index_).kind == Kind::number;
    ++index_;
    if (!digits) return;
    for (;; ++index_) {
      const DateToken& token = tokens_.at(index_);
      if (token.kind == Kind::end || token.gap != Gap::none) return;
      if (token.kind != Kind::mark) continue;
      const DateToken& following = tokens_.at(index_ + 1);
      const bool joins = QStringView(u".,:/-\u2013+_*x%=").contains(QChar(token.mark)) &&
                         following.gap == Gap::none && following.kind == Kind::number;
      if (!joins) return;
    }
  }

  // "room 12", "No. 5", "Score: 3:20"
  bool isLabelled(std::size_t index) {
    if (tokens_.at(index).kind != Kind::number || index == 0 || tokens_.at(index).gap > Gap::blank)
      return false;
    std::size_t word = index - 1;
    const char16_t mark = tokens_.at(word).mark;
    if ((mark == u'.' || mark == u':') && word > 0 && tokens_.at(word).gap == Gap::none) --word;
    const DateToken& token = tokens_.at(word);
    if (!token.entry) return false;
    for (int language = 0; language < dateLanguageCount; ++language) {
      if (token.entry->has(language, DateRole::blocker)) return true;
    }
    return false;
  }

  bool mayStandAfter(std::size_t index) {
    const DateToken& token = tokens_.at(index);
    if (token.gap != Gap::none || token.start == 0) return true;
    const QStringView text = tokens_.text();
    const char16_t c = text[token.start - 1].unicode();
    const bool wordBefore = token.start > 1 && isWordLike(text[token.start - 2].unicode());
    if (c == u'\'' || c == u'\u2019') return token.kind != Kind::number || !wordBefore;
    if (isWordLike(c) || QStringView(u"@#/\\$\u20AC\u00A3%&~^*").contains(QChar(c))) return false;
    if (c == u'.' || c == u':')
      return token.kind == Kind::word && c == u':' ? true : !wordBefore && c == u':';
    if (c == u'-' || c == u'+' || c == u'\u2013') return token.kind != Kind::number && c != u'+';
    return true;
  }

  bool mayStandBefore(qsizetype start, qsizetype end) {
    const QStringView text = tokens_.text();
    if (end == text.size()) return true;
    const char16_t c = text[end].unicode();
    if (isWordLike(c) || c == 0x200D || c == 0x20E3) {
      return false;
    }
    const bool wordAfter = end + 1 < text.size() && isWordLike(text[end + 1].unicode());
    const bool numeric = text[end - 1].isDigit();
    const bool digitAfter = end + 1 < text.size() && text[end + 1].isDigit();
    if (QStringView(u"@\\%\u20AC$\u00A3\u00B0").contains(QChar(c))) return false;
    if (c == u'(') return false;
    if (c == u'.' || c == u'/') return !wordAfter;
    if (c == u':') return !digitAfter;
    if (c == u'-' || c == u'\u2013' || c == u',') return !(numeric && digitAfter);
    return start < end;
  }

  DateTokens tokens_;
  DateCalendar calendar_;
  DateGrammar grammar_;
  std::size_t index_ = 0;
};

}  // namespace

std::vector<DateMatch> dates(QStringView text, const Surroundings& surroundings) {
  std::vector<DateMatch> matches;
  DateFinder finder(text, surroundings);
  while (auto match = finder.next()) matches.push_back(std::move(*match));
  return matches;
}

std::optional<DateMatch> firstDate(QStringView text, const Surroundings& surroundings) {
  return DateFinder(text, surroundings).next();
}

}  // namespace lumeno::detect
