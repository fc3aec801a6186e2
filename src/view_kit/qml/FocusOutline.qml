import QtQuick

// Round whatever has the keyboard focus, two pixels off.
Surface {
    anchors.fill: parent
    anchors.margins: -4
    visible: parent.activeFocus
    radius: height / 2
    innerEdge: theme.colors.accentLine
    innerEdgeWidth: 2
}
