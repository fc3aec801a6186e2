#pragma once

#include <QColor>
#include <QObject>
#include <QVariantMap>

#include "view_kit/accent.h"

namespace lumeno {

/// What the window can show through itself.
enum class Backdrop {
  opaque,       ///< nothing: no compositor, or high contrast is wanted
  translucent,  ///< what is behind, sharp
  blurred,      ///< what is behind, blurred by the desktop
};

/// Every colour of the HUD for one scheme, material and accent.
struct Palette {
  Q_GADGET
  Q_PROPERTY(QColor label MEMBER label)
  Q_PROPERTY(QColor secondary MEMBER secondary)
  Q_PROPERTY(QColor tertiary MEMBER tertiary)
  Q_PROPERTY(QColor quaternary MEMBER quaternary)
  Q_PROPERTY(QColor card MEMBER card)
  Q_PROPERTY(QColor cardFade MEMBER cardFade)
  Q_PROPERTY(QColor cardEdge MEMBER cardEdge)
  Q_PROPERTY(QColor cardRim MEMBER cardRim)
  Q_PROPERTY(QColor cardRimTop MEMBER cardRimTop)
  Q_PROPERTY(QColor shadowNear MEMBER shadowNear)
  Q_PROPERTY(QColor shadowFar MEMBER shadowFar)
  Q_PROPERTY(QColor glass MEMBER glass)
  Q_PROPERTY(QColor glassHover MEMBER glassHover)
  Q_PROPERTY(QColor glassPressed MEMBER glassPressed)
  Q_PROPERTY(QColor glassEdge MEMBER glassEdge)
  Q_PROPERTY(QColor glassEdgeHover MEMBER glassEdgeHover)
  Q_PROPERTY(QColor scrollThumb MEMBER scrollThumb)
  Q_PROPERTY(QColor textSelection MEMBER textSelection)
  Q_PROPERTY(QColor switchTrack MEMBER switchTrack)
  Q_PROPERTY(QColor switchEdge MEMBER switchEdge)
  Q_PROPERTY(QColor switchKnob MEMBER switchKnob)
  Q_PROPERTY(QColor window MEMBER window)
  Q_PROPERTY(QColor windowSecondary MEMBER windowSecondary)
  Q_PROPERTY(QColor windowTertiary MEMBER windowTertiary)
  Q_PROPERTY(QColor titleArea MEMBER titleArea)
  Q_PROPERTY(QColor group MEMBER group)
  Q_PROPERTY(QColor groupEdge MEMBER groupEdge)
  Q_PROPERTY(QColor hairline MEMBER hairline)
  Q_PROPERTY(QColor control MEMBER control)
  Q_PROPERTY(QColor controlEdge MEMBER controlEdge)
  Q_PROPERTY(QColor controlEdgeHover MEMBER controlEdgeHover)
  Q_PROPERTY(QColor field MEMBER field)
  Q_PROPERTY(QColor fieldEdge MEMBER fieldEdge)
  Q_PROPERTY(QColor menu MEMBER menu)
  Q_PROPERTY(QColor menuEdge MEMBER menuEdge)
  Q_PROPERTY(QColor tooltip MEMBER tooltip)
  Q_PROPERTY(QColor tooltipText MEMBER tooltipText)
  Q_PROPERTY(QColor well MEMBER well)
  Q_PROPERTY(QColor wellEdge MEMBER wellEdge)
  Q_PROPERTY(QColor wellFade MEMBER wellFade)
  Q_PROPERTY(QColor done MEMBER done)
  Q_PROPERTY(QColor failed MEMBER failed)
  Q_PROPERTY(QColor caution MEMBER caution)
  Q_PROPERTY(QColor accentFill MEMBER accentFill)
  Q_PROPERTY(QColor onAccent MEMBER onAccent)
  Q_PROPERTY(QColor accentLine MEMBER accentLine)
  Q_PROPERTY(QVariantMap tints MEMBER tints)

 public:
  QColor label;
  QColor secondary;
  QColor tertiary;
  QColor quaternary;
  QColor card;      ///< with the accent's tint; translucent where the backdrop allows
  QColor cardFade;  ///< opaque, what clipped text fades into
  QColor cardEdge;
  QColor cardRim;
  QColor cardRimTop;
  QColor shadowNear;
  QColor shadowFar;
  QColor glass;
  QColor glassHover;
  QColor glassPressed;
  QColor glassEdge;
  QColor glassEdgeHover;
  QColor scrollThumb;
  QColor textSelection;
  QColor switchTrack;  ///< of a switch that is off
  QColor switchEdge;
  QColor switchKnob;
  QColor window;
  QColor windowSecondary;  ///< labels of windows stay as they are where more shows through the card
  QColor windowTertiary;
  QColor titleArea;  ///< behind the tabs of a window
  QColor group;      ///< behind rows that belong together
  QColor groupEdge;
  QColor hairline;
  QColor control;  ///< pickers and buttons of windows
  QColor controlEdge;
  QColor controlEdgeHover;
  QColor field;
  QColor fieldEdge;
  QColor menu;
  QColor menuEdge;
  QColor tooltip;
  QColor tooltipText;
  QColor well;  ///< behind commands and what they wrote
  QColor wellEdge;
  QColor wellFade;  ///< opaque, what text clipped by a well fades into
  QColor done;
  QColor failed;
  QColor caution;
  QColor accentFill;
  QColor onAccent;
  QColor accentLine;
  QVariantMap tints;  ///< by the tint's name

  bool operator==(const Palette&) const = default;
};

/// What a palette depends on.
struct PaletteChoice {
  bool dark = false;
  Backdrop backdrop = Backdrop::translucent;
  GlassIntensity intensity = GlassIntensity::regular;
  AccentTheme accent = AccentTheme::system;
  std::optional<QRgb> desktopAccent;
  bool operator==(const PaletteChoice&) const = default;
};

[[nodiscard]] Palette paletteFor(const PaletteChoice& choice);

}  // namespace lumeno
