#include "fuzz_text.h"
#include "suggest/suggestion_engine.h"

// The whole pass: ranked, within bounds, and the same for the same text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace lumeno;
  static const SuggestionEngine engine;
  const detect::Surroundings surroundings{QDateTime(QDate(2026, 5, 1), QTime(12, 0), Qt::UTC),
                                          QTimeZone::utc(), QLocale(QLocale::English, QLocale::UnitedStates)};
  for (const QString& text : fuzz::texts(data, size)) {
    SelectedContext context;
    context.selectedText = text;
    context.sourceApp = QStringLiteral("Slack");
    const std::vector<ActionSuggestion> suggestions = engine.suggestions(context, {}, surroundings);
    fuzz::require(suggestions.size() <= 15);
    double last = 1;
    for (const ActionSuggestion& suggestion : suggestions) {
      fuzz::require(suggestion.confidence <= last && suggestion.confidence >= 0.4);
      last = suggestion.confidence;
    }
  }
  return 0;
}
