import QtQuick
import "../../view_kit/qml"

// A row with a picker.
SettingsRow {
    id: row

    property var options
    property int current

    signal chosen(int index)

    spoken: false

    Picker {
        text: row.text
        options: row.options
        current: row.current
        onChosen: index => row.chosen(index)
    }
}
