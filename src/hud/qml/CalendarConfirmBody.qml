import QtQuick
import "../../view_kit/qml"

// The event about to be added.
Item {
    id: confirm

    signal confirmed
    signal back

    implicitHeight: details.height + 14 + add.height

    // A column settles with the next frame; the window's size may be wanted before.
    Connections {
        target: hudWindow
        function onSettling() { rows.forceLayout() }
    }
    Surface {
        id: details
        width: parent.width
        height: rows.height + 24
        radius: 12
        fill: Qt.alpha(theme.colors.quaternary, theme.colors.quaternary.a * 0.4)

        Column {
            id: rows
            x: 12
            y: 12
            width: parent.width - 24
            spacing: 10

            DetailRow {
                width: rows.width
                symbol: "textformat"
                caption: "Title"
                value: hud.content.eventTitle
            }
            DetailRow {
                width: rows.width
                symbol: "clock"
                caption: "When"
                value: hud.content.eventTime
            }
            DetailRow {
                width: rows.width
                symbol: "calendar"
                caption: "Calendar"
                value: hud.content.eventCalendar
            }
        }
    }
    GlassButton {
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        iconOnly: true
        text: "Back to suggestions"
        symbol: "chevron.left"
        symbolWeight: "semibold"
        onActivated: confirm.back()
    }
    GlassButton {
        id: add
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        prominent: true
        text: "Add to Calendar"
        hint: "Writes this event to your default calendar"
        symbol: "calendar.badge.plus"
        onActivated: confirm.confirmed()
    }
}
