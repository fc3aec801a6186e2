import QtQuick
import "../../view_kit/qml"

// The content of the window: the tabs, and below them the page of the selected one, which scrolls where the window
// cannot be as high as it.
Item {
    id: view

    readonly property Item focusItem: Window.activeFocusItem

    focus: true

    implicitWidth: Math.max(540, 36 * theme.metrics.callout)
    implicitHeight: tabs.height + page.implicitHeight

    Accessible.role: Accessible.Pane

    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_Up: flick.scrollBy(-40); break
        case Qt.Key_Down: flick.scrollBy(40); break
        case Qt.Key_PageUp: flick.scrollBy(-flick.height); break
        case Qt.Key_PageDown: flick.scrollBy(flick.height); break
        case Qt.Key_Home: flick.scrollBy(-flick.contentHeight); break
        case Qt.Key_End: flick.scrollBy(flick.contentHeight); break
        default: return
        }
        event.accepted = true
    }
    onFocusItemChanged: {
        for (let item = focusItem; item; item = item.parent) {
            if (item === page) {
                const top = focusItem.mapToItem(page, 0, 0).y
                flick.reveal(top - 24, top + focusItem.height + 24)
                return
            }
        }
    }

    Rectangle {
        anchors.fill: parent
        color: theme.colors.window
    }
    // A click on nothing is a click away from a field.
    MouseArea {
        anchors.fill: parent
        onPressed: view.forceActiveFocus()
    }

    SettingsTabs {
        id: tabs
        width: view.width
    }

    Flickable {
        id: flick
        anchors.top: tabs.bottom
        anchors.bottom: parent.bottom
        width: view.width
        contentHeight: page.implicitHeight
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        flickableDirection: Flickable.VerticalFlick
        interactive: contentHeight > height

        function scrollBy(pixels) {
            contentY = Math.max(0, Math.min(contentHeight - height, contentY + pixels))
        }
        function reveal(top, bottom) {
            if (top < contentY)
                scrollBy(top - contentY)
            else if (bottom > contentY + height)
                scrollBy(bottom - contentY - height)
        }

        Column {
            id: page
            width: view.width
            padding: 24
            topPadding: 18
            spacing: 18

            Loader {
                width: parent.width - 48
                active: settings.problem
                visible: active
                sourceComponent: ProblemLine { text: settings.problem }
            }
            Loader {
                width: parent.width - 48
                sourceComponent: [general, actions, appearance, backend][settings.tab]
                onSourceComponentChanged: flick.contentY = 0
            }
        }
    }
    Rectangle {
        readonly property real share: flick.height / Math.max(1, flick.contentHeight)
        readonly property real position: flick.contentY / Math.max(1, flick.contentHeight - flick.height)

        visible: flick.interactive
        x: view.width - 9
        y: flick.y + 2 + (flick.height - 4 - height) * position
        width: 5
        height: Math.max(28, (flick.height - 4) * share)
        radius: 3
        color: theme.colors.scrollThumb
    }

    Component {
        id: general
        GeneralSettingsView {}
    }
    Component {
        id: actions
        ActionsSettingsView {}
    }
    Component {
        id: appearance
        AppearanceSettingsView {}
    }
    Component {
        id: backend
        BackendSettingsView {}
    }
}
