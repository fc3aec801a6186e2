import QtQuick

// A rounded surface with its edges, light and shadow: a nine-patch painted once, at the screen's own pixels. (A
// Rectangle's corners and sides part company at scales such as 1.5.)
Item {
    id: surface

    property real radius
    property int margin: 0
    property color fill: "transparent"
    property color innerEdge: "transparent"
    property int innerEdgeWidth: 1
    property color topLight: "transparent"
    property color outerEdge: "transparent"
    property color nearShadow: "transparent"
    property color farShadow: "transparent"

    readonly property real pixelRatio: Screen.devicePixelRatio
    // No larger than it takes for the corners and their shadows not to reach each other: the middle is stretched.
    readonly property int core: 2 * (Math.ceil(radius) + margin + 1)
    readonly property int coreWidth: Math.min(core, Math.floor(width / 2) * 2)
    readonly property int coreHeight: Math.min(core, Math.floor(height / 2) * 2)

    BorderImage {
        x: -surface.margin
        y: -surface.margin
        // In device pixels, then scaled back: an image from a provider knows no pixel ratio.
        width: Math.round((surface.width + 2 * surface.margin) * surface.pixelRatio)
        height: Math.round((surface.height + 2 * surface.margin) * surface.pixelRatio)
        scale: 1 / surface.pixelRatio
        transformOrigin: Item.TopLeft
        visible: surface.coreWidth > 0 && surface.coreHeight > 0
        source: visible ? "image://surface/" + [
            surface.coreWidth, surface.coreHeight, Math.min(surface.radius, surface.width / 2, surface.height / 2),
            surface.margin, surface.pixelRatio, digits(surface.fill), digits(surface.innerEdge),
            surface.innerEdgeWidth, digits(surface.topLight), digits(surface.outerEdge), digits(surface.nearShadow),
            digits(surface.farShadow)].join("/") : ""
        border.left: (surface.coreWidth / 2 - 1 + surface.margin) * surface.pixelRatio
        border.right: border.left
        border.top: (surface.coreHeight / 2 - 1 + surface.margin) * surface.pixelRatio
        border.bottom: border.top

        function digits(color) {
            return String(color).slice(1)
        }
    }
}
