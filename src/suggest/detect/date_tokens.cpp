#include "suggest/detect/date_tokens.h"

#include <unicode/unorm2.h>

#include "suggest/detect/step_counter.h"

namespace lumeno::detect {

namespace {

bool isAsciiLetter(char16_t c) {
  return static_cast<char16_t>((c | 0x20) - u'a') < 26;
}

bool isDigit(char16_t c) {
  return static_cast<char16_t>(c - u'0') < 10;
}

bool isCombining(char16_t c) {
  return c >= 0x300 && c < 0x370;
}

bool isLetter(char16_t c) {
  return isAsciiLetter(c) || (c >= 0x80 && !QChar::isSurrogate(c) && (QChar::isLetter(c) || isCombining(c)));
}

char16_t lower(char16_t c) {
  if (c < 0x80) return static_cast<char16_t>(isAsciiLetter(c) ? c | 0x20 : c);
  return static_cast<char16_t>(QChar::toLower(static_cast<char32_t>(c)));
}

bool isBlank(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\u00A0' || c == u'\u202F' || c == u'\u2009';
}

bool isLineBreak(char16_t c) {
  return (c >= u'\n' && c <= u'\r') || c == u'\u0085' || c == u'\u2028' || c == u'\u2029';
}

bool isApostrophe(char16_t c) {
  return c == u'\'' || c == u'\u2019';
}

/// Marks that stand for themselves in the grammar; anything else without letters or digits is `foreign`.
bool isMark(char16_t c) {
  return (c > u' ' && c < 0x80) || (c >= 0x2010 && c <= 0x2015) || isApostrophe(c) || c == u'\u00B7' ||
         c == u'\u00BA' || c == u'\u2192' || c == u'\u201C' || c == u'\u201D' || c == u'\u2026' ||
         c == u'\u00AB' || c == u'\u00BB' || c == u'\u2022';
}

}  // namespace

/// A word being read, with the lower-case letters and hash of what was read so far.
struct DateTokens::Reading {
  qsizetype position = 0;
  WordHash hash;
  char16_t letters[Vocabulary::maxEntryLength];
  qsizetype length = 0;
  bool tooLong = false;

