import QtQuick
import "../../view_kit/qml"

// A row with a switch.
SettingsRow {
    id: row

    property bool checked

    signal toggled(bool on)

    spoken: false

    Toggle {
        text: row.text
        checked: row.checked
        onToggled: on => row.toggled(on)
    }
}
