import QtQuick
import "../../view_kit/qml"

// A suggestion at work: bars until there is text, then the text; and the way back.
Item {
    id: generating

    property string title
    property string partial

    signal back

    implicitHeight: text.implicitHeight + 14 + backButton.height

    Loader {
        id: text
        width: parent.width
        sourceComponent: generating.partial ? streaming : skeleton
    }
    Component {
        id: skeleton
        SkeletonResult { title: generating.title }
    }
    Component {
        id: streaming
        StreamingResult { text: generating.partial }
    }
    GlassButton {
        id: backButton
        anchors.top: text.bottom
        anchors.topMargin: 14
        iconOnly: true
        text: "Back to suggestions"
        symbol: "chevron.left"
        symbolWeight: "semibold"
        onActivated: generating.back()
    }
}
