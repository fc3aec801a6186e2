// Handing a whole text to the phone library's own matcher is quadratic. Here one pass finds the stretches of
// digits and phone punctuation; only spans of whole groups with 7 to 17 digits that are not shaped like a
// date, address, amount or card number reach the library, and at most a fixed number of them per text.

#include <phonenumbers/phonenumberutil.h>

#include <QLocale>
#include <algorithm>
#include <string>

#include "suggest/detect/detect.h"
#include "suggest/detect/phone_context.h"
#include "suggest/detect/phone_groups.h"
#include "suggest/detect/phones.h"
#include "suggest/detect/step_counter.h"
#include "suggest/detect/token_scan.h"

namespace lumeno::detect {

namespace {

using i18n::phonenumbers::PhoneNumber;
using i18n::phonenumbers::PhoneNumberUtil;
using namespace Qt::StringLiterals;
using namespace scan;

constexpr qsizetype fewestDigits = 7;
constexpr qsizetype mostDigits = 17;
constexpr qsizetype mostGroups = 9;
/// Parsing one candidate costs some twenty microseconds; the first hundreds tell what a selection is.
constexpr int mostParses = 250;

enum class Verdict { no, possible, valid };

/// The phone library for one region. It is loaded (six milliseconds, four megabytes) with the first
/// candidate.
class NumberJudge {
 public:
  explicit NumberJudge(const QLocale& locale)
      : region_(locale.territory() == QLocale::AnyTerritory
                    ? "US"
                    : QLocale::territoryToCode(locale.territory()).toStdString()) {}

  [[nodiscard]] bool exhausted() const { return parses_ >= mostParses; }

  Verdict judge(QStringView number) {
    ++parses_;
    countSteps(1000);
    const PhoneNumberUtil& library = *PhoneNumberUtil::GetInstance();
    PhoneNumber parsed;
    if (library.Parse(compact(number), region_, &parsed) != PhoneNumberUtil::NO_PARSING_ERROR)
      return Verdict::no;
    if (library.IsValidNumber(parsed)) return Verdict::valid;
    switch (library.IsPossibleNumberWithReason(parsed)) {
      case PhoneNumberUtil::IS_POSSIBLE:
        return Verdict::possible;
      case PhoneNumberUtil::IS_POSSIBLE_LOCAL_ONLY:
        local_ = true;
        return Verdict::no;
      default:
        return Verdict::no;
    }
  }

  /// Whether the last number that was turned down can be dialled within its own area.
  bool takeLocal() { return std::exchange(local_, false); }

  /// What national numbers of the region are dialled with: "0", "1", "" ...
  const std::string& nationalPrefix() {
    if (!prefixKnown_) PhoneNumberUtil::GetInstance()->GetNddPrefixForRegion(region_, true, &prefix_);
    prefixKnown_ = true;
    return prefix_;
  }

 private:
  /// Plus sign and digits alone: the library takes half the time for them.
  static std::string compact(QStringView number) {
    std::string digits;
    for (const QChar c : number) {
      if (isPhoneDigit(c.unicode())) digits += char('0' + phoneDigitValue(c.unicode()));
      if (isPhonePlus(c.unicode())) digits += '+';
    }
    return digits;
  }

  std::string region_;
  std::string prefix_;
  bool prefixKnown_ = false;
  bool local_ = false;
  int parses_ = 0;
};

class PhoneScanner {
 public:
  PhoneScanner(QStringView text, const QLocale& locale) : text_(text), judge_(locale) {}

  /// Stops early once `isEnough` says so of a match; it may be empty.
  std::vector<PhoneMatch> run(std::function<bool(const PhoneMatch&)> isEnough) {
    isEnough_ = std::move(isEnough);
    DigitStretch stretch;
    qsizetype i = 0;
    while (i < text_.size() && !judge_.exhausted() && !isDone_) {
      const char16_t c = text_[i].unicode();
      if (!isPhoneDigit(c) && c != u'(' && !isPhonePlus(c) && c != 0xFF08) {
        ++i;
        continue;
      }
      readDigitStretch(text_, i, stretch);
      if (!stretch.groups.empty()) readNumbers(stretch.groups);
      // The digits of an extension begin no number of their own.
      const qsizetype lastEnd = matches_.empty() ? 0 : matches_.back().start + matches_.back().length;
      i = std::max(stretch.end, lastEnd);
    }
    countSteps(static_cast<std::uint64_t>(i));
    return std::move(matches_);
  }

