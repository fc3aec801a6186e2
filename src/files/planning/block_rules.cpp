#include "files/planning/block_rules.h"

#include <unicode/regex.h>

#include <array>
#include <memory>
#include <vector>

// Several rules look for a head (a command's name) and then, up to the next separator, for a tail. A search
// that fails goes on with the next head, and reads the same stretch again for each. The linear forms read a
// stretch once: from its first head on, which has before it all the tails that later heads have, they take
// the tail if there is one and then all the rest in one match, so the next match starts behind the stretch.
// Within the tail, what can only match in one way is an atomic group, so that nothing is tried twice.
// (Possessive repetitions would say the same, but ICU keeps a stack frame for each of their rounds.)

namespace lumeno {

namespace {

constexpr auto rules = std::to_array<BlockRule>({
    {uR"((^|[^[:alnum:]_])sudo([^[:alnum:]_]|$))", {}, u"runs with administrator privileges (sudo)"},
    {uR"(\brm\b[^|;&]*\s-[a-z]*r[a-z]*f?[a-z]*\s+(/|~|\$HOME|\*)(\s|$))",
     uR"(\brm\b([^|;&]*?\s-(?=[a-z]*r)(?>[a-z]*)(?>\s+)(?:/|~|\$HOME|\*)(?:\s|$))?(?>[^|;&]*))",
     u"recursively deletes a top-level or home path"},
    {uR"(\brm\b[^|;&]*\s-[a-z]*f[a-z]*r[a-z]*\s+(/|~|\$HOME|\*)(\s|$))",
     uR"(\brm\b([^|;&]*?\s-(?=(?>[a-z]*?f)[a-z]*r)(?>[a-z]*)(?>\s+)(?:/|~|\$HOME|\*)(?:\s|$))?(?>[^|;&]*))",
     u"recursively deletes a top-level or home path"},
    {uR"(\bmkfs\b)", {}, u"formats a filesystem"},
    {uR"(\bdiskutil\b)", {}, u"modifies disks/partitions"},
    {uR"(\bdd\b[^|;&]*\bof=)", uR"(\bdd\b([^|;&]*?\bof=)?(?>[^|;&]*))", u"writes a raw disk image (dd)"},
    {uR"(>\s*/dev/)", {}, u"writes directly to a device file"},
    {uR"(\bchmod\b[^|;&]*\s-R[^|;&]*\s+/(\s|$))",
     uR"(\bchmod\b((?>[^|;&]*?\s-R)[^|;&]*?\s/(?:\s|$))?(?>[^|;&]*))",
     u"recursively changes permissions at the root"},
    {uR"(\bchown\b[^|;&]*\s-R[^|;&]*\s+/(\s|$))",
     uR"(\bchown\b((?>[^|;&]*?\s-R)[^|;&]*?\s/(?:\s|$))?(?>[^|;&]*))",
     u"recursively changes ownership at the root"},
    {uR"(:\s*\(\s*\)\s*\{)", {}, u"is a fork-bomb pattern"},
    {uR"(\bcurl\b[^|]*\|\s*(sudo\s+)?(ba)?sh)", uR"(\bcurl\b(?>[^|]*)(\|\s*(?:sudo\s+)?(?:ba)?sh)?)",
     u"pipes a remote script straight into a shell"},
    {uR"(\bwget\b[^|]*\|\s*(sudo\s+)?(ba)?sh)", uR"(\bwget\b(?>[^|]*)(\|\s*(?:sudo\s+)?(?:ba)?sh)?)",
     u"pipes a remote script straight into a shell"},
    {uR"(\bkillall\b)", {}, u"force-quits running apps"},
    {uR"(\bshutdown\b|\breboot\b|\bhalt\b)", {}, u"powers off or restarts the Mac"},
});

icu::UnicodeString alias(QStringView text) {
  return {false, text.utf16(), static_cast<int32_t>(text.size())};
}

std::unique_ptr<icu::RegexPattern> compile(const BlockRule& rule) {
  const QStringView source = rule.linearPattern.isEmpty() ? rule.pattern : rule.linearPattern;
  UErrorCode status = U_ZERO_ERROR;
  return std::unique_ptr<icu::RegexPattern>(
      icu::RegexPattern::compile(alias(source), UREGEX_CASE_INSENSITIVE, status));
}

const icu::RegexPattern* compiled(size_t index) {
  static const auto patterns = [] {
    std::vector<std::unique_ptr<icu::RegexPattern>> all;
    for (const BlockRule& rule : rules) all.push_back(compile(rule));
    return all;
  }();
  return patterns.at(index).get();
}

}  // namespace

std::span<const BlockRule> blockRules() {
  return rules;
}

bool ruleMatches(size_t index, QStringView command) {
  const icu::UnicodeString input = alias(command);
  const icu::RegexPattern* const pattern = compiled(index);
  UErrorCode status = U_ZERO_ERROR;
  // What cannot be searched (memory has run out) cannot be cleared either.
  if (!pattern) return true;
  const std::unique_ptr<icu::RegexMatcher> matcher(pattern->matcher(input, status));
  if (U_FAILURE(status)) return true;
  const int32_t group = rules.at(index).linearPattern.isEmpty() ? 0 : 1;
  while (matcher->find(status) && U_SUCCESS(status)) {
    if (matcher->start(group, status) >= 0) return true;
  }
  return U_FAILURE(status);
}

}  // namespace lumeno
