#include "records/intent_kind.h"

namespace lumeno {

namespace {

struct KindRow {
  QLatin1StringView name;
  QLatin1StringView symbol;
  Tint tint;
};

using namespace Qt::StringLiterals;

// In the order of the enumeration.
constexpr std::array<KindRow, allIntentKinds.size()> kindRows = {{
    {"error"_L1, "wrench.and.screwdriver"_L1, Tint::red},
    {"writing"_L1, "text.alignleft"_L1, Tint::teal},
    {"date"_L1, "calendar.badge.plus"_L1, Tint::indigo},
    {"code"_L1, "chevron.left.forwardslash.chevron.right"_L1, Tint::mint},
    {"filename"_L1, "doc.text.magnifyingglass"_L1, Tint::orange},
    {"reply"_L1, "arrowshape.turn.up.left"_L1, Tint::blue},
    {"definition"_L1, "book"_L1, Tint::purple},
    {"address"_L1, "map"_L1, Tint::green},
    {"link"_L1, "safari"_L1, Tint::blue},
    {"email"_L1, "envelope"_L1, Tint::cyan},
    {"phone"_L1, "phone"_L1, Tint::green},
    {"translate"_L1, "globe"_L1, Tint::pink},
    {"grammar"_L1, "checkmark.bubble"_L1, Tint::orange},
    {"tone"_L1, "wand.and.stars"_L1, Tint::purple},
    {"explain"_L1, "lightbulb"_L1, Tint::yellow},
    {"unknown"_L1, "sparkle.magnifyingglass"_L1, Tint::secondary},
}};

constexpr std::array tintNames = {"red"_L1,    "teal"_L1, "indigo"_L1, "mint"_L1,
                                  "orange"_L1, "blue"_L1, "purple"_L1, "green"_L1,
                                  "cyan"_L1,   "pink"_L1, "yellow"_L1, "secondary"_L1};

const KindRow& row(IntentKind kind) {
  return kindRows[static_cast<size_t>(kind)];
}

}  // namespace

QString rawValue(IntentKind kind) {
  return row(kind).name;
}

std::optional<IntentKind> intentKindFromRawValue(QStringView raw) {
  for (const IntentKind kind : allIntentKinds) {
    if (raw == row(kind).name) return kind;
  }
  return std::nullopt;
}

QString symbolName(IntentKind kind) {
  return row(kind).symbol;
}

Tint tint(IntentKind kind) {
  return row(kind).tint;
}

QString tintName(Tint tint) {
  return tintNames[static_cast<size_t>(tint)];
}

}  // namespace lumeno