 private:
  void readNumbers(const std::vector<DigitGroup>& groups) {
    const DigitGroup* group = groups.data();
    const DigitGroup* const end = group + groups.size();
    while (group < end && !judge_.exhausted() && !isDone_) {
      countSteps(1);
      const size_t known = matches_.size();
      const DigitGroup* next = group->opensWord ? afterNumber(group, end) : group + 1;
      group = next;
      isDone_ = isEnough_ && matches_.size() > known && isEnough_(matches_.back());
    }
  }

  /// Looks for a number that begins with `first`; returns the group to go on with.
  const DigitGroup* afterNumber(const DigitGroup* first, const DigitGroup* end) {
    const DigitGroup* last = first;
    qsizetype digits = first->size();
    while (last + 1 < end && last - first + 1 < mostGroups && !(last + 1)->afterPlus &&
           digits + (last + 1)->size() <= mostDigits) {
      ++last;
      digits += last->size();
    }
    const GroupSpan widest{first, last};
    if (digits < fewestDigits || digits > mostDigits) return endOfWord(first, end);
    const qsizetype start = startOf(*first);
    if (isOtherNumberShape(text_, widest) || isGluedBefore(text_, start) ||
        continuesBankAccount(text_, start)) {
      return endOfWord(first, end);
    }
    const NumberCue cue = first->afterPlus ? NumberCue::phone : cueBefore(text_, start);
    if (cue == NumberCue::other) return last + 1;
    // The longest row of groups that is valid; else the longest that is possible where that is enough.
    const DigitGroup* possible = nullptr;
    for (qsizetype count = widest.count(); digits >= fewestDigits; --count) {
      const DigitGroup* const candidate = first + count - 1;
      if (!judge_.exhausted() && mayEnd(candidate, end) && !isOtherNumberShape(text_, {first, candidate})) {
        const Verdict verdict = judge({first, candidate}, digits, cue);
        if (verdict == Verdict::valid) return accept(first, candidate);
        if (verdict == Verdict::possible && possible == nullptr) possible = candidate;
      }
      digits -= candidate->size();
    }
    if (possible != nullptr) return accept(first, possible);
    return endOfWord(first, end);
  }

  /// Behind the blank-separated word that begins with `first`: its inner groups start no number.
  static const DigitGroup* endOfWord(const DigitGroup* first, const DigitGroup* end) {
    const DigitGroup* group = first + 1;
    while (group < end && !group->opensWord) ++group;
    return group;
  }

  [[nodiscard]] bool mayEnd(const DigitGroup* group, const DigitGroup* end) const {
    if (group + 1 < end && !(group + 1)->opensWord) return false;
    if (extensionEnd(text_, group->end) > group->end) return true;
    const qsizetype at = group->end;
    return group->bracketed ? false : !isGluedAfter(text_, at);
  }

  [[nodiscard]] qsizetype startOf(const DigitGroup& group) const {
    qsizetype start = group.start;
    if (group.afterPlus) --start;
    // "(030) 901820", "(0 30) 901820"
    const char16_t before = unitAt(text_, start - 1);
    if (before == u'(' || before == 0xFF08) {
      const QStringView inside = text_.sliced(start).first(std::min<qsizetype>(text_.size() - start, 8));
      if (inside.contains(u')') || inside.contains(QChar(0xFF09))) --start;
    }
    return start;
  }

