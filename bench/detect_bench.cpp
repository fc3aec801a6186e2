// Times each detector and the whole suggestion pass on prose and on hostile texts of growing size, beside the
// same cue families as plain regular expressions. Prints the time and how it grew since eight times less
// text.
//
//   detect_bench            all sizes
//   detect_bench 20000      only up to that many characters
//   detect_bench 20000 links   only the rows of one subject

#include <unicode/regex.h>

#include <QCoreApplication>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#include "suggest/detect/detect.h"
#include "suggest/suggestion_engine.h"

using namespace lumeno;
using namespace Qt::StringLiterals;

namespace {

struct Shape {
  const char* name;
  QString piece;
};

std::vector<Shape> shapes() {
  return {
      {"prose",
       u"Could you please send the report to Anna by Friday? The meeting with the three new customers starts "
       u"at nine, and we need the numbers for chapter 12 before that. It isn't urgent, but thanks anyway. "_s},
      {"one letter", u"a"_s},
      {"digits", u"1"_s},
      {"digits and dashes", u"123-45-"_s},
      {"brackets", u"([{"_s},
      {"blanks", u" "_s},
      {"line feeds", u"\n"_s},
      {"<a", u"<a"_s},
      {"a.", u"a."_s},
      {"at x(", u"at x("_s},
      {"dates", u"2026-05-01 10:30, "_s},
      {"phone numbers", u"+1 (555) 010-7788 "_s},
      {"national numbers", u"212-736-5000 "_s},
      {"links", u"https://example.com/a?b=c "_s},
      {"bare domains", u"example.com "_s},
      {"file names", u"main.rs "_s},
      {"mail", u"anna@example.com "_s},
      {"house numbers", u"12 Apple "_s},
      {"streets", u"12 Main St, "_s},
      {"postcodes", u"10115 Berlin "_s},
      {"emoji", u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s},
      {"combining marks", u"e\u0301\u0302"_s},
      {"han", u"日本語の文章"_s},
  };
}

/// The cue families as they are written down, searched by the plain engine.
std::vector<std::unique_ptr<icu::RegexPattern>> plainPatterns() {
  std::vector<std::unique_ptr<icu::RegexPattern>> patterns;
  for (const char* source :
       {R"((?m)^\s*(func|struct|class|enum|protocol|extension|import|let|var)\b)",
        R"([{}]\s*$)",
        R"(=>|->|==)",
        R"(\b(return|await|async|throws|try|guard|switch|case)\b)",
        R"(</?[A-Za-z][^>]*>)",
        R"((?m)^\s{4,}\S)",
        R"(\berror:)",
        R"(\b(exception|fatal|failed|failure|crash|traceback|stack trace)\b)",
        R"(\b(cannot|can't|could not|unable to|unresolved|missing)\b)",
        R"(\b(exit code|segmentation fault|permission denied)\b)",
        R"((?m)^\s*at\s+\S+\()",
        R"((?m)\S+\.\w+:\d+:\d+)",
        R"(\b(meet|meeting|call|appointment|event|lunch|dinner|tomorrow|today|tonight|next)\b)",
        R"(\b(am|pm|a\.m\.|p\.m\.)\b)",
        R"(\b\d{1,2}:\d{2}\b)",
        R"(\b(API|SDK|URL|HTTP|JSON|SQL|LLM|AI|CPU|GPU|DNS|TLS)\b)",
        R"(\b(why|how|what does|what is|means?|concept|architecture)\b)",
        R"(\b(can|could|would|will) you\b)",
        R"(\b(please|thanks|thank you|let me know)\b)",
        R"(\?$)",
        R"(\b(please|thoughts|what do you think|let me know|following up)\b)",
        R"(\b(thanks|thank you|hi|hello|hey)\b)",
        R"(\b(sorry|asap|urgent|annoyed|frustrated|disappointed|unacceptable)\b)",
        R"(\b(i think|i feel|we need|you need|please)\b)"}) {
    UErrorCode status = U_ZERO_ERROR;
    patterns.emplace_back(
        icu::RegexPattern::compile(icu::UnicodeString::fromUTF8(source), UREGEX_CASE_INSENSITIVE, status));
  }
  return patterns;
}

void searchPlainly(const std::vector<std::unique_ptr<icu::RegexPattern>>& patterns, const QString& text) {
  const icu::UnicodeString view(
      false, text.utf16() == nullptr ? u"" : reinterpret_cast<const char16_t*>(text.utf16()),
      int32_t(text.size()));
  for (const auto& pattern : patterns) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::RegexMatcher> matcher(pattern->matcher(view, status));
    // The engine gives up by itself only when its stack overflows; a few seconds are enough to make the
    // point.
    matcher->setTimeLimit(2000, status);
    (void)matcher->find(status);
  }
}

