import QtQuick
import "../../view_kit/qml"

// Over the whole window: the installed applications, to choose one of. Typing narrows them down, arrows move, Return
// chooses, Escape changes nothing.
FocusScope {
    id: sheet

    readonly property var applications: settings.applications
    readonly property string chosenName: list.currentItem ? list.currentItem.text : ""

    signal chosen(string name)
    signal dismissed

    Accessible.role: Accessible.Dialog
    Accessible.name: message.text

    Keys.onEscapePressed: dismissed()

    function start() {
        applications.load()
        search.forceActiveFocus()
    }
    function choose() {
        const name = applications.nameAt(list.currentIndex)
        if (name)
            chosen(name)
    }

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0, 0, 0, 0.28)
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: {} // what is behind stays where it is
    }

    Item {
        id: card
        anchors.centerIn: parent
        width: sheet.width - 96
        height: Math.min(sheet.height - 32, 480)

        Surface {
            anchors.fill: parent
            margin: 10
            radius: 12
            fill: theme.colors.window
            outerEdge: theme.colors.menuEdge
            nearShadow: theme.colors.shadowNear
            farShadow: theme.colors.shadowFar
        }
        Label {
            id: message
            x: 18
            y: 16
            width: card.width - 36
            text: "Choose an app where Lumeno should stay silent."
            font.pixelSize: theme.metrics.subheadline
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
        }
        SearchField {
            id: search
            anchors.top: message.bottom
            anchors.topMargin: 12
            x: 18
            width: card.width - 36
            hint: "Search applications"
            onTextChanged: {
                sheet.applications.filter = text
                list.begin()
            }
            onAccepted: sheet.choose()
            onMoved: delta => list.select(list.currentIndex + delta)
            KeyNavigation.tab: cancel
            KeyNavigation.backtab: disable.enabled ? disable : cancel
        }
        Surface {
            anchors.fill: list
            margin: 1
            radius: 10
            fill: theme.colors.group
            outerEdge: theme.colors.groupEdge
        }
        ListView {
            id: list
            anchors.top: search.bottom
            anchors.topMargin: 12
            anchors.bottom: cancel.top
            anchors.bottomMargin: 14
            x: 18
            width: card.width - 36
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            // All of them: what has no item cannot be reached by other means than keys.
            cacheBuffer: 100000
            model: sheet.applications
            currentIndex: -1
            highlightFollowsCurrentItem: false

            Accessible.role: Accessible.List
            Accessible.name: "Applications"

            onCountChanged: begin()

            // The first one found is the one meant; without a search nothing is.
            function begin() {
                currentIndex = search.text && count > 0 ? 0 : -1
            }
            function select(index) {
                currentIndex = Math.max(0, Math.min(count - 1, index))
                positionViewAtIndex(currentIndex, ListView.Contain)
            }

            delegate: ApplicationRow {
                // Where it will be: it is made before it is placed.
                readonly property real place: list.originY + index * height

                width: list.width
                text: model.name
                iconName: model.iconName
                selected: ListView.isCurrentItem
                isNear: place > list.contentY - 3 * height && place < list.contentY + list.height + 2 * height
                onActivated: list.select(index)
                onConfirmed: sheet.choose()
            }
        }
        Loader {
            anchors.centerIn: list
            active: list.count === 0
            sourceComponent: Label {
                text: sheet.applications.isLoading ? "Looking for applications…" : "No application found."
                font.pixelSize: theme.metrics.subheadline
                color: theme.colors.windowSecondary
            }
        }
        WindowButton {
            id: cancel
            anchors.right: disable.left
            anchors.rightMargin: 8
            anchors.bottom: disable.bottom
            text: "Cancel"
            onActivated: sheet.dismissed()
            KeyNavigation.tab: disable.enabled ? disable : search
            KeyNavigation.backtab: search
        }
        WindowButton {
            id: disable
            anchors.right: parent.right
            anchors.rightMargin: 18
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 18
            text: "Disable"
            prominent: true
            enabled: sheet.chosenName
            onActivated: sheet.choose()
            KeyNavigation.tab: search
            KeyNavigation.backtab: cancel
        }
    }
}
