#include "platform/x11/x11_panel_shape.h"

#include <xcb/shape.h>

#include "platform/x11/x11_compositor.h"
#include "platform/x11/x11_shape.h"
#include "platform/x11/x11_toolkit.h"

namespace lumeno {

X11PanelShape::X11PanelShape(X11Connection& connection, QQuickWindow& window,
                             std::function<PanelShape()> shape)
    : connection_(connection), window_(window), shape_(std::move(shape)), toolkit_(toolkitConnection()) {}

void X11PanelShape::apply(bool hasCompositor) {
  auto [card, radius] = shape_();
  if (card.width <= 0 || card.height <= 0) {  // there is no content yet
    card = {0, 0, static_cast<double>(window_.width()), static_cast<double>(window_.height())};
    radius = 0;
  }
  const double scale = window_.devicePixelRatio();
  const auto rectangles = roundedRectangles(
      {card.x * scale, card.y * scale, card.width * scale, card.height * scale}, radius * scale);

  std::vector<uint32_t> region;
  for (const auto& [x, y, width, height] : rectangles) {
    region.insert(region.end(), {static_cast<uint32_t>(x), static_cast<uint32_t>(y), width, height});
  }
  if (region == applied_ && hasCompositor == appliedCompositor_) return;

  const auto window = static_cast<xcb_window_t>(window_.winId());
  const auto count = static_cast<uint32_t>(rectangles.size());
  const auto cut = [&](xcb_shape_kind_t kind) {
    xcb_shape_rectangles(toolkit_, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_BANDED, window, 0, 0, count,
                         rectangles.data());
  };
  cut(XCB_SHAPE_SK_INPUT);
  const xcb_atom_t blur = connection_.atom(blurRegionProperty);
  if (hasCompositor) {
    xcb_shape_mask(toolkit_, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window, 0, 0, XCB_PIXMAP_NONE);
    xcb_change_property(toolkit_, XCB_PROP_MODE_REPLACE, window, blur, XCB_ATOM_CARDINAL, 32,
                        static_cast<uint32_t>(region.size()), region.data());
  } else {
    cut(XCB_SHAPE_SK_BOUNDING);
    xcb_delete_property(toolkit_, window, blur);
  }
  xcb_flush(toolkit_);
  applied_ = std::move(region);
  appliedCompositor_ = hasCompositor;
}

}  // namespace lumeno
