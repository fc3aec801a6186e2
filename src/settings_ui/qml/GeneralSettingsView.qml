import QtQuick
import "../../view_kit/qml"

// How the program starts, when it shows itself and where it keeps silent.
Column {
    id: general

    spacing: 18

    SettingsGroup {
        width: general.width
        title: "Startup"

        SwitchRow {
            text: "Launch Lumeno at login"
            checked: settings.launchAtLogin
            onToggled: on => settings.launchAtLogin = on
        }
    }
    SettingsGroup {
        width: general.width
        title: "When you select text"

        TextRow {
            text: "A small hint pill appears next to your selection; hover or click it to expand the full HUD."
            color: theme.colors.label
        }
    }
    SettingsGroup {
        width: general.width
        z: 1 // the recorder's hint covers what is below
        title: "Summon hotkey"
        caption: "Re-shows suggestions over the current selection, even when no hint pill is visible."

        SwitchRow {
            text: "Enable the summon shortcut"
            checked: settings.summonHotkeyEnabled
            onToggled: on => settings.summonHotkeyEnabled = on
        }
        SettingsRow {
            z: 1
            text: "Shortcut"
            spoken: false
            dimmed: !settings.summonHotkeyEnabled

            ShortcutRecorderField { enabled: settings.summonHotkeyEnabled }
        }
        Loader {
            width: parent.width
            active: settings.recorder.isRefused
            visible: active
            sourceComponent: TextRow {
                text: "The keyboard cannot be read here, so no shortcut can be recorded."
                separated: true
            }
        }
    }
    SettingsGroup {
        width: general.width
        title: "Finder file actions"
        caption: "Select files in Finder to get a natural-language command bar. Your local AI turns the request "
            + "into a shell command, which you review before it runs."

        SwitchRow {
            text: "Show actions for files selected in Finder"
            checked: settings.fileActionsEnabled
            onToggled: on => settings.fileActionsEnabled = on
        }
    }
    DisabledApps { width: general.width }
}
