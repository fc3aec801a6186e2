import QtQuick

// One line symbol in one colour. Its weight is that of the text beside it: "regular", "semibold" or "bold".
Image {
    property string name
    property color color: theme.colors.label
    property string weight: "regular"
    property int size: 15

    width: size
    height: size
    sourceSize: Qt.size(size, size)
    source: name ? "image://symbol/" + name + "/" + weight + "/" + String(color).slice(1) : ""
}
