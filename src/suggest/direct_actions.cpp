#include "suggest/direct_actions.h"

#include <unicode/uchar.h>

#include <QSet>

#include "base/text.h"
#include "suggest/suggestion_engine.h"
#include "suggest/text_units.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

/// What a telephone dials: everything with a numeric value, and plus signs.
QString dialledDigits(const QString& number) {
  const scan::Units units(number);
  QString digits;
  for (qsizetype i = 0; i < units.size();) {
    const char32_t c = scan::codePointAt(units, i);
    if (c == U'+' || u_getNumericValue(static_cast<UChar32>(c)) != U_NO_NUMERIC_VALUE) {
      digits += QStringView(number).sliced(i, U16_LENGTH(c));
    }
    i += U16_LENGTH(c);
  }
  return digits;
}

ActionSuggestion phoneSuggestion(const QString& number, double confidence) {
  const QUrl url("tel:"_L1 + dialledDigits(number), QUrl::StrictMode);
  return {.kind = IntentKind::phone,
          .title = "Call "_L1 + number,
          .actionTitle = u"Call"_s,
          .summary = u"Start a call to this number."_s,
          .rationale = u"Detected a phone number in the selection."_s,
          .confidence = confidence,
          .preview = number,
          .directURL = url.isValid() ? std::optional(url) : std::nullopt};
}

ActionSuggestion emailSuggestion(const QUrl& url, double confidence) {
  const QString address = url.toString(QUrl::FullyEncoded).sliced("mailto:"_L1.size());
  return {.kind = IntentKind::email,
          .title = "Email "_L1 + address,
          .actionTitle = u"Email"_s,
          .summary = u"Compose a new message to this address."_s,
          .rationale = u"Detected an email address in the selection."_s,
          .confidence = confidence,
          .preview = address,
          .directURL = url};
}

ActionSuggestion linkSuggestion(const QUrl& url, double confidence) {
  return {.kind = IntentKind::link,
          .title = u"Open link"_s,
          .actionTitle = u"Open"_s,
          .summary = linkDisplay(url),
          .rationale = u"Detected a web link in the selection."_s,
          .confidence = confidence,
          .preview = url.toString(QUrl::FullyEncoded),
          .directURL = url};
}

IntentKind kindOf(const detect::DirectMatch& match) {
  if (match.type == detect::DirectMatch::Type::phone) return IntentKind::phone;
  return match.url.scheme() == "mailto"_L1 ? IntentKind::email : IntentKind::link;
}

ActionSuggestion suggestionFor(IntentKind kind, const detect::DirectMatch& match, double confidence) {
  if (kind == IntentKind::phone) return phoneSuggestion(match.number, confidence);
  if (kind == IntentKind::email) return emailSuggestion(match.url, confidence);
  return linkSuggestion(match.url, confidence);
}

}  // namespace

std::vector<ActionSuggestion> directActions(TextAnalysis& analysis) {
  const QStringView text = analysis.trimmedText();
  std::vector<ActionSuggestion> actions;
  QSet<IntentKind> made;
  for (const detect::DirectMatch& match : analysis.linksAndFirstPhone()) {
    const IntentKind kind = kindOf(match);
    if (made.contains(kind)) continue;
    made.insert(kind);
    const bool isWholeSelection = text::trimmed(text.sliced(match.start, match.length)) == text;
    actions.push_back(suggestionFor(kind, match, isWholeSelection ? 0.97 : 0.72));
  }
  return actions;
}

QString linkDisplay(const QUrl& url) {
  const QString host = url.host();
  const QString path = url.path(QUrl::FullyDecoded);
  const QString start = host.isEmpty() ? url.toString(QUrl::FullyEncoded) : host;
  return path.isEmpty() || path == "/"_L1 ? start : start + path;
}

}  // namespace lumeno
