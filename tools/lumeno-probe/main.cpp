// lumeno-probe: asks Lumeno's pure logic from the outside. It reads one JSON object a line from standard
// input and writes one a line, in the same order, to standard output. What it cannot answer is answered with
// an "error".

#include <QtGlobal>
#include <iostream>
#include <string>

#include "answer.h"

int main() {
  // Only what a request injects may decide an answer, so local time is the same everywhere.
  qputenv("TZ", "UTC");
  std::ios::sync_with_stdio(false);
  for (std::string line; std::getline(std::cin, line);) {
    const QByteArray reply =
        lumeno::probe::answer(QByteArray::fromRawData(line.data(), static_cast<qsizetype>(line.size())));
    std::cout.write(reply.data(), reply.size()).put('\n').flush();
  }
  return 0;
}
