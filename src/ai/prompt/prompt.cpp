#include "ai/prompt/prompt.h"

#include "base/text.h"

namespace lumeno {

using namespace Qt::StringLiterals;

QString buildPrompt(const ActionSuggestion& suggestion, const SelectedContext& context) {
  return u"You are Lumeno, a private macOS utility that helps with selected text.\n"
         "The user selected text in "_s +
         context.sourceApp + ".\n\nTask: "_L1 + suggestion.title + u" — "_s + suggestion.preview +
         "\n\nSelected text:\n\"\"\"\n"_L1 + text::trimmed(context.selectedText).toString() +
         "\n\"\"\"\n\n"
         "Return only the result, ready to use. Be concise and practical. Do not add\n"
         "preamble, do not mention that you are an AI, and do not repeat the task."_L1;
}

}  // namespace lumeno
