// A cheap test rules out nearly every token; at the few others the grammar is tried, and what it finds counts
// if it stands by itself in the text and means a real moment. Digits glued into a longer chain (a version, a
// phone number, an address) that is no date as a whole are passed over as a whole.

#include <string_view>

#include "suggest/detect/date_calendar.h"
#include "suggest/detect/date_grammar.h"
#include "suggest/detect/date_tokens.h"
#include "suggest/detect/detect.h"

namespace lumeno::detect {

namespace {

using Kind = DateToken::Kind;
using Gap = DateToken::Gap;

bool isWordLike(char32_t c) {
  return c == u'_' || QChar::isLetterOrNumber(c) || QChar::isMark(c);
}

char32_t characterAt(QStringView text, qsizetype i) {
  const bool pair = i + 1 < text.size() && text[i].isHighSurrogate() && text[i + 1].isLowSurrogate();
  return pair ? QChar::surrogateToUcs4(text[i], text[i + 1]) : text[i].unicode();
}

char32_t characterBefore(QStringView text, qsizetype i) {
  const bool pair = i > 1 && text[i - 1].isLowSurrogate() && text[i - 2].isHighSurrogate();
  return pair ? QChar::surrogateToUcs4(text[i - 2], text[i - 1]) : text[i - 1].unicode();
}

bool isOneOf(char32_t c, std::u16string_view set) {
  return c < 0x10000 && set.find(static_cast<char16_t>(c)) != set.npos;
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
      if (isLabelled(index_) || !mayBeginAt(index_)) {
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
      if (!mayEndAt(end)) {
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
      const bool joins = isOneOf(token.mark, u".,:/-\u2013+_*x%=") && following.gap == Gap::none &&
                         following.kind == Kind::number;
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

  bool mayBeginAt(std::size_t index) {
    const DateToken& token = tokens_.at(index);
    if (token.gap != Gap::none || token.start == 0) return true;
    const QStringView text = tokens_.text();
    const char32_t c = characterBefore(text, token.start);
    const bool wordBefore = token.start > 1 && isWordLike(characterBefore(text, token.start - 1));
    if (c == u'\'' || c == u'\u2019') return token.kind != Kind::number || !wordBefore;
    if (c == u'@') return token.kind == Kind::number && !wordBefore;
    if (isWordLike(c) || isOneOf(c, u"#/\\$\u20AC\u00A3%&^*")) return false;
    if (c == u':') return token.kind == Kind::word;
    if (c == u'.') return !wordBefore && token.kind == Kind::word;
    if (c == u'-' || c == u'+' || c == u'\u2013') return token.kind != Kind::number && c != u'+';
    return true;
  }

  bool mayEndAt(qsizetype end) {
    const QStringView text = tokens_.text();
    if (end == text.size()) return true;
    const char32_t c = characterAt(text, end);
    if (isWordLike(c) || c == 0x200D || c == 0x20E3 || isOneOf(c, u"(@\\%\u20AC$\u00A3\u00B0")) {
      return false;
    }
    const bool wordAfter = end + 1 < text.size() && isWordLike(characterAt(text, end + 1));
    const bool numeric = text[end - 1].isDigit();
    const bool digitAfter = end + 1 < text.size() && text[end + 1].isDigit();
    if (c == u'.' || c == u'/') return !wordAfter;
    if (c == u':') return !digitAfter;
    if (c == u'-' || c == u'\u2013' || c == u',') return !(numeric && digitAfter);
    return true;
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
