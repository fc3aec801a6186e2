import QtQuick

// Which kinds of action are offered.
Column {
    id: actions

    spacing: 18

    SettingsGroup {
        width: actions.width
        title: "AI actions"

        Repeater {
            model: settings.transforms

            KindRow { kind: modelData }
        }
    }
    SettingsGroup {
        width: actions.width
        title: "Quick actions"
        caption: "Turn off actions you never use so the HUD stays focused."

        Repeater {
            model: settings.quickActions

            KindRow { kind: modelData }
        }
    }
}
