#include "fuzz_text.h"
#include "suggest/detect/detect.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace lumeno;
  for (const QString& text : fuzz::texts(data, size)) {
    const auto language = detect::dominantLanguage(text);
    if (!language) continue;
    fuzz::require(language->code.size() >= 2 && language->probability >= 0 && language->probability <= 1);
  }
  return 0;
}
