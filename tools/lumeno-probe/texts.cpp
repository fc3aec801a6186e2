#include "ai/prompt/prompt.h"
#include "calendar/draft_title.h"
#include "hotkey/key_names.h"
#include "operations.h"
#include "suggest/local_templates.h"

namespace lumeno::probe {

using namespace Qt::StringLiterals;

QJsonObject localTemplate(const Request& request) {
  const SelectedContext context = request.context();
  return {{"text"_L1, ActionRunner().localText(request.kind("kind"_L1), context.selectedText, context)}};
}

QJsonObject prompt(const Request& request) {
  ActionSuggestion suggestion;
  suggestion.title = request.string("title"_L1);
  suggestion.preview = request.string("preview"_L1);
  return {{"prompt"_L1, buildPrompt(suggestion, request.context())}};
}

QJsonObject draftTitle(const Request& request) {
  return {{"title"_L1, lumeno::draftTitle(request.string("text"_L1))}};
}

QJsonObject shortcut(const Request& request) {
  const auto config = hotkeyConfigFromJson(request.fields());
  if (!config) throw RequestError{u"no valid \"keyCode\" and \"modifiers\""_s};
  return {{"display"_L1, displayString(*config)}};
}

}  // namespace lumeno::probe
