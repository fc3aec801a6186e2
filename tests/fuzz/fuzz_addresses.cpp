#include "fuzz_text.h"
#include "suggest/detect/detect.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace lumeno;
  for (const QString& text : fuzz::texts(data, size)) {
    const std::vector<detect::AddressMatch> matches = detect::addresses(text);
    fuzz::requireSoundMatches(text, matches);
    fuzz::require(detect::hasAddress(text) == !matches.empty());
  }
  return 0;
}
