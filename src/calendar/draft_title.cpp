#include "calendar/draft_title.h"

#include "base/text.h"

namespace lumeno {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestTitle = 80;  // characters as the user sees them

/// The first line that is not empty; the text itself where there is none.
QStringView firstLine(QStringView text) {
  const auto lines = text::lines(text);
  return lines.empty() ? text : lines.front();
}

}  // namespace

QString draftTitle(QStringView text) {
  QStringView title = text::trimmed(firstLine(text));
  // The first line was blank.
  if (title.isEmpty()) title = text::trimmed(text);
  if (title.isEmpty()) return u"Event"_s;
  if (!text::hasMoreCharactersThan(title, longestTitle)) return title.toString();
  return text::firstCharacters(title, longestTitle).toString() + u'…';
}

}  // namespace lumeno
