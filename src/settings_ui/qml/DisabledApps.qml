import QtQuick
import "../../view_kit/qml"

// The applications in which the program keeps silent, and the way to add one.
SettingsGroup {
    id: group

    title: "Disabled apps"

    Loader {
        width: parent.width
        active: settings.disabledApps.length === 0
        visible: active
        sourceComponent: TextRow { text: "Lumeno runs everywhere. Add an app to silence it there." }
    }
    Repeater {
        model: settings.disabledApps

        SettingsRow {
            text: modelData.title

            Item {
                width: 22 // the button's own room reaches into the margin
                height: 28

                RemoveButton {
                    subject: modelData.title
                    onActivated: {
                        // The button goes with its row.
                        if (activeFocus)
                            add.forceActiveFocus()
                        settings.enableApp(modelData.name)
                    }
                }
            }
        }
    }
    Item {
        width: parent.width
        height: add.height + 12

        Hairline {
            x: 14
            width: parent.width - x
        }
        WindowButton {
            id: add
            x: 14
            y: 6
            text: "Add App…"
            onActivated: sheet.open()
        }
    }
    Loader {
        id: sheet

        property Item focusBefore

        active: false
        parent: group.Window.contentItem
        anchors.fill: parent
        sourceComponent: ApplicationSheet {
            onChosen: name => {
                settings.disableApp(name)
                sheet.close()
            }
            onDismissed: sheet.close()
        }
        onLoaded: item.start()

        function open() {
            focusBefore = group.Window.activeFocusItem
            active = true
        }
        function close() {
            active = false
            settings.applications.clear()
            if (focusBefore)
                focusBefore.forceActiveFocus()
        }
    }
    Component.onDestruction: settings.applications.clear()
}
