// Judges the language detector on texts that took no part in its making: the message catalogues of the
// system's basic tools, which exist in every language and pair each text with its English original.

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QSet>
#include <QStringList>
#include <cstdio>

#include "message_catalogue.h"
#include "suggest/detect/detect.h"
#include "suggest/detect/step_counter.h"

namespace lumeno::detect {
namespace {

using namespace Qt::StringLiterals;

constexpr double acceptedProbability = 0.6;

bool isForeign(const QString& text) {
  const auto language = dominantLanguage(text);
  return language && language->probability >= acceptedProbability && language->code != u"en"_s;
}

QStringList wordsOf(const QString& text) {
  return text.split(u' ', Qt::SkipEmptyParts);
}

/// The lines that read like prose: mostly letters, no options, placeholders or markup.
QStringList sentencesOf(const QString& message) {
  QStringList sentences;
  for (const QString& line : message.split(u'\n')) {
    const QString sentence = line.trimmed();
    qsizetype letters = 0;
    bool markup = sentence.contains(u"--"_s) || sentence.contains(u"  "_s);
    for (const QChar c : sentence) {
      if (c.isLetter() || c.isMark() || c == u' ') ++letters;
      if (u"%<\t_"_s.contains(c)) markup = true;
    }
    if (!markup && sentence.size() >= 12 && letters * 100 >= sentence.size() * 92) sentences << sentence;
  }
  return sentences;
}

/// Three to six words from somewhere in the sentence; of scripts without blanks five to eight characters.
QString fragmentOf(const QString& sentence, qsizetype number, bool hasBlanks) {
  if (!hasBlanks) {
    const qsizetype length = qMin<qsizetype>(5 + number % 4, sentence.size());
    return sentence.mid(number * 7 % (sentence.size() - length + 1), length);
  }
  const QStringList words = wordsOf(sentence);
  const qsizetype length = 3 + number % 4;
  if (words.size() <= length) return sentence;
  return QStringList(words.mid(number * 7 % (words.size() - length + 1), length)).join(u' ');
}

struct Rates {
  qsizetype sentences = 0, foreignSentences = 0, right = 0, fragments = 0, foreignFragments = 0;

