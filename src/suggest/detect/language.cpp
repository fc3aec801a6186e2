// Scripts that belong to one language decide by themselves. Otherwise the compact language detector judges
// the text without whatever is no prose (addresses, numbers, code), and the small words of the text check its
// answer, for it takes short foreign texts for English, and terse English for some rare language, more often
// than one would wish.

// The detector's header needs these two before it and does not include them.
#include <cld2/public/encodings.h>
#include <cstdio>
//
#include <cld2/public/compact_lang_det.h>
#include <unicode/uscript.h>

#include <QByteArray>
#include <QMap>
#include <algorithm>
#include <array>

#include "suggest/detect/detect.h"
#include "suggest/detect/language_words.h"
#include "suggest/detect/step_counter.h"

namespace lumeno::detect {

namespace {

constexpr qsizetype readLimit = 4096;  // units of the text looked at
constexpr qsizetype cleanLimit = 700;  // units of prose judged, about a kilobyte in UTF-8

/// The scripts that are told apart, in order of the counts.
enum Script {
  latin,
  kana,
  hangul,
  han,
  greek,
  hebrew,
  thai,
  cyrillic,
  arabic,
  devanagari,
  otherScript,
  scriptCount
};

Script scriptOf(char32_t c) {
  if (c < 0x250) return latin;
  UErrorCode status = U_ZERO_ERROR;
  switch (uscript_getScript(static_cast<UChar32>(c), &status)) {
    case USCRIPT_LATIN:
      return latin;
    case USCRIPT_HIRAGANA:
    case USCRIPT_KATAKANA:
      return kana;
    case USCRIPT_HANGUL:
      return hangul;
    case USCRIPT_HAN:
      return han;
    case USCRIPT_GREEK:
      return greek;
    case USCRIPT_HEBREW:
      return hebrew;
    case USCRIPT_THAI:
      return thai;
    case USCRIPT_CYRILLIC:
      return cyrillic;
    case USCRIPT_ARABIC:
      return arabic;
    case USCRIPT_DEVANAGARI:
      return devanagari;
    default:
      return otherScript;
  }
}

/// The prose of a text in lower case, its words, and the letters of each script in it.
struct Prose {
  QString text;
  std::array<int, scriptCount> letters{};
  double english = 0;           ///< words that are plainly English
  double shared = 0;            ///< words that English shares with others
  double foreign = 0;           ///< words that are not English
  QMap<QByteArray, int> votes;  ///< languages of those words
  int words = 0;
};

bool isBlank(QChar c) {
  return c.isSpace() || c == u'\0';
}

// Whether a run without blanks is an address, a name from a program, a number or the like.
bool isProse(QStringView token) {
  // Scripts without blanks between words run on through names and numbers.
  constexpr char16_t afterLatin = 0x370;
  const auto isLatin = [](QChar c) { return c.unicode() < afterLatin; };
  if (!std::all_of(token.begin(), token.end(), isLatin)) return true;
  bool lowerBefore = false;
  bool hasLetter = false;
  for (qsizetype i = 0; i < token.size(); ++i) {
    const QChar c = token[i];
    if (c.isDigit() || QStringView(u"@/\\_=<>{}[]$#&|+*^~`").contains(c)) return false;
    const bool inside = i > 0 && i + 1 < token.size();
    if (c == u':' && inside) return false;
    if (c == u'.' && inside && token[i - 1].isLetter() && token[i + 1].isLetter()) return false;
    if (c == u'(' && i > 0) return false;
    if (lowerBefore && c.isUpper()) return false;  // camelCase
    lowerBefore = c.isLower();
    hasLetter = hasLetter || c.isLetter();
  }
  return hasLetter && !token.startsWith(u'-');
}

QStringView withoutPunctuation(QStringView token) {
  const auto belongs = [](QChar c) { return c.isLetter() || c.isMark() || c.isSurrogate(); };
  while (!token.isEmpty() && !belongs(token.front())) token = token.sliced(1);
  while (!token.isEmpty() && !belongs(token.back())) token.chop(1);
  return token;
}

void weigh(Prose& prose, const QString& word, bool isName) {
  ++prose.words;
  const WordEvidence evidence = wordEvidence(word);
  if (evidence.english) ++(evidence.shared ? prose.shared : prose.english);
  if (evidence.foreign && !isName) {
    prose.foreign += 1;
    ++prose.votes[evidence.foreign];
  } else if (!isName) {
    for (const QChar c : word) {
      if (c.unicode() >= 0x80 && c.unicode() < 0x250 && c.isLetter()) {
        prose.foreign += 0.7;
        break;
      }
    }
  }
}

void countScripts(Prose& prose, QStringView word) {
  const int latinBefore = prose.letters[latin];
  int others = 0;
  for (qsizetype i = 0; i < word.size(); ++i) {
    char32_t c = word[i].unicode();
    if (word[i].isHighSurrogate() && i + 1 < word.size()) {
      c = QChar::surrogateToUcs4(word[i], word[i + 1]);
      ++i;
    }
    if (!QChar::isLetter(c)) continue;
    const Script script = scriptOf(c);
    ++prose.letters[script];
    if (script != latin) ++others;
  }
  // "OpenPGPの": a name inside a word of another script.
  if (others > 0) prose.letters[latin] = latinBefore;
}

Prose proseOf(QStringView text) {
  Prose prose;
  const qsizetype end = qMin(text.size(), readLimit);
  qsizetype i = 0;
  bool sentenceStart = true;
  while (i < end && prose.text.size() < cleanLimit) {
    while (i < end && isBlank(text[i])) ++i;
    const qsizetype start = i;
    while (i < end && !isBlank(text[i]) && i - start < cleanLimit) ++i;
    if (i > start && i < text.size() && text[i - 1].isHighSurrogate()) --i;
    if (i == start) {
      if (i >= end) break;
      ++i;
      continue;
    }
    const QStringView token = text.sliced(start, i - start);
    const bool startsSentence = sentenceStart;
    sentenceStart =
        token.back() == u'.' || token.back() == u'!' || token.back() == u'?' || token.back() == u':';
    if (!isProse(token)) continue;
    const QStringView word = withoutPunctuation(token);
    if (word.isEmpty()) continue;
    const bool isName = !startsSentence && word.front().isUpper();
    const QString lower = word.toString().toLower();
    countScripts(prose, word);
    weigh(prose, QString(lower).replace(QChar(0x2019), u'\''), isName);
    prose.text += lower;
    prose.text += u' ';
  }
  countSteps(static_cast<std::uint64_t>(i));
  return prose;
}

std::optional<Language> byScript(const Prose& prose) {
  // A character of the East Asian scripts says about as much as half a word.
  constexpr int eastAsianWeight = 3;
  std::array<int, scriptCount> weights = prose.letters;
  for (const Script script : {kana, hangul, han}) weights[script] *= eastAsianWeight;
  const int eastAsian = weights[kana] + weights[hangul] + weights[han];
  int total = 0;
  for (const int weight : weights) total += weight;
  if (total == 0) return std::nullopt;
  const auto share = [&](int weight) { return static_cast<double>(weight) / total; };
  const auto answer = [](const char* code, double share) {
    return Language{QString::fromLatin1(code), 0.6 + 0.4 * share};
  };
  constexpr double dominant = 0.5;
  if (share(eastAsian) >= dominant) {
    if (weights[hangul] * 2 >= eastAsian) return answer("ko", share(eastAsian));
    // Japanese writes its endings in kana; a stray one in Chinese does not make it Japanese.
    return answer(weights[kana] * 12 >= eastAsian ? "ja" : "zh", share(eastAsian));
  }
  if (share(weights[greek]) >= dominant) return answer("el", share(weights[greek]));
  if (share(weights[hebrew]) >= dominant) return answer("he", share(weights[hebrew]));
  if (share(weights[thai]) >= dominant) return answer("th", share(weights[thai]));
  return std::nullopt;
}

/// What the compact language detector says.
struct Verdict {
  QByteArray code;  ///< empty when it cannot tell
  QByteArray second;
  double probability = 0;
  bool reliable = false;
};

QByteArray codeOf(CLD2::Language language) {
  const QByteArray code = CLD2::LanguageCode(language);
  if (code == "un" || code.startsWith("xx")) return {};
  if (code == "iw") return "he";
  if (code == "no") return "nb";
  return code.left(code.indexOf('-') < 0 ? code.size() : code.indexOf('-'));
}

Verdict verdictOn(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  constexpr int bestEffort = CLD2::kCLDFlagBestEffort;
  const CLD2::CLDHints hints{nullptr, nullptr, CLD2::UNKNOWN_ENCODING, CLD2::UNKNOWN_LANGUAGE};
  CLD2::Language languages[3];
  int percents[3];
  double scores[3];
  int textBytes = 0;
  bool reliable = false;
  const CLD2::Language language =
      CLD2::ExtDetectLanguageSummary(bytes.constData(), static_cast<int>(bytes.size()), true, &hints,
                                     bestEffort, languages, percents, scores, nullptr, &textBytes, &reliable);
  if (language == CLD2::UNKNOWN_LANGUAGE) return {};
  return {codeOf(language), codeOf(languages[1]), percents[0] / 100.0, reliable};
}

/// Languages common enough to be believed of a short text without further signs.
bool isWidespread(const QByteArray& code) {
  static const QList<QByteArray> widespread = {
      "de", "fr", "es", "it", "pt", "nl", "sv", "da", "nb", "nn", "fi", "pl", "cs", "sk", "hu", "ro", "tr",
      "hr", "sr", "bs", "sl", "ca", "gl", "eu", "id", "ms", "vi", "et", "lt", "lv", "is", "sq", "af"};
  return widespread.contains(code);
}

Language latinLanguage(const Prose& prose) {
  const Verdict verdict = verdictOn(prose.text);
  const auto answer = [](const QByteArray& code, double probability) {
    return Language{QString::fromLatin1(code), probability};
  };
  QByteArray voted;
  for (auto vote = prose.votes.begin(); vote != prose.votes.end(); ++vote) {
    if (voted.isEmpty() || vote.value() > prose.votes.value(voted)) voted = vote.key();
  }
  constexpr double sharedWeight = 0.4;
  const double margin = prose.foreign - prose.english - sharedWeight * prose.shared;
  constexpr double clear = 0.3;
  if (verdict.code.isEmpty() || verdict.code == "en") {
    if (margin > clear) {
      const QByteArray code = !voted.isEmpty() ? voted : !verdict.second.isEmpty() ? verdict.second : "fr";
      return answer(code, qMin(0.95, 0.65 + 0.1 * margin));
    }
    return answer("en", verdict.code.isEmpty() ? 0.5 : qMax(0.5, verdict.probability));
  }
  if (prose.english > prose.foreign) return answer("en", 0.6);
  if (margin <= clear && !isWidespread(verdict.code)) return answer(verdict.code, 0.5);
  return answer(verdict.code, qMax(0.6, verdict.probability));
}

}  // namespace

std::optional<Language> dominantLanguage(QStringView text) {
  const Prose prose = proseOf(text);
  if (auto language = byScript(prose)) return language;
  int letters = 0;
  for (const int count : prose.letters) letters += count;
  if (letters == 0) return std::nullopt;
  if (prose.letters[latin] * 2 >= letters) return latinLanguage(prose);
  const Verdict verdict = verdictOn(prose.text);
  if (!verdict.code.isEmpty() && verdict.code != "en") {
    return Language{QString::fromLatin1(verdict.code), qMax(0.7, verdict.probability)};
  }
  // The most widely read language of the script.
  if (prose.letters[cyrillic] * 2 >= letters) return Language{QStringLiteral("ru"), 0.65};
  if (prose.letters[arabic] * 2 >= letters) return Language{QStringLiteral("ar"), 0.65};
  if (prose.letters[devanagari] * 2 >= letters) return Language{QStringLiteral("hi"), 0.65};
  return std::nullopt;
}

}  // namespace lumeno::detect
