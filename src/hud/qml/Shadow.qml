import QtQuick

// The shadow round a rounded rectangle that fills this item: a nine-patch painted once, at the screen's own pixels.
Item {
    id: shadow

    property real radius
    property int margin: 10
    property color near: theme.colors.shadowNear
    property color far: theme.colors.shadowFar

    // No wider than it takes for the corners not to reach each other: the middle is stretched.
    readonly property int core: 2 * (Math.ceil(radius) + 9)
    readonly property int coreWidth: Math.min(core, Math.floor(width / 2) * 2)
    readonly property int coreHeight: Math.min(core, Math.floor(height / 2) * 2)
    readonly property real pixelRatio: Screen.devicePixelRatio

    BorderImage {
        x: -shadow.margin
        y: -shadow.margin
        width: (shadow.width + 2 * shadow.margin) * shadow.pixelRatio
        height: (shadow.height + 2 * shadow.margin) * shadow.pixelRatio
        scale: 1 / shadow.pixelRatio
        transformOrigin: Item.TopLeft
        visible: shadow.coreWidth > 0 && shadow.coreHeight > 0
        source: visible ? ["image://shadow", shadow.coreWidth, shadow.coreHeight, shadow.radius, shadow.margin,
                           shadow.pixelRatio, hex(shadow.near), hex(shadow.far)].join("/") : ""
        border.left: (shadow.coreWidth / 2 - 1 + shadow.margin) * shadow.pixelRatio
        border.right: border.left
        border.top: (shadow.coreHeight / 2 - 1 + shadow.margin) * shadow.pixelRatio
        border.bottom: border.top

        function hex(value) {
            const digits = String(value).slice(1)
            return digits.length === 6 ? "ff" + digits : digits
        }
    }
}
