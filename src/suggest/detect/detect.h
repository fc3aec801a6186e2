#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>
#include <QUrl>
#include <optional>
#include <vector>

#include "suggest/detect/surroundings.h"

/// Finding links, phone numbers, dates, postal addresses and the language of plain text. Pure functions;
/// every one is linear in the text. Offsets are UTF-16 units of the text as given and lie on character
/// boundaries.
namespace lumeno::detect {

struct LinkMatch {
  qsizetype start = 0;
  qsizetype length = 0;
  QUrl url;  ///< encoded; an e-mail address has the scheme "mailto", a bare domain "http"
};

struct PhoneMatch {
  qsizetype start = 0;
  qsizetype length = 0;
  QString number;  ///< as written
};

/// Either a link (or e-mail address) or a phone number.
struct DirectMatch {
  enum class Type { link, phone };
  Type type = Type::link;
  qsizetype start = 0;
  qsizetype length = 0;
  QUrl url;        ///< for links
  QString number;  ///< for phone numbers
};

struct DateMatch {
  qsizetype start = 0;
  qsizetype length = 0;
  QDateTime date;              ///< in the zone of the surroundings
  qint64 durationSeconds = 0;  ///< 0 when the text names no span
};

struct AddressMatch {
  qsizetype start = 0;
  qsizetype length = 0;
};

struct Language {
  QString code;  ///< ISO 639-1 where there is one ("en", "de", "ja", "zh")
  double probability = 0;
};

[[nodiscard]] std::vector<LinkMatch> links(QStringView text);
[[nodiscard]] std::vector<PhoneMatch> phones(QStringView text, const Surroundings& surroundings);
/// Links and phone numbers together in text order, without overlaps (a link wins over a number inside it).
[[nodiscard]] std::vector<DirectMatch> directMatches(QStringView text, const Surroundings& surroundings);

/// As `directMatches`, but it may leave out numbers behind the first one: all that a suggestion needs, and
/// much cheaper in a list of numbers.
[[nodiscard]] std::vector<DirectMatch> linksAndFirstPhone(QStringView text, const Surroundings& surroundings);

/// In text order, without overlaps.
[[nodiscard]] std::vector<DateMatch> dates(QStringView text, const Surroundings& surroundings);
[[nodiscard]] std::optional<DateMatch> firstDate(QStringView text, const Surroundings& surroundings);

[[nodiscard]] std::vector<AddressMatch> addresses(QStringView text);
[[nodiscard]] bool hasAddress(QStringView text);

/// The most probable language; absent when none can be told.
[[nodiscard]] std::optional<Language> dominantLanguage(QStringView text);

}  // namespace lumeno::detect
