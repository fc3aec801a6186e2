#pragma once

#include <QStringView>
#include <array>

/// The fixed words that are searched for as plain substrings. All are lowercase.
namespace lumeno::word_lists {

inline constexpr auto codeAppNames =
    std::to_array<QStringView>({u"xcode", u"terminal", u"iterm", u"visual studio code", u"cursor"});

inline constexpr auto communicationAppNames = std::to_array<QStringView>(
    {u"mail", u"messages", u"slack", u"discord", u"teams", u"outlook", u"whatsapp", u"telegram"});

inline constexpr auto proseCodeMarkers =
    std::to_array<QStringView>({u"{", u"}", u"=>", u"();", u"func ", u"var ", u"let ", u"import ", u"</"});

inline constexpr auto errorKeywords =
    std::to_array<QStringView>({u"error:", u"exception", u"failed", u"fatal", u"stack trace", u"traceback",
                                u"cannot find", u"crash", u"exit code"});

inline constexpr auto messagingAppWords =
    std::to_array<QStringView>({u"mail", u"messages", u"slack", u"discord", u"teams", u"outlook"});

inline constexpr auto replyPhrases = std::to_array<QStringView>(
    {u"could you", u"can you", u"please", u"what do you think", u"?", u"let me know"});

inline constexpr auto codeMarkers = std::to_array<QStringView>(
    {u"func ", u"struct ", u"class ", u"import ", u"let ", u"var ", u"return ", u"=>", u"{", u"}"});

}  // namespace lumeno::word_lists
