import QtQuick

// Three lights that drift behind everything else. They move so slowly that a few steps a second look smooth, and
// each step paints most of the window anew.
Item {
    id: backdrop

    property bool drifting
    property real seconds: 0

    clip: true

    Timer {
        interval: 160 * Math.max(1, Screen.devicePixelRatio)
        repeat: true
        running: backdrop.drifting
        onTriggered: backdrop.seconds += interval / 1000
    }

    component Blob: Image {
        property real restX
        property real restY
        property real period
        readonly property real turn: 2 * Math.PI * backdrop.seconds / period

        // On whole device pixels: that is painted at a fraction of the cost.
        x: snapped(restX + 20 * Math.sin(turn))
        y: snapped(restY + 12 * (1 - Math.cos(turn)))
        sourceSize: Qt.size(width, height)
        cache: false

        function snapped(position) {
            return Math.round(position * Screen.devicePixelRatio) / Screen.devicePixelRatio
        }
    }
    Blob {
        restX: backdrop.width + 120 - 520 - 180
        restY: -140 - 180
        width: 520 + 360
        height: 420 + 360
        period: 18
        source: "image://scenery/blob-" + colors.blobs[0]
    }
    Blob {
        restX: backdrop.width - 120 - 460 - 180
        restY: backdrop.height + 200 - 380 - 180
        width: 460 + 360
        height: 380 + 360
        period: 23
        source: "image://scenery/blob-" + colors.blobs[1]
    }
    Blob {
        restX: -160 - 180
        restY: backdrop.height + 170 - 300 - 180
        width: 360 + 360
        height: 300 + 360
        period: 29
        source: "image://scenery/blob-" + colors.blobs[2]
    }
}
