#include "settings_ui/settings_labels.h"

#include <QColor>
#include <QVariantMap>

#include "view_kit/accent.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

QString label(AccentTheme theme) {
  switch (theme) {
    case AccentTheme::system:
      return u"System"_s;
    case AccentTheme::blue:
      return u"Blue"_s;
    case AccentTheme::indigo:
      return u"Indigo"_s;
    case AccentTheme::purple:
      return u"Purple"_s;
    case AccentTheme::pink:
      return u"Pink"_s;
    case AccentTheme::teal:
      return u"Teal"_s;
    case AccentTheme::orange:
      return u"Orange"_s;
  }
  Q_UNREACHABLE();
}

}  // namespace

QString displayTitle(IntentKind kind) {
  switch (kind) {
    case IntentKind::error:
      return u"Error"_s;
    case IntentKind::writing:
      return u"Writing"_s;
    case IntentKind::date:
      return u"Date"_s;
    case IntentKind::code:
      return u"Code"_s;
    case IntentKind::filename:
      return u"Filename"_s;
    case IntentKind::reply:
      return u"Reply"_s;
    case IntentKind::definition:
      return u"Definition"_s;
    case IntentKind::address:
      return u"Address"_s;
    case IntentKind::link:
      return u"Link"_s;
    case IntentKind::email:
      return u"Email"_s;
    case IntentKind::phone:
      return u"Phone"_s;
    case IntentKind::translate:
      return u"Translate"_s;
    case IntentKind::grammar:
      return u"Grammar"_s;
    case IntentKind::tone:
      return u"Tone"_s;
    case IntentKind::explain:
      return u"Explain"_s;
    case IntentKind::unknown:
      return u"Context"_s;
  }
  Q_UNREACHABLE();
}

QVariantList accentThemeOptions() {
  QVariantList options;
  for (const AccentTheme theme : allAccentThemes) {
    // The fill of a theme of our own is the same in either scheme and on any card.
    const QColor dot =
        theme == AccentTheme::system ? QColor() : accentColors(theme, std::nullopt, false, Qt::white).fill;
    options.append(QVariantMap{{u"label"_s, label(theme)}, {u"dot"_s, dot}});
  }
  return options;
}

QVariantList glassIntensityOptions() {
  return {QVariantMap{{u"label"_s, u"Frosted"_s}}, QVariantMap{{u"label"_s, u"Clear"_s}}};
}

QString capitalizedWords(const QString& text) {
  QString result;
  bool isInside = false;
  for (qsizetype i = 0; i < text.size();) {
    const qsizetype length = text[i].isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
    const QString letter = text.sliced(i, length);
    result += isInside ? letter.toLower() : letter.toUpper();
    isInside = !text[i].isSpace();
    i += length;
  }
  return result;
}

}  // namespace lumeno
