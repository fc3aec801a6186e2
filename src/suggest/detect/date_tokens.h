#pragma once

#include <QStringView>
#include <array>

#include "suggest/detect/date_vocabulary.h"

namespace lumeno::detect {

/// One piece of the text as the date grammar sees it.
struct DateToken {
  enum class Kind : std::uint8_t {
    end,
    number,   ///< a run of ASCII digits
    word,     ///< a word or phrase of the vocabulary
    other,    ///< any other word
    mark,     ///< a single character of punctuation
    foreign,  ///< a run of anything else
  };
  enum class Gap : std::uint8_t { none, blank, line, paragraph };

  Kind kind = Kind::end;
  Gap gap = Gap::none;     ///< the white space before it
  bool capital = false;    ///< begins with a capital letter
  std::int32_t value = 0;  ///< of a number with up to nine digits, else -1
  qsizetype start = 0;
  qsizetype end = 0;
  char16_t mark = 0;
  const VocabularyEntry* entry = nullptr;

  [[nodiscard]] qsizetype length() const { return end - start; }
};

/// The tokens of a text, made when asked for and kept for a while: any index may be read that lies at most
/// `lookBack` behind the furthest one read so far.
class DateTokens {
 public:
  static constexpr std::size_t lookBack = 255;

  explicit DateTokens(QStringView text);
  ~DateTokens();
  DateTokens(const DateTokens&) = delete;
  DateTokens& operator=(const DateTokens&) = delete;

  [[nodiscard]] const DateToken& at(std::size_t index) {
    ++looks_;
    while (made_ <= index) make();
    return ring_[index % ring_.size()];
  }
  [[nodiscard]] QStringView text() const { return text_; }
  [[nodiscard]] QStringView text(const DateToken& token) const {
    return text_.sliced(token.start, token.end - token.start);
  }

 private:
  struct Reading;

  void make();
  void makeNumber(DateToken& token);
  void makeWord(DateToken& token);
  bool readWord(Reading& reading) const;
  bool makeDottedMeridiem(DateToken& token);

  QStringView text_;
  const Vocabulary& vocabulary_;
  qsizetype position_ = 0;
  std::size_t made_ = 0;
  std::uint64_t reread_ = 0;  ///< characters read again for phrases
  std::uint64_t looks_ = 0;   ///< tokens looked at
  std::array<DateToken, lookBack + 1> ring_;
};

}  // namespace lumeno::detect
