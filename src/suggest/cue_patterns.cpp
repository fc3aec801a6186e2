#include "suggest/cue_patterns.h"

#include <bit>
#include <limits>

#include "suggest/cue_finder.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

using enum CueFamily;

constexpr auto patterns = std::to_array<CuePattern>({
    {codeCuePatterns, uR"((?m)^\s*(func|struct|class|enum|protocol|extension|import|let|var)\b)",
     CueForm::listedWords},
    {codeCuePatterns, uR"([{}]\s*$)", CueForm::endsWithBrace},
    {codeCuePatterns, uR"(=>|->|==)", CueForm::hasArrow},
    {codeCuePatterns, uR"(\b(return|await|async|throws|try|guard|switch|case)\b)", CueForm::listedWords},
    {codeCuePatterns, uR"(</?[A-Za-z][^>]*>)", CueForm::hasTag},
    {codeCuePatterns, uR"((?m)^\s{4,}\S)", CueForm::hasIndentedLine},

    {errorCuePatterns, uR"(\berror:)", CueForm::listedWords},
    {errorCuePatterns, uR"(\b(exception|fatal|failed|failure|crash|traceback|stack trace)\b)",
     CueForm::listedWords},
    {errorCuePatterns, uR"(\b(cannot|can't|could not|unable to|unresolved|missing)\b)", CueForm::listedWords},
    {errorCuePatterns, uR"(\b(exit code|segmentation fault|permission denied)\b)", CueForm::listedWords},
    {errorCuePatterns, uR"((?m)^\s*at\s+\S+\()", CueForm::hasStackFrame},
    {errorCuePatterns, uR"((?m)\S+\.\w+:\d+:\d+)", CueForm::hasSourceLocation},

    {dateCuePatterns,
     uR"(\b(meet|meeting|call|appointment|event|lunch|dinner|tomorrow|today|tonight|next)\b)",
     CueForm::listedWords},
    {dateCuePatterns, uR"(\b(am|pm|a\.m\.|p\.m\.)\b)", CueForm::listedWords},
    {dateCuePatterns, uR"(\b\d{1,2}:\d{2}\b)", CueForm::hasClockTime},

    {explanationCuePatterns, uR"(\b(API|SDK|URL|HTTP|JSON|SQL|LLM|AI|CPU|GPU|DNS|TLS)\b)",
     CueForm::listedWords},
    {explanationCuePatterns, uR"(\b(why|how|what does|what is|means?|concept|architecture)\b)",
     CueForm::listedWords},

    {requestCuePatterns, uR"(\b(can|could|would|will) you\b)", CueForm::listedWords},
    {requestCuePatterns, uR"(\b(please|thanks|thank you|let me know)\b)", CueForm::listedWords},
    {requestCuePatterns, uR"(\?$)", CueForm::endsWithQuestionMark},

    {replyCuePatterns, uR"(\b(can|could|would|will) you\b)", CueForm::listedWords},
    {replyCuePatterns, uR"(\b(please|thoughts|what do you think|let me know|following up)\b)",
     CueForm::listedWords},
    {replyCuePatterns, uR"(\b(thanks|thank you|hi|hello|hey)\b)", CueForm::listedWords},
    {replyCuePatterns, uR"(\?$)", CueForm::endsWithQuestionMark},

    {toneCuePatterns, uR"(\b(sorry|asap|urgent|annoyed|frustrated|disappointed|unacceptable)\b)",
     CueForm::listedWords},
    {toneCuePatterns, uR"(\b(i think|i feel|we need|you need|please)\b)", CueForm::listedWords},
});

static_assert(patterns.size() <= std::numeric_limits<CueSet>::digits);

constexpr std::array familyNames = {
    "codeCuePatterns"_L1,    "errorCuePatterns"_L1, "dateCuePatterns"_L1, "explanationCuePatterns"_L1,
    "requestCuePatterns"_L1, "replyCuePatterns"_L1, "toneCuePatterns"_L1,
};

}  // namespace

QString familyName(CueFamily family) {
  return familyNames[static_cast<size_t>(family)];
}

std::span<const CuePattern> cuePatterns() {
  return patterns;
}

int cueCount(CueSet found, CueFamily family) {
  CueSet members = 0;
  for (size_t i = 0; i < patterns.size(); ++i) {
    if (patterns[i].family == family) members |= CueSet{1} << i;
  }
  return std::popcount(found & members);
}

CueSet findCues(QStringView text) {
  return scan::findCues(scan::Units(text));
}

}  // namespace lumeno
