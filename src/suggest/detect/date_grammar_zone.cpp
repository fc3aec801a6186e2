#include <array>

#include "suggest/detect/date_grammar.h"

namespace lumeno::detect {

using Kind = DateToken::Kind;
using Gap = DateToken::Gap;

namespace {

struct ZoneName {
  QStringView text;
  int minutes;
  const char* region;  ///< where the offset depends on the date
};

constexpr std::array<ZoneName, 33> zoneNames = {{
    {u"Z", 0, nullptr},
    {u"UTC", 0, nullptr},
    {u"GMT", 0, nullptr},
    {u"WET", 0, nullptr},
    {u"BST", 60, nullptr},
    {u"WEST", 60, nullptr},
    {u"CET", 60, nullptr},
    {u"MEZ", 60, nullptr},
    {u"CEST", 120, nullptr},
    {u"MESZ", 120, nullptr},
    {u"EET", 120, nullptr},
    {u"EEST", 180, nullptr},
    {u"MSK", 180, nullptr},
    {u"IST", 330, nullptr},
    {u"SGT", 480, nullptr},
    {u"HKT", 480, nullptr},
    {u"JST", 540, nullptr},
    {u"KST", 540, nullptr},
    {u"AEST", 600, nullptr},
    {u"AEDT", 660, nullptr},
    {u"NZST", 720, nullptr},
    {u"NZDT", 780, nullptr},
    {u"EST", -300, nullptr},
    {u"EDT", -240, nullptr},
    {u"CST", -360, nullptr},
    {u"CDT", -300, nullptr},
    {u"MST", -420, nullptr},
    {u"MDT", -360, nullptr},
    {u"PST", -480, nullptr},
    {u"PDT", -420, nullptr},
    {u"ET", 0, "America/New_York"},
    {u"CT", 0, "America/Chicago"},
    {u"PT", 0, "America/Los_Angeles"},
}};

}  // namespace

// Reads the zone after a time: "Z", "CET", "+0100", "UTC+2".
void DateGrammar::withZone(ClockTime& clock) {
  if (!clock.marked && !(clock.end > 0 && isNumber(clock.end - 1, 4, 6))) return;
  std::size_t i = clock.end;
  const DateToken& token = at(i);
  if (token.gap > Gap::blank) return;
  bool named = false;
  if (token.kind == Kind::other || token.kind == Kind::word) {
    const QStringView text = tokens_.text(token);
    for (const ZoneName& zone : zoneNames) {
      if (zone.text != text || (text == u"Z" && token.gap != Gap::none)) continue;
      named = true;
      if (zone.region) {
        clock.zoneName = zone.region;
      } else {
        clock.zoneOffset = zone.minutes * 60;
      }
    }
    if (!named) return;
    clock.end = ++i;
    if (text != u"UTC" && text != u"GMT") return;
  }
  const DateToken& sign = at(i);
  if (sign.mark != u'+' && sign.mark != u'-') return;
  if (sign.gap > (named ? Gap::none : Gap::blank) || at(i + 1).gap != Gap::none) return;
  int hours = 0;
  int minutes = 0;
  std::size_t next = i + 2;
  if (isNumber(i + 1, 4, 4)) {
    hours = at(i + 1).value / 100;
    minutes = at(i + 1).value % 100;
  } else if (isNumber(i + 1, 2, 2) || (named && isNumber(i + 1, 1, 1))) {
    hours = at(i + 1).value;
    if (gluedMark(i + 2, u':') && gluedNumber(i + 3, 2, 2)) {
      minutes = at(i + 3).value;
      next = i + 4;
    }
  } else {
    return;
  }
  // After a time a minus is the sign of a range, unless it is set off and four digits follow ("-0500").
  if (sign.mark == u'-' && !named && (sign.gap == Gap::none || !isNumber(i + 1, 4, 4))) return;
  if (hours > 14 || minutes > 59) return;
  clock.zoneOffset = (hours * 60 + minutes) * (sign.mark == u'-' ? -60 : 60);
  clock.end = next;
}

}  // namespace lumeno::detect
