import QtQuick

// A gap in a column.
Item {
    property int size

    width: 1
    height: size
}
