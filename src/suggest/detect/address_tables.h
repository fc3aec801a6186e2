#pragma once

#include <QStringView>

#include "suggest/detect/word_set.h"

/// The words by which addresses of each country are told from other text. All in lower case.
namespace lumeno::detect::address_tables {

/// English: what ends a street name (Street, Ave, Rd), streets that need no such word (Broadway), and what
/// may begin one ("Highway 101", "Avenue of the Americas").
[[nodiscard]] const WordSet& englishStreetTypes();
[[nodiscard]] const WordSet& englishStreetsWithoutType();
[[nodiscard]] const WordSet& englishLeadingTypes();
[[nodiscard]] const WordSet& directions();
/// One, Two … as house numbers.
[[nodiscard]] const WordSet& numberWords();
/// Flat, Suite, Apt …, which a number or letter follows.
[[nodiscard]] const WordSet& unitWords();
/// Cottage, House …: what a named house without number is called.
[[nodiscard]] const WordSet& houseWords();

/// States and provinces: abbreviations are written in capitals.
[[nodiscard]] const WordSet& usStates();
[[nodiscard]] const WordSet& usStateNames();
[[nodiscard]] const WordSet& canadianProvinces();
[[nodiscard]] const WordSet& canadianProvinceNames();
[[nodiscard]] const WordSet& australianStates();
[[nodiscard]] const WordSet& australianStateNames();

/// French street types that follow the house number (12 rue, 3 bis avenue).
[[nodiscard]] const WordSet& frenchStreetTypes();
/// Types that begin a street name whose number comes last (Via, Calle, Rua, ul., Platz der …), post boxes
/// included.
[[nodiscard]] const WordSet& leadingStreetTypes();
/// Types that stand alone as the last word of a name (Mariahilfer Straße, Karl Johans gate).
[[nodiscard]] const WordSet& trailingStreetTypes();
/// Whether the single word ends like a street name (Hauptstraße, Drottninggatan, Mannerheimintie).
[[nodiscard]] bool endsLikeStreet(QStringView word);
/// Am, An, Auf, Unter …, with a capital at the start of a German street name.
[[nodiscard]] const WordSet& streetPrepositions();
/// Alte, Große, Obere …, before a street name of one word.
[[nodiscard]] const WordSet& streetAdjectives();
/// Seite, Page, Version …: a number behind them is no house number.
[[nodiscard]] const WordSet& countedNouns();

/// Small words inside names of streets and places (de, la, am, of).
[[nodiscard]] const WordSet& particles();
/// Large cities, known without a postcode; blanks within.
[[nodiscard]] const WordSet& cities();
/// Names of countries in the languages of their addresses; blanks within.
[[nodiscard]] const WordSet& countries();
/// What follows an address without belonging to it (Tel, Fax, Web).
[[nodiscard]] const WordSet& afterAddress();
/// What may stand between a house number and the postcode: floors, doors, staircases.
[[nodiscard]] const WordSet& doorWords();

}  // namespace lumeno::detect::address_tables
