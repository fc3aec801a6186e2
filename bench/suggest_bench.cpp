// Times the suggestion pass: what the rules measure by themselves, and the whole pass with all detectors.
// Each line gives the best of several runs, its limit, and how the time grew from an eighth of the text (8 is
// linear).

#include <QString>
#include <algorithm>
#include <chrono>
#include <cstdio>

#include "suggest/selection_cues.h"
#include "suggest/suggestion_engine.h"

namespace {

using namespace lumeno;
using namespace Qt::StringLiterals;

constexpr qsizetype megabyte = 1'000'000;
constexpr qsizetype message = 200;

struct Shape {
  const char* name;
  QString unit;
};

const std::vector<Shape>& shapes() {
  static const std::vector<Shape> all = {
      {"prose",
       u"Could you look at the draft before the meeting? It describes how the parser reads a line, and why "
       "the second pass failed on long files. Thanks for your help.\n"_s},
      {"code",
       u"  let value = table.lookup(key) // returns 0 when missing\n  if (value == 0) { return fail(key); }\n"_s},
      {"repeated letter", u"a"_s},
      {"line feeds", u"\n"_s},
      {"blanks", u" "_s},
      {"<a<a", u"<a"_s},
      {"a.a.", u"a."_s},
      {"at x(", u"at x(\n"_s},
      {"digits", u"12:3"_s},
      {"emoji", u"😀"_s},
      {"combining marks", u"a\u0301\u0302"_s},
      {"Japanese", u"これは長い文章です。"_s},
  };
  return all;
}

/// Text of `size` units that trimming leaves as it is.
QString textOf(const Shape& shape, qsizetype size) {
  return u'x' + shape.unit.repeated(size / shape.unit.size() + 1).first(size - 2) + u'x';
}

template <typename Work>
double milliseconds(Work work, int runs) {
  double best = 1e9;
  for (int run = 0; run < runs; ++run) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    best = std::min(best, taken.count());
  }
  return best;
}

/// Everything the rules measure without asking a detector.
int measure(const SelectedContext& context, const detect::Surroundings& surroundings) {
  TextAnalysis analysis(context, surroundings);
  const IntentFeatures features(analysis);
  const ContextAnalysis builder(analysis);
  return features.cueCount(CueFamily::codeCuePatterns) + builder.errorKeywordCount() +
         builder.codeMarkerCount() + static_cast<int>(features.wordCount()) +
         (features.looksLikeProse() ? 1 : 0) + (features.looksLikeFilename() ? 1 : 0) +
         (features.isAcronym() ? 1 : 0);
}

void report(const char* what, const Shape& shape, double time, double eighth, double limit) {
  std::printf("%-14s %-16s %9.3f ms   limit %7.1f ms   ratio %5.2f   growth %5.1f\n", what, shape.name, time,
              limit, time / limit, time / eighth);
}

}  // namespace

int main() {
  const detect::Surroundings surroundings{QDateTime::currentDateTimeUtc(), QTimeZone::utc(),
                                          QLocale(QLocale::English, QLocale::UnitedStates)};
  const auto context = [](const Shape& shape, qsizetype size) {
    return SelectedContext{{}, textOf(shape, size), u"Slack"_s, {}};
  };
  volatile int sink = 0;
  const auto rulesTime = [&](const SelectedContext& selection, int runs) {
    return milliseconds([&] { sink = measure(selection, surroundings); }, runs);
  };
  const auto passTime = [&](const SelectedContext& selection, int runs) {
    return milliseconds(
        [&] { sink = static_cast<int>(SuggestionEngine().suggestions(selection, {}, surroundings).size()); },
        runs);
  };

  for (const Shape& shape : shapes()) {
    report("rules, 200", shape, rulesTime(context(shape, message), 200),
           rulesTime(context(shape, message / 8), 200), 0.1);
  }
  for (const Shape& shape : shapes()) {
    report("rules, 1 MB", shape, rulesTime(context(shape, megabyte), 5),
           rulesTime(context(shape, megabyte / 8), 20), 50);
  }
  for (const Shape& shape : shapes()) {
    report("all, 200", shape, passTime(context(shape, message), 50),
           passTime(context(shape, message / 8), 50), 1);
  }
  for (const Shape& shape : shapes()) {
    report("all, 1 MB", shape, passTime(context(shape, megabyte), 3),
           passTime(context(shape, megabyte / 8), 5), 100);
  }
  return 0;
}
