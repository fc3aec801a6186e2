#pragma once

#include <QStringView>

#include "suggest/detect/address_locality.h"

namespace lumeno::detect {

/// The end of the English street name at `i` (behind the house number), with directions and units (Apt 5B),
/// or 0.
[[nodiscard]] qsizetype englishStreetEnd(QStringView text, qsizetype i);

/// The end of "Flat 3", "Suite 200", "5th Floor", "#12" at `i`, or 0.
[[nodiscard]] qsizetype unitEnd(QStringView text, qsizetype i);

/// Whether a French street type (rue, bd.) starts at `i`.
[[nodiscard]] bool startsFrenchStreet(QStringView text, qsizetype i);

/// The name of a street that ends before its house number (or postcode) at `numberStart`.
struct StreetName {
  qsizetype start = -1;  ///< -1 when there is none
  StreetEvidence evidence = StreetEvidence::named;
};
[[nodiscard]] StreetName streetNameBefore(QStringView text, qsizetype numberStart);

/// Where the segment (bounded by commas, line breaks, brackets, colons) that ends at `end` begins; looks back
/// a bounded distance.
[[nodiscard]] qsizetype segmentStart(QStringView text, qsizetype end);

}  // namespace lumeno::detect
