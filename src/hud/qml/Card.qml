import QtQuick

// The surface that everything sits on: shadow, fill, accent tint, content, rim and edge.
Item {
    id: card

    property real radius: 24
    default property alias content: clip.data

    Shadow {
        anchors.fill: parent
        radius: card.radius
        visible: !theme.opaque
    }
    Rectangle {
        anchors.fill: parent
        radius: card.radius
        color: theme.colors.card
    }
    Rectangle {
        anchors.fill: parent
        radius: card.radius
        color: theme.colors.cardTint
        visible: color.a > 0
    }
    Item {
        id: clip
        anchors.fill: parent
        clip: true
    }
    Rectangle {
        anchors.fill: parent
        radius: card.radius
        color: "transparent"
        border.width: 1
        border.color: theme.colors.cardRim
    }
    TopLight {
        radius: card.radius
        color: theme.colors.cardRimTop
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: -1
        radius: card.radius + 1
        color: "transparent"
        border.width: 1
        border.color: theme.colors.cardEdge
    }
}
