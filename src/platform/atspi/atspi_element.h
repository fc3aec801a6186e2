#pragma once

#include <memory>
#include <optional>

#include "platform/accessibility.h"
#include "platform/atspi/atspi_client.h"
#include "platform/atspi/atspi_round.h"
#include "platform/atspi/atspi_text.h"
#include "platform/atspi/selection_merge.h"

namespace lumeno::atspi {

/// An element over an object of the accessibility bus, or, where an application has none, a stand-in for its
/// window that knows only the text which the window offers as selected. The focused element joins both
/// sources. Its answers belong to the round in which it was made. Worker only, but for `isSame`.
class Element final : public AccessibleElement {
 public:
  enum class Kind {
    focused,  ///< what the window offers counts
    other,
  };
  /// `client` must outlive the element. Without an object it stands for the window of the round.
  Element(Client& client, std::shared_ptr<const Round> round, std::optional<Reference> object, Kind kind);

  std::optional<QString> selectedText() override;
  std::optional<TextRange> selectedTextRange() override;
  std::optional<Rect> boundsForRange(TextRange range) override;
  // Marker ranges do not exist here: `selectedText` walks through documents itself.
  std::shared_ptr<const TextMarkerRange> selectedTextMarkerRange() override { return nullptr; }
  std::optional<QString> stringForTextMarkerRange(const TextMarkerRange&) override { return std::nullopt; }
  std::optional<QString> attributedStringForTextMarkerRange(const TextMarkerRange&) override {
    return std::nullopt;
  }
  std::optional<Rect> boundsForTextMarkerRange(const TextMarkerRange&) override { return std::nullopt; }
  std::optional<Point> position() override;
  std::optional<Size> size() override;
  std::vector<ElementPtr> children() override;
  ElementRole role() override;
  [[nodiscard]] bool isSame(const AccessibleElement& other) const override;

  /// What has been read so far; `nothing` before the first read.
  [[nodiscard]] FocusKnowledge knowledge() const { return knowledge_; }

 private:
  void readOnce();
  std::optional<Rect> frame();
  /// Device pixels of the object's application to accessibility space, cut to the window; absent outside it.
  std::optional<Rect> onScreen(std::optional<Rect> deviceRect);

  Client& client_;
  std::shared_ptr<const Round> round_;
  std::optional<Reference> object_;
  Kind kind_;
  bool hasRead_ = false;
  FocusKnowledge knowledge_ = FocusKnowledge::nothing;
  ElementRole role_ = ElementRole::other;
  std::optional<SelectedText> selected_;
};

}  // namespace lumeno::atspi
