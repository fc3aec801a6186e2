#include "files/planning/block_rules.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <random>

#include "unit/suggest/reference_regex.h"

namespace lumeno {
namespace {

using namespace Qt::StringLiterals;
using testing::ReferenceRegex;

/// Separators, blanks of all kinds, marks and joiners, characters that fold to ASCII letters, halves of
/// surrogate pairs.
const QStringList oddPieces = {
    u" "_s,      u"  "_s,
    u"\t"_s,     u"\n"_s,
    u"\u00A0"_s, u"\u2028"_s,
    u"|"_s,      u" | "_s,
    u";"_s,      u"&"_s,
    u"-"_s,      u"_"_s,
    u"."_s,      u"/"_s,
    u"x"_s,      u"7"_s,
    u"\u017F"_s, u"\u212A"_s,
    u"\uFB06"_s, u"\u0301"_s,
    u"\u200D"_s, u"é"_s,
    u"字"_s,     u"\U0001F600"_s,
    u"\u0000"_s, QString(QChar(0xD83D)),
};

/// What texts for each rule are made of besides, rule by rule.
const std::vector<QStringList> ownPieces = {
    {u"sudo"_s, u"SUDO"_s, u"\u017Fudo"_s, u"do"_s},
    {u"rm"_s, u"rm "_s, u"RM"_s, u" -r"_s, u" -xRf"_s, u"r"_s, u" /"_s, u" ~"_s, u" $home"_s, u" * "_s},
    {u"rm"_s, u"rm "_s, u"RM"_s, u" -fr"_s, u" -fxR"_s, u"f"_s, u"r"_s, u" /"_s, u" ~"_s, u" $home"_s,
     u" * "_s},
    {u"mkfs"_s, u"m\u212Afs"_s, u"MKF\u017F"_s},
    {u"diskutil"_s, u"Di\u017F\u212Autil"_s},
    {u"dd"_s, u"dd "_s, u"DD if=x"_s, u" of="_s, u"OF="_s, u"of"_s},
    {u">"_s, u"> "_s, u"/dev/"_s, u"/DEV/"_s, u"/de"_s},
    {u"chmod"_s, u"chmod "_s, u"Chmod"_s, u" -R"_s, u" -r "_s, u" /"_s, u" / "_s},
    {u"chown"_s, u"chown "_s, u"Chown"_s, u" -R"_s, u" -r "_s, u" /"_s, u" / "_s},
    {u":"_s, u":("_s, u" ("_s, u")"_s, u"){"_s, u" {"_s, u":(){"_s},
    {u"curl"_s, u"curl "_s, u"CURL x"_s, u"|"_s, u" | "_s, u"sh"_s, u"bash"_s, u"ba\u017Fh"_s, u"sudo "_s,
     u"sudo"_s},
    {u"wget"_s, u"wget "_s, u"WGET x"_s, u"|"_s, u" | "_s, u"sh"_s, u"bash"_s, u"ba\u017Fh"_s, u"sudo "_s,
     u"sudo"_s},
    {u"killall"_s, u"KillALL"_s, u"\u212Aillall"_s},
    {u"shutdown"_s, u"\u017Fhutdown"_s, u"REBOOT"_s, u"halt"_s},
};

TEST(BlockRules, LinearFormsAnswerAsTheirPatternsDo) {
  std::mt19937 random(1);
  const auto pick = [&random](qsizetype limit) { return qsizetype(random() % unsigned(limit)); };
  for (size_t i = 0; i < blockRules().size(); ++i) {
    const BlockRule& rule = blockRules()[i];
    ReferenceRegex reference(rule.pattern, UREGEX_CASE_INSENSITIVE);
    ASSERT_TRUE(reference.isValid()) << i;
    const QStringList& own = ownPieces.at(i);
    constexpr int texts = 20'000;
    int hits = 0;
    for (int k = 0; k < texts; ++k) {
      QString text;
      for (auto count = 1 + pick(9); count > 0; --count) {
        const QStringList& source = pick(3) == 0 ? oddPieces : own;
        text += source[pick(source.size())];
        if (pick(4) == 0) text += u' ';
      }
      const bool expected = reference.matches(text);
      hits += expected ? 1 : 0;
      ASSERT_EQ(ruleMatches(i, text), expected)
          << i << ": " << text.toUtf8().toPercentEncoding(" /|;&").constData();
    }
    // Texts that always or never match would prove nothing.
    EXPECT_GT(hits, texts / 50) << i;
    EXPECT_LT(hits, texts * 19 / 20) << i;
  }
}

/// How many times ten thousand steps ICU takes to search all of `text` for `pattern`; given up after `most`.
int steps(QStringView pattern, const QString& text, int most) {
  const auto alias = [](QStringView view) {
    return icu::UnicodeString(false, view.utf16(), static_cast<int32_t>(view.size()));
  };
  UErrorCode status = U_ZERO_ERROR;
  icu::RegexMatcher matcher(alias(pattern), UREGEX_CASE_INSENSITIVE, status);
  const icu::UnicodeString input = alias(text);
  matcher.reset(input);
  int left = most;
  matcher.setMatchCallback(
      [](const void* context, int32_t) -> UBool {
        return --*static_cast<int*>(const_cast<void*>(context)) > 0;
      },
      &left, status);
  while (left > 0 && U_SUCCESS(status) && matcher.find(status)) {
  }
  return most - left;
}

TEST(BlockRules, HostileCommandsTakeFewSteps) {
  const QStringList shapes = {
      u"rm "_s,       u"rm -rrrr "_s, u" -r"_s,    u" -f"_s,       u"r"_s,     u"f"_s,
      u"fr"_s,        u" "_s,         u"dd "_s,    u" of"_s,       u"of "_s,   u"chmod "_s,
      u"chmod -R "_s, u" -R"_s,       u" -R   "_s, u"chown -R "_s, u"curl "_s, u"curl |"_s,
      u"wget "_s,     u"| sudo "_s,   u"|"_s,      u"sudo "_s,     u"sudo"_s,  u">"_s,
      u"> "_s,        u": "_s,        u":("_s,     u":( ) "_s,     u"a"_s,     u"\u0301"_s,
      u"rm\u0301"_s,  u"\u0301 "_s,   u" / "_s,    u" /x"_s,       u" -r /"_s, u"halt\u0301"_s,
  };
  for (const BlockRule& rule : blockRules()) {
    const bool hasForm = !rule.linearPattern.isEmpty();
    bool isPatternQuadratic = false;
    for (const QString& shape : shapes) {
      for (const QString& start : {QString(), u"rm -"_s, u"chmod -R "_s, u"chown -R "_s}) {
        const QString text = start + shape.repeated(40'000 / shape.size());
        constexpr int proportional = 50;
        EXPECT_LT(steps(hasForm ? rule.linearPattern : rule.pattern, text, proportional), proportional)
            << rule.pattern.toUtf8().constData() << " on many " << shape.toStdString();
        // A form that is not needed would be one too many.
        if (hasForm && !isPatternQuadratic) isPatternQuadratic = steps(rule.pattern, text, 500) == 500;
      }
    }
    EXPECT_EQ(isPatternQuadratic, hasForm) << rule.pattern.toUtf8().constData();
  }
}

}  // namespace
}  // namespace lumeno
