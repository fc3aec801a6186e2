import QtQuick
import "../../view_kit/qml"

// The finished text with what can be done with it.
Item {
    id: result

    property string body
    property bool usedAI
    property bool allowReplace

    signal copied
    signal replaced
    signal back

    readonly property bool hasSelection: edit.selectedText !== ""

    implicitHeight: area.implicitHeight + 14 + copy.height

    function scrollBy(pages) {
        area.scrollBy(pages * area.height * 0.9)
    }
    function copySelection() {
        edit.copy()
    }

    ScrollArea {
        id: area
        width: parent.width
        height: implicitHeight
        textHeight: result.body ? edit.implicitHeight : 0

        Accessible.role: Accessible.Grouping
        Accessible.name: "Result"

        SelectableText {
            id: edit
            width: area.width
            text: result.body
            onRevealed: (top, bottom) => area.reveal(top, bottom)
        }
    }

    GlassButton {
        id: backButton
        anchors.bottom: parent.bottom
        iconOnly: true
        text: "Back to suggestions"
        symbol: "chevron.left"
        symbolWeight: "semibold"
        onActivated: result.back()
    }
    Symbol {
        id: badgeSymbol
        anchors.left: backButton.right
        anchors.leftMargin: 8
        anchors.verticalCenter: backButton.verticalCenter
        name: result.usedAI ? "sparkles" : "text.badge.checkmark"
        size: 14
        color: theme.colors.tertiary
    }
    Label {
        anchors.left: badgeSymbol.right
        anchors.leftMargin: 5
        anchors.right: replace.visible ? replace.left : copy.left
        anchors.rightMargin: 8
        anchors.verticalCenter: backButton.verticalCenter
        text: result.usedAI ? "On-device AI" : "Built-in"
        font.pixelSize: theme.metrics.caption2
        font.weight: Font.Medium
        color: theme.colors.tertiary
        elide: Text.ElideRight
        maximumLineCount: 1
    }
    GlassButton {
        id: replace
        visible: result.allowReplace
        anchors.right: copy.left
        anchors.rightMargin: 8
        anchors.bottom: parent.bottom
        text: "Replace"
        hint: "Replaces the selected text with this result"
        symbol: "arrow.left.arrow.right"
        onActivated: result.replaced()
    }
    GlassButton {
        id: copy
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        prominent: true
        text: "Copy"
        hint: "Copies this result to the clipboard"
        symbol: "doc.on.doc"
        onActivated: result.copied()
    }
}