  void add(char16_t c) {
    if (length == Vocabulary::maxEntryLength) {
      tooLong = true;
      return;
    }
    letters[length++] = c;
    hash.add(c);
  }
};

DateTokens::DateTokens(QStringView text) : text_(text), vocabulary_(Vocabulary::instance()) {}

DateTokens::~DateTokens() {
  countSteps(static_cast<std::uint64_t>(position_) + reread_ + looks_);
}

void DateTokens::make() {
  DateToken& token = ring_[made_ % ring_.size()];
  ++made_;
  token = {};
  int lineBreaks = 0;
  const qsizetype before = position_;
  while (position_ < text_.size()) {
    const char16_t c = text_[position_].unicode();
    if (isLineBreak(c)) {
      const bool secondOfPair = c == u'\n' && position_ > before && text_[position_ - 1] == u'\r';
      if (!secondOfPair) ++lineBreaks;
    } else if (!isBlank(c)) {
      break;
    }
    ++position_;
  }
  if (lineBreaks > 0) {
    token.gap = lineBreaks > 1 ? DateToken::Gap::paragraph : DateToken::Gap::line;
  } else if (position_ > before) {
    token.gap = DateToken::Gap::blank;
  }
  token.start = token.end = position_;
  if (position_ == text_.size()) return;

  const char16_t c = text_[position_].unicode();
  if (isDigit(c)) {
    makeNumber(token);
  } else if (isLetter(c)) {
    makeWord(token);
  } else if (isMark(c)) {
    token.kind = DateToken::Kind::mark;
    token.mark = c;
    ++position_;
  } else {
    token.kind = DateToken::Kind::foreign;
    do {
      ++position_;
      if (position_ == text_.size()) break;
      const char16_t next = text_[position_].unicode();
      if (next < 0x80 || isBlank(next) || isLineBreak(next) || isMark(next) || isLetter(next)) break;
    } while (true);
  }
  token.end = position_;
}

void DateTokens::makeNumber(DateToken& token) {
  token.kind = DateToken::Kind::number;
  while (position_ < text_.size() && isDigit(text_[position_].unicode())) {
    if (position_ - token.start < 9) token.value = token.value * 10 + (text_[position_].unicode() - u'0');
    ++position_;
  }
  if (position_ - token.start > 9) token.value = -1;
}

// Reads letters, composing decomposed accents on the way; returns whether there were any.
bool DateTokens::readWord(Reading& reading) const {
  static const UNormalizer2* const composer = [] {
    UErrorCode status = U_ZERO_ERROR;
    return unorm2_getNFCInstance(&status);
  }();
  const qsizetype start = reading.position;
  const char16_t* const units = text_.utf16();
  for (; reading.position < text_.size(); ++reading.position) {
    const char16_t c = units[reading.position];
    if (isAsciiLetter(c)) {
      if (!reading.tooLong) reading.add(static_cast<char16_t>(c | 0x20));
      continue;
    }
    if (c < 0x80 || !isLetter(c)) break;
    if (reading.tooLong) continue;
    if (isCombining(c) && reading.length > 0) {
      const UChar32 composed = unorm2_composePair(composer, reading.letters[reading.length - 1], c);
      if (composed <= 0 || composed > 0xFFFF) {
        reading.tooLong = true;
        continue;
      }
      reading.letters[reading.length - 1] = static_cast<char16_t>(composed);
      reading.hash = {};
      for (qsizetype i = 0; i < reading.length; ++i) reading.hash.add(reading.letters[i]);
      continue;
    }
    reading.add(lower(c));
  }
  return reading.position > start;
}

void DateTokens::makeWord(DateToken& token) {
  token.capital = text_[position_].isUpper();
  if (position_ + 1 < text_.size() && text_[position_ + 1] == u'.' && makeDottedMeridiem(token)) return;
  Reading reading;
  reading.position = position_;
  readWord(reading);
  token.kind = DateToken::Kind::other;
  position_ = reading.position;
  if (reading.tooLong) return;
  // An elided article or preposition keeps its apostrophe, so that "d'avril" is two words.
  if (reading.length == 1 && position_ + 1 < text_.size() && isApostrophe(text_[position_].unicode()) &&
      (reading.letters[0] == u'd' || reading.letters[0] == u'l') &&
      isLetter(text_[position_ + 1].unicode())) {
    reading.add(u'\'');
    ++reading.position;
    ++position_;
  }
  const VocabularyEntry* entry = vocabulary_.find(reading.hash.value(), reading.letters, reading.length);
  while (entry) {
    if (entry->languages != 0) {
      token.kind = DateToken::Kind::word;
      token.entry = entry;
      position_ = reading.position;
    }
    if (!entry->beginsPhrase || reading.position >= text_.size()) break;
    const char16_t c = text_[reading.position].unicode();
    if (!isBlank(c) && !isApostrophe(c) && c != u'-' && c != u'\n' && c != 0x2010 && c != 0x2011) break;
    ++reading.position;
    reading.add(u' ');
    const qsizetype wordStart = reading.position;
    if (!readWord(reading) || reading.tooLong) break;
    reread_ += static_cast<std::uint64_t>(reading.position - wordStart);
    entry = vocabulary_.find(reading.hash.value(), reading.letters, reading.length);
  }
}

// "a.m.", "p. m.", with or without the last full stop; the first one is known to be there.
bool DateTokens::makeDottedMeridiem(DateToken& token) {
  const auto charAt = [&](qsizetype i) { return i < text_.size() ? text_[i].unicode() : u'\0'; };
  const char16_t first = lower(charAt(position_));
  if (first != u'a' && first != u'p') return false;
  qsizetype i = position_ + 2;
  if (isBlank(charAt(i))) ++i;
  if (lower(charAt(i)) != u'm' || isLetter(charAt(i + 1)) || isDigit(charAt(i + 1))) return false;
  ++i;
  if (charAt(i) == u'.') ++i;
  WordHash hash;
  const char16_t letters[2] = {first, u'm'};
  hash.add(letters[0]);
  hash.add(letters[1]);
  token.kind = DateToken::Kind::word;
  token.entry = vocabulary_.find(hash.value(), letters, 2);
  position_ = i;
  return true;
}

}  // namespace lumeno::detect
