#include "suggest/detect/url_host.h"

#include <algorithm>

#include "suggest/detect/token_scan.h"

namespace lumeno::detect {

using namespace Qt::StringLiterals;
using namespace scan;

namespace {

qsizetype bracketedAddressEnd(QStringView text, qsizetype open) {
  qsizetype i = open + 1;
  const auto isAddressUnit = [](char16_t c) {
    return isAsciiDigit(c) || (asciiLower(c) >= u'a' && asciiLower(c) <= u'f') || c == u':' || c == u'.';
  };
  while (i < text.size() && i - open < 48 && isAddressUnit(text[i].unicode())) ++i;
  return unitAt(text, i) == u']' && i - open > 2 ? i + 1 : open;
}

/// Any name may follow a scheme, but rows of numbers only as an IPv4 address.
bool isAcceptableHost(QStringView name) {
  const bool numeric =
      std::all_of(name.begin(), name.end(), [](QChar c) { return isAsciiDigit(c.unicode()) || c == u'.'; });
  if (!numeric) return !name.startsWith(u'.') && !name.contains(".."_L1);
  int parts = 0;
  for (const QStringView part : name.tokenize(u'.')) {
    if (part.isEmpty() || part.size() > 3 || part.toInt() > 255) return false;
    ++parts;
  }
  return parts == 4;
}

}  // namespace

bool isHostUnit(char16_t c) {
  return isAsciiLetter(c) || isAsciiDigit(c) || c == u'.' || c == u'-' || c == u'_';
}

bool isLocalPartUnit(char16_t c) {
  return isHostUnit(c) || c == u'+' || c == u'%' || c == u'\'' || c == u'&' || c == u'~';
}

qsizetype hostRunEnd(QStringView text, qsizetype i) {
  bool latin = false;
  bool unspaced = false;
  while (i < text.size()) {
    const char16_t c = text[i].unicode();
    if (c < 0x80) {
      if (!isHostUnit(c)) break;
      const bool alphanumeric = c != u'.' && c != u'-' && c != u'_';
      if (alphanumeric && unspaced) break;
      latin = alphanumeric;
      unspaced = false;
      ++i;
      continue;
    }
    const char32_t codePoint = codePointAt(text, i);
    if (!isWordCharacter(codePoint)) break;
    unspaced = isUnspacedScript(codePoint);
    if (unspaced && latin) break;
    latin = false;
    i += unitCount(codePoint);
  }
  return i;
}

qsizetype authorityEnd(QStringView text, qsizetype start) {
  constexpr qsizetype longestUserInfo = 256;
  qsizetype host = start;
  for (qsizetype i = start; i < text.size() && i - start < longestUserInfo; ++i) {
    const char16_t c = text[i].unicode();
    if (c == u'@') {
      host = i + 1;
      break;
    }
    if (!isLocalPartUnit(c) && c != u':' && c != u'!' && c != u'$' && c != u'*' && c != u'=') break;
  }
  if (unitAt(text, host) == u'[') return bracketedAddressEnd(text, host);
  qsizetype end = hostRunEnd(text, host);
  while (end > host && !isWordCharacter(codePointBefore(text, end))) --end;
  const QStringView name = text.sliced(host, end - host);
  if (name.isEmpty() || name.size() > 253 || !isAcceptableHost(name)) return start;
  // A final dot that a path follows is the root of the name space.
  if (unitAt(text, end) == u'.' && unitAt(text, end + 1) == u'/') ++end;
  return end;
}

}  // namespace lumeno::detect
