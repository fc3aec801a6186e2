import QtQuick

// The colours of the onboarding window that no other view has.
QtObject {
    readonly property bool dark: theme.dark

    readonly property color base: dark ? "#17181E" : "#F6F5FB"
    readonly property color highlight: dark ? "#8E8BFF" : "#5B58E6"
    readonly property color card: dark ? Qt.rgba(1, 1, 1, 0.06) : Qt.rgba(1, 1, 1, 0.74)
    readonly property var blobs: dark ? ["218F84FF", "2138C3CF", "21FFB07A"] : ["338F84FF", "2938C3CF", "21FFB07A"]

    // The windows in the demo.
    readonly property color page: dark ? "#191A1E" : "#FFFFFF"
    readonly property color pageEdge: dark ? Qt.rgba(0, 0, 0, 0.7) : ink(0.22)
    readonly property color pageInk: dark ? "#A7A9B4" : "#3C3E48"
    readonly property color pageButton: Qt.alpha(dark ? "#6D6F7B" : "#8A8C97", 0.45)
    readonly property color pageLine: dark ? Qt.rgba(1, 1, 1, 0.09) : ink(0.10)
    readonly property color selection: dark ? "#2F4C86" : "#BFD7FF"

    function ink(alpha) {
        return Qt.rgba(16 / 255, 18 / 255, 32 / 255, alpha)
    }
}
