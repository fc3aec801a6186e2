#pragma once

#include <QStringView>

#include "suggest/detect/address_text.h"

namespace lumeno::detect {

/// How surely the part before a locality is a street.
enum class StreetEvidence {
  named,  ///< capitalised words and a number only ("Lange Reihe 5")
  typed,  ///< a word for a street is in it ("Hauptstraße 5", "12 rue …")
};

/// The end of the postcode and place that start at `i` in the continental order (10115 Berlin, 1017 AB
/// Amsterdam, 00-026 Warszawa), or 0. A country name behind it is included.
[[nodiscard]] qsizetype postcodeAndPlaceEnd(QStringView text, qsizetype i, StreetEvidence evidence);

/// The end of the well-known city at `i`, with a country behind it, or 0.
[[nodiscard]] qsizetype knownCityEnd(QStringView text, qsizetype i);

/// The end of the locality at `i` in the English order: places, then a state, province, postcode, well-known
/// city or country; or 0.
[[nodiscard]] qsizetype englishLocalityEnd(QStringView text, qsizetype i);

/// The end of a British or Canadian postcode at `i`, or 0.
[[nodiscard]] qsizetype britishPostcodeEnd(QStringView text, qsizetype i);
[[nodiscard]] qsizetype canadianPostcodeEnd(QStringView text, qsizetype i);

}  // namespace lumeno::detect
