#pragma once

#include <QString>
#include <QStringView>
#include <array>
#include <cstdint>
#include <span>

namespace lumeno {

/// The families of regular expressions whose matching members are counted on the lowercased text.
enum class CueFamily {
  codeCuePatterns,
  errorCuePatterns,
  dateCuePatterns,
  explanationCuePatterns,
  requestCuePatterns,
  replyCuePatterns,
  toneCuePatterns,
};

inline constexpr std::array allCueFamilies = {
    CueFamily::codeCuePatterns,        CueFamily::errorCuePatterns,   CueFamily::dateCuePatterns,
    CueFamily::explanationCuePatterns, CueFamily::requestCuePatterns, CueFamily::replyCuePatterns,
    CueFamily::toneCuePatterns,
};

/// The case name.
[[nodiscard]] QString familyName(CueFamily family);

/// How a cue is looked for: by the word table, which is derived from the expression itself, or by its own
/// scan.
enum class CueForm {
  listedWords,
  endsWithBrace,
  hasArrow,
  hasTag,
  hasIndentedLine,
  hasStackFrame,
  hasSourceLocation,
  hasClockTime,
  endsWithQuestionMark,
};

/// One cue: the regular expression that defines it (ICU syntax, case-insensitive), and the form that answers
/// it.
struct CuePattern {
  CueFamily family;
  QStringView source;
  CueForm form;
};

/// All cues, family by family.
[[nodiscard]] std::span<const CuePattern> cuePatterns();

/// One bit for each entry of `cuePatterns`, in its order.
using CueSet = std::uint32_t;

/// The patterns of `family` that are in `found`.
[[nodiscard]] int cueCount(CueSet found, CueFamily family);

/// Which patterns match `text`.
[[nodiscard]] CueSet findCues(QStringView text);

/// The two expressions that are used alone (case-sensitive); their forms are `scan::hasFilename` and
/// `scan::isAcronym`.
inline constexpr QStringView filenamePattern = uR"([A-Za-z0-9][A-Za-z0-9_\- ./]+?\.[A-Za-z0-9]{2,8})";
inline constexpr QStringView acronymPattern = uR"(^[A-Z0-9]{2,8}$)";

}  // namespace lumeno
