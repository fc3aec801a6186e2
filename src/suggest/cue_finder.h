#pragma once

#include "suggest/cue_patterns.h"
#include "suggest/cue_scans.h"
#include "suggest/listed_words.h"

namespace lumeno::scan {

/// Whether a pattern that has a scan of its own matches.
template <class Text>
bool hasCue(const Text& text, CueForm form) {
  switch (form) {
    case CueForm::listedWords:
      return false;
    case CueForm::endsWithBrace:
      return endsWithBrace(text);
    case CueForm::hasArrow:
      return hasArrow(text);
    case CueForm::hasTag:
      return hasTag(text);
    case CueForm::hasIndentedLine:
      return hasIndentedLine(text);
    case CueForm::hasStackFrame:
      return hasStackFrame(text);
    case CueForm::hasSourceLocation:
      return hasSourceLocation(text);
    case CueForm::hasClockTime:
      return hasClockTime(text);
    case CueForm::endsWithQuestionMark:
      return endsWithQuestionMark(text);
  }
  return false;
}

/// Which patterns match: the word lists in one pass, the others each in theirs.
template <class Text>
CueSet findCues(const Text& text) {
  CueSet found = findListedWords(text);
  CueSet pattern = 1;
  for (const CuePattern& cue : cuePatterns()) {
    if (hasCue(text, cue.form)) found |= pattern;
    pattern <<= 1;
  }
  return found;
}

}  // namespace lumeno::scan
