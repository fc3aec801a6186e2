import QtQuick
import "../../view_kit/qml"

// The surface that everything sits on. What it holds is clipped to its bounds.
Item {
    id: card

    property real radius: 24
    default property alias content: clip.data

    Surface {
        anchors.fill: parent
        radius: card.radius
        margin: 10
        fill: theme.colors.card
        innerEdge: theme.colors.cardRim
        topLight: theme.colors.cardRimTop
        outerEdge: theme.colors.cardEdge
        nearShadow: theme.opaque ? "transparent" : theme.colors.shadowNear
        farShadow: theme.opaque ? "transparent" : theme.colors.shadowFar
    }
    Item {
        id: clip
        anchors.fill: parent
        clip: true
    }
}