  Verdict judge(GroupSpan span, qsizetype digits, NumberCue cue) {
    const qsizetype start = startOf(*span.first);
    const QStringView number = text_.sliced(start, span.last->end - start);
    const bool international = span.first->afterPlus;
    if (cue != NumberCue::phone && !isWrittenLikeNationalNumber(span, number)) return Verdict::no;
    const Verdict verdict = judge_.judge(number);
    if (verdict == Verdict::valid) return verdict;
    const bool local = judge_.takeLocal();
    if (verdict == Verdict::possible) {
      const bool areaCode = span.first->bracketed && span.first->size() <= 5 && digits >= 9;
      return international || areaCode ? Verdict::possible : Verdict::no;
    }
    return local && cue == NumberCue::phone && span.count() == 2 ? Verdict::possible : Verdict::no;
  }

  /// Without a word that says so, a number counts as one of the region only with the national prefix where
  /// there is one ("0…"), and a bare row of digits only where numbers are written in ten digits or when it is
  /// all there is.
  bool isWrittenLikeNationalNumber(GroupSpan span, QStringView number) {
    const std::string& prefix = judge_.nationalPrefix();
    const bool zero = unitAt(text_, span.first->start) == u'0' || unitAt(text_, span.first->start) == 0xFF10;
    if (prefix == "0" && !zero) return false;
    if (prefix == "1" && !isGroupedAsInNorthAmerica(text_, span)) return false;
    if (prefix.empty() && !zero && span.count() > 1 && !isGroupedLikeNumber(span)) return false;
    if (span.count() > 1) return !mixesSeparators(span) && !containsDate(span);
    if (isInNumberList(text_, span.first->start) || isDateInDigits(text_, *span.first) ||
        isStockNumber(number)) {
      return false;
    }
    if (number.size() == text_.size()) return true;
    return prefix == "0" ? number.size() >= 9 : prefix == "1" && number.size() == 10;
  }

  /// Where numbers have neither prefix nor area code, two numbers side by side look like one: "5764 6606" may
  /// be two entries of a table. Three groups, or a code of three digits and the rest (347 1234567), are
  /// telling enough.
  static bool isGroupedLikeNumber(GroupSpan span) {
    if (span.first->size() == 1) return false;
    return span.count() >= 3 || (span.first->size() == 3 && span.last->size() >= 6);
  }

  /// "252.227-7013" is a clause of a contract.
  static bool mixesSeparators(GroupSpan span) {
    const auto has = [&](char16_t separator) {
      return std::any_of(span.first + 1, span.last + 1,
                         [=](const DigitGroup& g) { return g.separator == separator; });
    };
    return has(u'.') && has(u'-');
  }

  /// "12-20220428-1" is a version.
  bool containsDate(GroupSpan span) const {
    return std::any_of(span.first, span.last + 1,
                       [this](const DigitGroup& g) { return isDateInDigits(text_, g); });
  }

  const DigitGroup* accept(const DigitGroup* first, const DigitGroup* last) {
    qsizetype start = startOf(*first);
    const qsizetype numberEnd = last->end;
    QString number = text_.sliced(start, numberEnd - start).toString();
    if (start >= 4 && text_.sliced(start - 4, 4) == "tel:"_L1 &&
        !isWordCharacter(codePointBefore(text_, start - 4)))
      start -= 4;
    const qsizetype end = extensionEnd(text_, numberEnd);
    if (isCharacterBoundary(text_, start) && isCharacterBoundary(text_, end)) {
      matches_.push_back({start, end - start, std::move(number)});
    }
    return last + 1;
  }

  QStringView text_;
  NumberJudge judge_;
  std::vector<PhoneMatch> matches_;
  std::function<bool(const PhoneMatch&)> isEnough_;
  bool isDone_ = false;
};

}  // namespace

std::vector<PhoneMatch> phonesUntil(QStringView text, const Surroundings& surroundings,
                                    const std::function<bool(const PhoneMatch&)>& isEnough) {
  return PhoneScanner(text, surroundings.locale).run(isEnough);
}

std::vector<PhoneMatch> phones(QStringView text, const Surroundings& surroundings) {
  return phonesUntil(text, surroundings, {});
}

}  // namespace lumeno::detect
