import QtQuick
import "../../view_kit/qml"

// The event that a date becomes.
Item {
    id: event

    implicitHeight: details.height + 14 + 30

    Rectangle {
        id: details
        width: parent.width
        height: 12 + rows.height + 12
        radius: 12
        color: Qt.alpha(theme.colors.quaternary, theme.colors.quaternary.a * 0.4)

        Column {
            id: rows
            x: 12
            y: 12
            spacing: 10

            Repeater {
                model: [
                    {symbol: "textformat", caption: "Title", value: demo.invitation},
                    {symbol: "clock", caption: "When", value: "Thursday, Jun 12 · 1:00 PM"},
                    {symbol: "calendar", caption: "Calendar", value: "Personal"}
                ]

                Item {
                    width: 300
                    height: 34

                    Symbol {
                        x: 1.5
                        name: modelData.symbol
                        weight: "semibold"
                        color: theme.colors.secondary
                    }
                    DemoText {
                        x: 28
                        height: 14
                        text: modelData.caption
                        font.pixelSize: 11
                        color: theme.colors.tertiary
                    }
                    DemoText {
                        x: 28
                        y: 15
                        height: 19
                        text: modelData.value
                    }
                }
            }
        }
    }
    DemoButton {
        y: details.height + 14
        symbol: "chevron.left"
        symbolWeight: "semibold"
    }
    DemoButton {
        x: parent.width - width
        y: details.height + 14
        prominent: true
        symbol: "calendar.badge.plus"
        text: "Add to Calendar"
    }
}
