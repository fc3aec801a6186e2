import QtQuick

// A letter with one passage that can be read, and gets selected word by word.
DemoWindow {
    id: mail

    property string text
    property var linesBefore
    property var linesAfter
    property int selectedWords

    // Where the passage begins.
    readonly property real textTop: 28 + 20 + linesBefore.length * 20

    height: textTop + passage.height + 14 + linesAfter.length * 20 + 20

    component GreyLine: Rectangle {
        x: 22
        height: 8
        radius: 4
        color: colors.pageLine
    }
    Repeater {
        model: mail.linesBefore
        GreyLine {
            y: 20 + index * 20
            width: 340 * modelData
        }
    }
    Flow {
        id: passage
        x: 22
        y: mail.textTop - 28
        width: 341

        Repeater {
            // Each word with the blank behind it, which is selected with it.
            model: mail.text.match(/\S+ ?/g)

            Item {
                readonly property bool isSelected: index < mail.selectedWords

                width: word.implicitWidth
                height: 22

                Rectangle {
                    y: 1
                    // Under the seam between two words as well.
                    width: Math.ceil(parent.width + 0.5)
                    height: 20
                    visible: parent.isSelected
                    color: colors.selection
                }
                DemoText {
                    id: word
                    height: parent.height
                    text: modelData
                    color: parent.isSelected ? theme.colors.label : colors.pageInk
                }
            }
        }
    }
    Repeater {
        model: mail.linesAfter
        GreyLine {
            y: mail.textTop - 28 + passage.height + 14 + index * 20
            width: 340 * modelData
        }
    }
}
