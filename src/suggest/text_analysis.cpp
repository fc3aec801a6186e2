#include "suggest/text_analysis.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <span>

#include "base/text.h"
#include "suggest/cue_scans.h"
#include "suggest/lowercase.h"
#include "suggest/word_lists.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr double languageThreshold = 0.6;
constexpr qsizetype shortestTextWithLanguage = 4;
constexpr qsizetype longestFilename = 139;

// In the order of TextAnalysis::ExactStrings.
const scan::NeedleFinder& exactStringFinder() {
  static constexpr auto questionMark = std::to_array<QStringView>({u"?"});
  static constexpr auto paragraphBreak = std::to_array<QStringView>({u"\n\n"});
  static constexpr auto filenameSigns = std::to_array<QStringView>({u".", u"/", u"_"});
  static constexpr auto blank = std::to_array<QStringView>({u" "});
  static const scan::NeedleFinder finder({word_lists::proseCodeMarkers, word_lists::codeMarkers, questionMark,
                                          paragraphBreak, filenameSigns, blank});
  return finder;
}

// Reply phrases, then the lists in the order of TextAnalysis::ContextWords.
const scan::NeedleFinder& lowercaseStringFinder() {
  static const scan::NeedleFinder finder(
      {word_lists::replyPhrases, word_lists::errorKeywords, word_lists::messagingAppWords});
  return finder;
}

template <typename T, typename Measure>
const T& once(std::optional<T>& slot, Measure measure) {
  if (!slot) slot = measure();
  return *slot;
}

bool containsAny(const QString& text, std::span<const QStringView> words) {
  return std::ranges::any_of(words, [&](QStringView word) { return text.contains(word); });
}

bool hasLetter(QStringView view) {
  const scan::Units text(view);
  for (qsizetype i = 0; i < text.size();) {
    const char32_t c = scan::codePointAt(text, i);
    if (u_isalpha(static_cast<UChar32>(c))) return true;
    i += U16_LENGTH(c);
  }
  return false;
}

}  // namespace

TextAnalysis::TextAnalysis(const SelectedContext& context, const detect::Surroundings& surroundings)
    : context_(context), surroundings_(surroundings), trimmedText_(text::trimmed(context.selectedText)) {}

const QString& TextAnalysis::lowercasedText() {
  return once(lowercasedText_, [&] { return lowercased(trimmedText_); });
}

const QString& TextAnalysis::lowercasedApp() {
  return once(lowercasedApp_, [&] { return context_.sourceApp.toLower(); });
}

const QString& TextAnalysis::lowercasedWindowTitle() {
  return once(lowercasedWindowTitle_, [&] { return context_.windowTitle.toLower(); });
}

qsizetype TextAnalysis::wordCount() {
  return once(wordCount_, [&] { return text::wordCount(trimmedText_); });
}

int TextAnalysis::count(ExactStrings strings) {
  const auto& progress = once(exactStrings_, [&] {
    scan::NeedleFinder::Progress found;
    exactStringFinder().feed(scan::Units(trimmedText_), found);
    return found;
  });
  return exactStringFinder().count(progress, static_cast<size_t>(strings));
}

// Text, application and title are fed one after the other, so that the long text is neither joined nor read
// again.
const TextAnalysis::LowercaseStrings& TextAnalysis::lowercaseStrings() {
  return once(lowercaseStrings_, [&] {
    const auto& finder = lowercaseStringFinder();
    LowercaseStrings found;
    finder.feed(scan::Units(lowercasedText()), found.inText);
    found.inContext = found.inText;
    for (const QString* part : {&lowercasedApp(), &lowercasedWindowTitle()}) {
      finder.feed(scan::Units(u" "), found.inContext);
      finder.feed(scan::Units(*part), found.inContext);
    }
    return found;
  });
}

int TextAnalysis::replyPhraseCount() {
  return lowercaseStringFinder().count(lowercaseStrings().inText, 0);
}

int TextAnalysis::count(ContextWords words) {
  return lowercaseStringFinder().count(lowercaseStrings().inContext, 1 + static_cast<size_t>(words));
}

int TextAnalysis::cueCount(CueFamily family) {
  return lumeno::cueCount(once(cues_, [&] { return findCues(lowercasedText()); }), family);
}

bool TextAnalysis::isCodeApp() {
  return once(isCodeApp_, [&] { return containsAny(lowercasedApp(), word_lists::codeAppNames); });
}

bool TextAnalysis::isCommunicationApp() {
  return once(isCommunicationApp_,
              [&] { return containsAny(lowercasedApp(), word_lists::communicationAppNames); });
}

bool TextAnalysis::looksLikeProse() {
  return once(looksLikeProse_, [&] {
    return count(ExactStrings::blank) > 0 && count(ExactStrings::proseCodeMarkers) == 0 &&
           hasLetter(trimmedText_);
  });
}

bool TextAnalysis::looksLikeFilename() {
  return once(looksLikeFilename_, [&] {
    return count(ExactStrings::filenameSigns) > 0 &&
           !text::hasMoreCharactersThan(trimmedText_, longestFilename) &&
           scan::hasFilename(scan::Units(trimmedText_));
  });
}

const std::optional<QString>& TextAnalysis::dominantLanguage() {
  return once(dominantLanguage_, [&]() -> std::optional<QString> {
    if (!text::hasMoreCharactersThan(trimmedText_, shortestTextWithLanguage - 1)) return std::nullopt;
    const auto language = detect::dominantLanguage(trimmedText_);
    if (!language || !(language->probability >= languageThreshold)) return std::nullopt;
    return language->code;
  });
}

bool TextAnalysis::hasDate() {
  return once(hasDate_, [&] { return detect::firstDate(trimmedText_, surroundings_).has_value(); });
}

bool TextAnalysis::hasAddress() {
  return once(hasAddress_, [&] { return detect::hasAddress(trimmedText_); });
}

const std::vector<detect::DirectMatch>& TextAnalysis::linksAndFirstPhone() {
  return once(linksAndFirstPhone_, [&] { return detect::linksAndFirstPhone(trimmedText_, surroundings_); });
}

}  // namespace lumeno
