#include "platform/atspi/atspi_text.h"

namespace lumeno::atspi {

using namespace Qt::StringLiterals;

namespace {

constexpr auto textInterface = "org.a11y.atspi.Text";
// A selection of more than this counts as none; it is never cut.
constexpr qsizetype largestSelection = qsizetype{16} * 1024 * 1024;
// Documents nest: page, section, paragraph, link. Deeper ones are malformed or hostile.
constexpr int deepestNesting = 40;
constexpr int mostEmbeddedObjects = 2000;

std::optional<std::pair<int, int>> selectedRange(Client& client, const Reference& object) {
  const auto count = client.call(object, textInterface, "GetNSelections");
  if (!count || count->isEmpty()) return std::nullopt;
  if (count->first().toInt() <= 0) return std::pair(0, 0);
  const auto range = client.call(object, textInterface, "GetSelection", {0});
  if (!range || range->size() < 2) return std::nullopt;
  // Some applications report the anchor first.
  const auto [start, end] = std::minmax({range->at(0).toInt(), range->at(1).toInt()});
  return std::pair(start, end);
}

std::optional<QString> textOf(Client& client, const Reference& object, int start, int end) {
  const auto text = client.call(object, textInterface, "GetText", {start, end});
  if (!text || text->isEmpty() || text->first().typeId() != QMetaType::QString) return std::nullopt;
  return text->first().toString();
}

std::optional<Reference> embeddedObject(Client& client, const Reference& object, int offset) {
  const auto index = client.call(object, "org.a11y.atspi.Hypertext", "GetLinkIndex", {offset});
  if (!index || index->isEmpty() || index->first().toInt() < 0) return std::nullopt;
  const auto link =
      client.callForReference(object, "org.a11y.atspi.Hypertext", "GetLink", {index->first().toInt()});
  if (!link) return std::nullopt;
  return client.callForReference(*link, "org.a11y.atspi.Hyperlink", "GetObject", {0});
}

/// Walks the selection of a document. Containers hold nothing but marks for what they contain, leaves hold
/// text.
class DocumentWalk {
 public:
  explicit DocumentWalk(Client& client) : client_(client) {}

  bool visit(const Reference& object, int start, int end, int depth) {
    const auto text = textOf(client_, object, start, end);
    if (!text || depth > deepestNesting) return false;
    int offset = start;  // in characters, as the application counts
    int runStart = start;
    for (qsizetype i = 0; i < text->size(); ++i, ++offset) {
      const QChar c = text->at(i);
      if (c.isHighSurrogate()) ++i;
      if (c != objectReplacement) {
        result_.text +=
            QStringView(*text).sliced(i - (c.isHighSurrogate() ? 1 : 0), c.isHighSurrogate() ? 2 : 1);
        continue;
      }
      noteRun(object, runStart, offset);
      runStart = offset + 1;
      if (++embedded_ > mostEmbeddedObjects || result_.text.size() > largestSelection) return false;
      const auto child = embeddedObject(client_, object, offset);
      if (!child) {
        if (client_.isIncomplete()) return false;  // a selection is never cut
        continue;                                  // an image or a control
      }
      const auto role = client_.role(*child);
      if (role == rolePasswordText) continue;
      // A block of its own starts a new line.
      if (!result_.text.isEmpty() && !result_.text.endsWith(u'\n') && isBlock(role)) result_.text += u'\n';
      const auto range = selectedRange(client_, *child);
      const bool inner = range && range->second > range->first;
      if (!visit(*child, inner ? range->first : 0, inner ? range->second : -1, depth + 1) &&
          client_.isIncomplete()) {
        return false;
      }
    }
    noteRun(object, runStart, offset);
    return true;
  }

  SelectedText result_;

 private:
  void noteRun(const Reference& object, int start, int end) {
    if (end <= start) return;
    if (result_.first.isNull()) {
      result_.first = object;
      result_.firstStart = start;
      result_.firstEnd = end;
    }
    result_.last = object;
    result_.lastStart = start;
    result_.lastEnd = end;
  }

  static bool isBlock(std::optional<uint32_t> role) {
    // All else stands on lines of its own.
    return role && *role != roleLink && *role != roleStatic && *role != roleLabel && *role != roleImage;
  }

  Client& client_;
  int embedded_ = 0;
};

}  // namespace

std::optional<SelectedText> readSelectedText(Client& client, const Reference& object) {
  const auto range = selectedRange(client, object);
  if (!range) return std::nullopt;
  const auto [start, end] = *range;
  SelectedText selected{.text = {},
                        .start = start,
                        .end = end,
                        .first = object,
                        .firstStart = start,
                        .firstEnd = end,
                        .last = object,
                        .lastStart = start,
                        .lastEnd = end};
  if (end <= start) return selected;
  if (end - start > largestSelection) return std::nullopt;
  const auto text = textOf(client, object, start, end);
  if (!text) return std::nullopt;
  if (!text->contains(objectReplacement)) {
    selected.text = *text;
    return selected;
  }
  DocumentWalk walk(client);
  if (!walk.visit(object, start, end, 0) || client.isIncomplete()) return std::nullopt;
  walk.result_.start = start;
  walk.result_.end = end;
  return std::move(walk.result_);
}

std::optional<Rect> rangeExtents(Client& client, const Reference& object, int start, int end) {
  // Some applications answer the first question after a change of layout with an empty rectangle.
  for (int attempt = 0; attempt < 2; ++attempt) {
    const auto answer =
        client.call(object, textInterface, "GetRangeExtents", {start, end, coordinateTypeScreen});
    if (!answer || answer->size() < 4) return std::nullopt;
    const Rect rect{double(answer->at(0).toInt()), double(answer->at(1).toInt()),
                    double(answer->at(2).toInt()), double(answer->at(3).toInt())};
    if (rect.width > 0 || rect.height > 0) return rect;
  }
  return std::nullopt;
}

}  // namespace lumeno::atspi
