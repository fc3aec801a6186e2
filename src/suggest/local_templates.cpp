#include "suggest/local_templates.h"

#include <algorithm>

#include "base/text.h"
#include "suggest/filename_slug.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

QString firstLine(QStringView text) {
  const auto lines = text::lines(text);
  return (lines.empty() ? text : lines.front()).toString();
}

QString firstSentence(QStringView text) {
  qsizetype start = 0;
  while (start < text.size() && text[start] == u'.') ++start;
  if (start == text.size()) return text::trimmed(text).toString();
  const qsizetype end = text.indexOf(u'.', start);
  return text::trimmed(text.sliced(start, (end < 0 ? text.size() : end) - start)).toString();
}

}  // namespace

QString ActionRunner::localText(IntentKind kind, const QString& text, const SelectedContext& context) const {
  const QString& app = context.sourceApp;
  const QString& window = context.windowTitle;
  switch (kind) {
    case IntentKind::error:
      return "Likely fix:\n"
             "1. Check the first failing symbol or missing dependency in the selected error.\n"
             "2. Confirm the setup path in "_L1 +
             app + " for "_L1 + window +
             ".\n"
             "3. Apply the smallest ancestor/configuration change before changing call sites.\n\n"
             "Selected diagnostic:\n"_L1 +
             firstLine(text);
    case IntentKind::writing:
      return "Summary:\n- "_L1 + firstSentence(text) +
             "\n- Main ask: clarify the point and reduce the amount of surrounding detail."
             "\n- Follow-up: turn the selection into a shorter version before sending."_L1;
    case IntentKind::date:
      return "Calendar draft:\nTitle: "_L1 + text + "\nSource: "_L1 + app + ", "_L1 + window +
             "\nNotes: Created locally from the selected text."_L1;
    case IntentKind::code: {
      const size_t lineCount = std::max<size_t>(text::lines(text).size(), 1);
      return "Code read:\nThis selection appears to define logic across "_L1 + QString::number(lineCount) +
             " line(s). Start by checking the inputs, branch conditions, and return value. If improving it, "
             "preserve behavior first and extract only repeated decision logic."_L1;
    }
    case IntentKind::filename:
      return filenameSlug(text);
    case IntentKind::reply:
      return u"Thanks for sending this over. I can take a look and come back with specific notes. My first "
             u"pass "
             "will focus on whether the tone is clear, warm, and direct enough for the intended audience."_s;
    case IntentKind::definition:
      return text + ": a term or phrase selected in "_L1 + app +
             ". In this context, define it briefly, then explain why it matters to the current document or "
             "workflow."_L1;
    case IntentKind::translate:
      return text +
             "\n\nTranslation needs Apple Intelligence or a running Ollama model. Pick a backend in the "
             "Lumeno "
             "menu."_L1;
    case IntentKind::explain:
      return "Selected from "_L1 + app + ": "_L1 + firstSentence(text) +
             ". Turn on Apple Intelligence or Ollama for a full explanation."_L1;
    case IntentKind::unknown:
      return u"Select text in another app to see suggestions."_s;
    case IntentKind::address:
    case IntentKind::link:
    case IntentKind::email:
    case IntentKind::phone:
    case IntentKind::grammar:
    case IntentKind::tone:
      return text;
  }
  return text;
}

}  // namespace lumeno
