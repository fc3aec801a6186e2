#include "ai/line_splitter.h"

#include <algorithm>

namespace lumeno {

void LineSplitter::feed(QByteArrayView bytes, const std::function<bool(const QByteArray& line)>& onLine) {
  const auto isLineBreak = [](char c) { return c == '\n' || c == '\r'; };
  for (auto begin = bytes.begin();;) {
    const auto end = std::find_if(begin, bytes.end(), isLineBreak);
    rest_.append(begin, end - begin);
    if (end == bytes.end()) return;
    if (!rest_.isEmpty() && !onLine(takeRest())) return;
    begin = end + 1;
  }
}

}  // namespace lumeno
