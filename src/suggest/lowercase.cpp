#include "suggest/lowercase.h"

#include <algorithm>

#include "suggest/text_units.h"

namespace lumeno {

// Lowercasing looks at one character at a time, so a text may be cut anywhere between characters.
QString lowercased(QStringView text) {
  QString result;
  result.reserve(text.size());
  const char16_t* const end = text.utf16() + text.size();
  for (const char16_t* run = text.utf16(); run != end;) {
    const char16_t* runEnd = std::find_if(run, end, [](char16_t c) { return c >= 128; });
    const qsizetype start = result.size();
    result.resize(start + (runEnd - run));
    std::transform(run, runEnd, reinterpret_cast<char16_t*>(result.data()) + start, scan::foldAscii);
    run = runEnd;
    runEnd = std::find_if(run, end, [](char16_t c) { return c < 128; });
    if (run != runEnd) result += QStringView(run, runEnd).toString().toLower();
    run = runEnd;
  }
  return result;
}

}  // namespace lumeno
