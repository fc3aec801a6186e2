#include "files/caution/caution.h"
#include "fuzz_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace lumeno;
  const CautionSurroundings surroundings{QStringLiteral("/home/user/folder"), QStringLiteral("/home/user"),
                                         [](const QString& path) { return path.size() % 2 == 0; }};
  for (const QString& text : fuzz::texts(data, size)) {
    qsizetype start = 0;
    for (const Caution& caution : cautions(text, surroundings)) {
      fuzz::require(caution.start >= start && caution.length >= 0);
      fuzz::require(caution.start + caution.length <= text.size());
      fuzz::require(!caution.text.isEmpty() && caution.text.size() < 400 && !caution.text.contains(u'\n'));
      start = caution.start;
    }
  }
  return 0;
}
