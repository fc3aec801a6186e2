#pragma once

#include <QString>
#include <optional>

#include "base/geometry.h"
#include "platform/atspi/atspi_client.h"

namespace lumeno::atspi {

/// What is selected in a text object.
struct SelectedText {
  QString text;   ///< embedded objects replaced by their own selected text
  int start = 0;  ///< in the application's characters
  int end = 0;
  Reference first;     ///< the object that holds the first and the last selected characters: `object` itself,
  int firstStart = 0;  ///< or in documents the leaves
  int firstEnd = 0;
  Reference last;
  int lastStart = 0;
  int lastEnd = 0;
};

/// The selection of a text object; in documents whose text consists of embedded objects (browsers), that of
/// the objects inside, joined in reading order. An empty text means that nothing is selected; absent means
/// that the object cannot tell. Worker only.
[[nodiscard]] std::optional<SelectedText> readSelectedText(Client& client, const Reference& object);

/// The extents of a range in device pixels; absent when the application cannot tell or the rectangle is
/// empty.
[[nodiscard]] std::optional<Rect> rangeExtents(Client& client, const Reference& object, int start, int end);

}  // namespace lumeno::atspi
