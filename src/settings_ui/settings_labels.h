#pragma once

#include <QString>
#include <QVariantList>

#include "core/settings/settings_enums.h"
#include "records/intent_kind.h"

namespace lumeno {

/// A kind's name in the window.
[[nodiscard]] QString displayTitle(IntentKind kind);

// What the pickers offer, in the order of the cases: maps with "label", and "symbol" or "dot" where an entry
// has one. A dot is a colour; an invalid one stands for all colours.
[[nodiscard]] QVariantList accentThemeOptions();
[[nodiscard]] QVariantList glassIntensityOptions();

/// The text with the first letter of each word in upper case and the others in lower case, in any language
/// alike.
[[nodiscard]] QString capitalizedWords(const QString& text);

}  // namespace lumeno