  void add(const QString& sentence, const QString& code, bool hasBlanks) {
    ++fragments;
    if (isForeign(fragmentOf(sentence, fragments, hasBlanks))) ++foreignFragments;
    if (hasBlanks && wordsOf(sentence).size() < 6) return;
    ++sentences;
    if (isForeign(sentence)) ++foreignSentences;
    const auto language = dominantLanguage(sentence);
    if (language && language->code == code) ++right;
  }
  static double percent(qsizetype part, qsizetype whole) {
    return whole == 0 ? 0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole);
  }
  [[nodiscard]] double sentencePercent() const { return percent(foreignSentences, sentences); }
  [[nodiscard]] double fragmentPercent() const { return percent(foreignFragments, fragments); }
  void print(const QString& name) const {
    std::printf(
        "  %-6s not English: %6.2f %% of %4lld sentences, %6.2f %% of %4lld fragments; named rightly %6.2f "
        "%%\n",
        qPrintable(name), sentencePercent(), static_cast<long long>(sentences), fragmentPercent(),
        static_cast<long long>(fragments), percent(right, sentences));
  }
};

TEST(Language, TellsForeignTextFromEnglish) {
  const QStringList languages =
      u"de fr es it nl pt_BR pl sv da fi cs hu ro tr ru uk el ja ko zh_CN"_s.split(u' ');
  const QStringList domains =
      u"coreutils bash tar findutils grep sed diffutils dpkg apt shadow Linux-PAM util-linux"_s.split(u' ');
  const QString folder = qEnvironmentVariable("LUMENO_TEST_LOCALES", u"/usr/share/locale"_s);
  constexpr qsizetype wanted = 200;
  constexpr qsizetype enough = 1000;

  QSet<QString> english;
  Rates all;
  for (const QString& language : languages) {
    const bool hasBlanks = language != u"ja"_s && language != u"zh_CN"_s;
    QStringList sentences;
    QSet<QString> seen;
    for (const QString& domain : domains) {
      const QString path = folder + u'/' + language + u"/LC_MESSAGES/"_s + domain + u".mo"_s;
      for (const auto& [original, translation] : readMessageCatalogue(path)) {
        if (original.isEmpty() || original == translation) continue;
        const QString text = original.section(u'\x04', -1);
        for (const QString& sentence : sentencesOf(text)) english.insert(sentence);
        for (const QString& sentence : sentencesOf(translation)) {
          const bool long_ = hasBlanks ? wordsOf(sentence).size() >= 3 : sentence.size() >= 8;
          if (long_ && !seen.contains(sentence)) sentences << sentence;
          seen.insert(sentence);
        }
      }
    }
    ASSERT_TRUE(sentences.size() >= wanted || !qEnvironmentVariableIsSet("LUMENO_TEST_LOCALES"))
        << "LUMENO_TEST_LOCALES is incomplete: " << qPrintable(language);
    if (sentences.size() < wanted) {
      GTEST_SKIP()
          << "Too few message catalogues of " << qPrintable(language) << " under " << qPrintable(folder)
          << " (images often leave them out of packages); tests/support/message_catalogues fetches them, "
             "then set LUMENO_TEST_LOCALES.";
    }
    Rates rates;
    const qsizetype step = qMax<qsizetype>(1, sentences.size() / enough);
    const QString code = language.left(2);
    for (qsizetype i = 0; i < sentences.size(); i += step) rates.add(sentences[i], code, hasBlanks);
    rates.print(language);
    EXPECT_GE(rates.sentencePercent(), 98) << qPrintable(language);
    EXPECT_GE(rates.fragmentPercent(), 88) << qPrintable(language);
    EXPECT_GE(rates.sentences, wanted) << qPrintable(language);
  }
  QStringList originals = english.values();
  originals.sort();
  Rates rates;
  for (const QString& sentence : originals) {
    if (wordsOf(sentence).size() >= 3) rates.add(sentence, u"en"_s, true);
  }
  rates.print(u"en"_s);
  EXPECT_GE(rates.sentences, wanted);
  EXPECT_LE(rates.sentencePercent(), 1);
  EXPECT_LE(rates.fragmentPercent(), 1);
}

// Chat, code and names, which look least like English.
TEST(Language, KeepsUnusualEnglishEnglish) {
  QFile file(QStringLiteral(LUMENO_TEST_DATA "/detect/language_english.txt"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  QMap<QString, QStringList> foreign;
  QMap<QString, qsizetype> total;
  QString group;
  for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
    if (line.startsWith(u'#')) continue;
    if (line.startsWith(u'[')) {
      group = line;
      continue;
    }
    ++total[group];
    if (isForeign(line)) foreign[group] << line;
  }
  ASSERT_EQ(total.size(), 3);
  for (auto it = total.begin(); it != total.end(); ++it) {
    const double percent = Rates::percent(foreign[it.key()].size(), it.value());
    std::printf("  %-8s called foreign: %.1f %% of %lld\n", qPrintable(it.key()), percent,
                static_cast<long long>(it.value()));
    EXPECT_GE(it.value(), 40);
    EXPECT_LE(percent, 5) << qPrintable(foreign[it.key()].join(u'\n'));
  }
}

TEST(Language, IsToldByItsScriptOrItsWords) {
  const std::vector<std::pair<QString, QString>> cases = {
      {u"これは日本語です"_s, u"ja"_s},
      {u"東京タワーへ行く"_s, u"ja"_s},
      {u"我们明天见"_s, u"zh"_s},
      {u"안녕하세요 여러분"_s, u"ko"_s},
      {u"Καλημέρα κόσμε"_s, u"el"_s},
      {u"שלום עולם"_s, u"he"_s},
      {u"สวัสดีชาวโลก"_s, u"th"_s},
      {u"Привет, как дела?"_s, u"ru"_s},
      {u"Доброго дня, як справи?"_s, u"uk"_s},
      {u"مرحبا بالعالم"_s, u"ar"_s},
      {u"नमस्ते दुनिया"_s, u"hi"_s},
      {u"bonjour"_s, u"fr"_s},
      {u"OpenPGPの鍵を作る"_s, u"ja"_s},
      {u"Wo ist der Bahnhof?"_s, u"de"_s},
      {u"git pushを実行してください"_s, u"ja"_s},
      {u"¿Dónde está la biblioteca?"_s, u"es"_s},
      {u"hello world, how are you?"_s, u"en"_s},
  };
  for (const auto& [text, code] : cases) {
    const auto language = dominantLanguage(text);
    ASSERT_TRUE(language) << qPrintable(text);
    EXPECT_EQ(language->code, code) << qPrintable(text);
    EXPECT_GE(language->probability, acceptedProbability) << qPrintable(text);
    EXPECT_LE(language->probability, 1.0) << qPrintable(text);
  }
  for (const QString& text : {u""_s, u"  \n"_s, u"12345 67"_s, u"😀😀"_s, u"https://example.com/a"_s}) {
    EXPECT_FALSE(dominantLanguage(text)) << qPrintable(text);
  }
}

TEST(Language, CostsTheSameWhateverTheSize) {
  for (const QString& unit : {u"Das ist ein Satz. "_s, u"a"_s, u" "_s, u"1"_s, u"😀"_s, u"é́́"_s, u"a.b/c "_s}) {
    const QString text = unit.repeated(200'000);
    const auto before = stepsTaken();
    (void)dominantLanguage(text);
    EXPECT_LE(stepsTaken() - before, 10'000U) << qPrintable(unit);
  }
}

}  // namespace
}  // namespace lumeno::detect