/// The fastest of a few runs, in milliseconds.
double milliseconds(const std::function<void()>& work) {
  using Clock = std::chrono::steady_clock;
  double best = 1e9;
  double total = 0;
  for (int runs = 0; runs < 20 && (runs < 2 || total < 60); ++runs) {
    const auto start = Clock::now();
    work();
    const double elapsed = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    best = std::min(best, elapsed);
    total += elapsed;
    if (elapsed > 1000) break;
  }
  return best;
}

}  // namespace

int main(int argc, char** argv) {
  const qsizetype largest = argc > 1 ? QByteArray(argv[1]).toLongLong() : 1'000'000;
  detect::Surroundings surroundings = detect::Surroundings::current();
  surroundings.locale = QLocale(QLocale::English, QLocale::UnitedStates);
  const auto patterns = plainPatterns();
  const SuggestionEngine engine;

  const std::vector<std::pair<const char*, std::function<void(const QString&)>>> subjects{
      {"links", [](const QString& text) { (void)detect::links(text); }},
      {"phones", [&](const QString& text) { (void)detect::phones(text, surroundings); }},
      {"addresses", [](const QString& text) { (void)detect::addresses(text); }},
      {"dates", [&](const QString& text) { (void)detect::dates(text, surroundings); }},
      {"language", [](const QString& text) { (void)detect::dominantLanguage(text); }},
      {"whole pass",
       [&](const QString& text) {
         SelectedContext context;
         context.selectedText = text;
         (void)engine.suggestions(context, {}, surroundings);
       }},
      {"plain regex", [&](const QString& text) { searchPlainly(patterns, text); }},
  };

  std::printf("milliseconds per call; in brackets the growth for eight times the text (8 is linear)\n");
  for (const auto& [name, run] : subjects) {
    if (argc > 2 && QLatin1StringView(name) != QLatin1StringView(argv[2])) continue;
    const bool plain = QLatin1StringView(name) == "plain regex"_L1;
    std::printf("\n%-18s %9s %9s %9s %11s %11s %9s\n", name, "20", "200", "2000", "20000", "1000000",
                "growth");
    for (const Shape& shape : shapes()) {
      std::printf("%-18s", shape.name);
      for (const qsizetype size : {20, 200, 2000, 20000, 1000000}) {
        // Quadratic engines would take hours on the largest text.
        if (size > largest || (plain && size > 20000)) {
          std::printf(" %9s", "-");
          continue;
        }
        const QString text = shape.piece.repeated(size / shape.piece.size() + 1).left(size);
        std::printf(" %9.4f", milliseconds([&, &run = run] { run(text); }));
        std::fflush(stdout);
      }
      const auto timeOf = [&, &run = run](qsizetype size) {
        const QString text = shape.piece.repeated(size / shape.piece.size() + 1).left(size);
        return milliseconds([&] { run(text); });
      };
      const qsizetype base = plain ? 1000 : 10000;
      std::printf("   [%5.1f]\n", timeOf(8 * base) / timeOf(base));
      std::fflush(stdout);
    }
  }
  return 0;
}
