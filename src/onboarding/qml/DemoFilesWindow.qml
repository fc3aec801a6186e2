import QtQuick

// A folder with three pictures that get selected one by one, and what becomes of them.
DemoWindow {
    id: files

    property int selectedFiles
    property bool isConverted

    height: 254

    component Entry: Item {
        property string title
        property string picture
        property bool isSelected

        width: 88
        height: 78

        Rectangle {
            anchors.fill: parent
            visible: parent.isSelected
            radius: 9
            color: colors.selection
        }
        Image {
            x: 18
            y: 7
            width: 52
            height: 46
            sourceSize: Qt.size(width, height)
            source: "image://scenery/" + parent.picture
        }
        DemoText {
            y: 58
            width: parent.width
            height: 14
            text: parent.title
            font.pixelSize: 11
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 8
            horizontalAlignment: Text.AlignHCenter
            color: parent.isSelected ? theme.colors.label : colors.pageInk
        }
    }
    Repeater {
        model: ["IMG_2381.HEIC", "IMG_2382.HEIC", "IMG_2383.HEIC"]
        Entry {
            x: 10 + index * 92
            y: 16
            title: modelData
            picture: "photo-" + index
            isSelected: index < files.selectedFiles
        }
    }
    Entry {
        visible: files.isConverted
        x: 10 + 3 * 92
        y: 16
        title: "png"
        picture: "folder"
    }
}
