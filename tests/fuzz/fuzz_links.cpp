#include "fuzz_text.h"
#include "suggest/detect/detect.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace lumeno;
  for (const QString& text : fuzz::texts(data, size)) {
    const std::vector<detect::LinkMatch> matches = detect::links(text);
    fuzz::requireSoundMatches(text, matches);
    for (const detect::LinkMatch& match : matches) {
      fuzz::require(match.url.isValid() && !match.url.scheme().isEmpty());
      for (const char byte : match.url.toEncoded()) fuzz::require(byte > ' ' && byte < 0x7F);
    }
  }
  return 0;
}
