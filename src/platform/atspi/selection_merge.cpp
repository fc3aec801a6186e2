#include "platform/atspi/selection_merge.h"

#include <cstring>

#include "platform/atspi/atspi_types.h"

namespace lumeno::atspi {

namespace {

/// The text without marks of embedded objects and with any run of white space as one blank, since toolkits
/// disagree about line breaks between blocks.
QString comparable(const QString& text) {
  QString result;
  result.reserve(text.size());
  bool pendingBlank = false;
  for (const QChar c : text) {
    if (c.isSpace() || c == objectReplacement) {
      pendingBlank = true;
      continue;
    }
    if (pendingBlank && !result.isEmpty()) result += u' ';
    pendingBlank = false;
    result += c;
  }
  return result;
}

/// Linear also for hostile texts, which QString::contains is not.
bool containsText(const QString& text, const QString& part) {
  const auto bytes = [](const QString& s) { return static_cast<size_t>(s.size()) * sizeof(QChar); };
  const void* found = memmem(text.constData(), bytes(text), part.constData(), bytes(part));
  return found &&
         (static_cast<const char*>(found) - reinterpret_cast<const char*>(text.constData())) % 2 == 0;
}

}  // namespace

std::optional<QString> mergeSelection(FocusKnowledge knowledge, const QString& focusText,
                                      const std::optional<QString>& offered) {
  switch (knowledge) {
    case FocusKnowledge::nothing:
      return offered;
    case FocusKnowledge::noSelection:  // what is offered then is a left-over
    case FocusKnowledge::secret:
      return std::nullopt;
    case FocusKnowledge::selection:
      break;
  }
  if (!offered || *offered == focusText) return focusText;
  const QString focus = comparable(focusText);
  const QString other = comparable(*offered);
  // The same text: the offered form has the line breaks as the user sees them. A longer one that contains
  // ours: the focused object knows only its own part, such as one paragraph of several.
  if (other == focus || (other.size() > focus.size() && containsText(other, focus))) return offered;
  if (focusText.contains(objectReplacement)) return offered;
  return focusText;
}

}  // namespace lumeno::atspi
