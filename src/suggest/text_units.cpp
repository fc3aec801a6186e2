#include "suggest/text_units.h"

#include <unicode/uchar.h>

namespace lumeno::scan {

namespace {

/// The characters of "\w" by category; the last test is for the few others that are alphabetic.
bool belongsToWords(UChar32 c, uint32_t categoryMask) {
  constexpr uint32_t wordCategories = U_GC_L_MASK | U_GC_M_MASK | U_GC_ND_MASK | U_GC_NL_MASK | U_GC_PC_MASK;
  return (categoryMask & wordCategories) != 0 || u_hasBinaryProperty(c, UCHAR_ALPHABETIC);
}

}  // namespace

CharClass classOfNonAscii(char32_t character) {
  const auto c = static_cast<UChar32>(character);
  const uint32_t categoryMask = U_GET_GC_MASK(c);
  if ((categoryMask & (U_GC_CF_MASK | U_GC_MN_MASK | U_GC_ME_MASK)) != 0) return CharClass::attached;
  // Of the rest only some letters and spacing marks extend the character before them.
  constexpr uint32_t mayExtend = U_GC_MC_MASK | U_GC_LM_MASK;
  if ((categoryMask & mayExtend) != 0 && u_hasBinaryProperty(c, UCHAR_GRAPHEME_EXTEND)) {
    return CharClass::attached;
  }
  return belongsToWords(c, categoryMask) ? CharClass::word : CharClass::other;
}

bool isNonAsciiWordCharacter(char32_t character) {
  const auto c = static_cast<UChar32>(character);
  return belongsToWords(c, U_GET_GC_MASK(c)) || c == 0x200C || c == 0x200D;
}

bool isNonAsciiDigit(char32_t c) {
  return u_charType(static_cast<UChar32>(c)) == U_DECIMAL_DIGIT_NUMBER;
}

}  // namespace lumeno::scan
