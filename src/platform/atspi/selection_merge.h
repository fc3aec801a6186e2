#pragma once

#include <QString>
#include <optional>

namespace lumeno::atspi {

/// What the focused object says about its selection.
enum class FocusKnowledge {
  nothing,      ///< there is no focused object, or it is not a text
  noSelection,  ///< a focused text says that nothing is selected
  selection,    ///< a focused text says what is selected
  secret,       ///< a password field
};

/// Joins what the focused object says with what the window offers as freshly selected: each knows things that
/// the other does not. `offered` is absent when nothing fresh is offered. Absent means that nothing is
/// selected.
[[nodiscard]] std::optional<QString> mergeSelection(FocusKnowledge knowledge, const QString& focusText,
                                                    const std::optional<QString>& offered);

}  // namespace lumeno::atspi
