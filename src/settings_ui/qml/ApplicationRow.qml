import QtQuick
import "../../view_kit/qml"

// One installed application. It draws itself, and looks for its icon, only while it is near what can be seen.
Item {
    id: row

    property string text
    property string iconName
    property bool selected
    property bool isNear

    signal activated
    signal confirmed

    height: Math.max(36, theme.metrics.subheadline + 23)

    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.onPressAction: activated()

    Loader {
        anchors.fill: parent
        active: row.isNear
        sourceComponent: Item {
            readonly property bool hasIcon: settings.applications.hasIcon(row.iconName)

            Surface {
                anchors.fill: parent
                anchors.margins: 3
                radius: 7
                fill: row.selected ? theme.colors.accentFill
                    : mouse.containsMouse ? theme.colors.quaternary : "transparent"
            }
            Image {
                x: 14
                anchors.verticalCenter: parent.verticalCenter
                visible: hasIcon
                width: 24
                height: 24
                sourceSize: Qt.size(24, 24)
                source: hasIcon ? "image://application/" + encodeURIComponent(row.iconName) : ""
            }
            Surface {
                x: 14
                anchors.verticalCenter: parent.verticalCenter
                visible: !hasIcon
                width: 24
                height: 24
                radius: 6.72
                fill: theme.colors.quaternary

                Symbol {
                    anchors.centerIn: parent
                    name: "square.grid.2x2"
                    size: 15
                    color: row.selected ? theme.colors.onAccent : theme.colors.windowSecondary
                }
            }
            Label {
                x: 48
                width: row.width - x - 14
                height: row.height
                text: row.text
                font.pixelSize: theme.metrics.subheadline
                color: row.selected ? theme.colors.onAccent : theme.colors.label
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            MouseArea {
                id: mouse
                anchors.fill: parent
                hoverEnabled: true
                onClicked: row.activated()
                onDoubleClicked: {
                    row.activated()
                    row.confirmed()
                }
            }
        }
    }
}
