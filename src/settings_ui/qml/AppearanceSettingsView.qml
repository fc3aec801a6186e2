import QtQuick

// How the HUD looks, sounds and answers to keys.
Column {
    id: appearance

    spacing: 18

    SettingsGroup {
        width: appearance.width
        title: "HUD"

        PickerRow {
            text: "Accent"
            options: settings.accentThemes
            current: settings.accentTheme
            onChosen: index => settings.accentTheme = index
        }
        PickerRow {
            text: "Glass"
            options: settings.glassIntensities
            current: settings.glassIntensity
            onChosen: index => settings.glassIntensity = index
        }
    }
    SettingsGroup {
        width: appearance.width
        title: "Feedback"
        caption: "Haptics use the Force Touch trackpad and follow your system settings."

        SwitchRow {
            text: "Play a sound when a result is ready"
            checked: settings.resultSoundEnabled
            onToggled: on => settings.resultSoundEnabled = on
        }
        SwitchRow {
            text: "Haptic tap when a result is ready"
            checked: settings.hapticsEnabled
            onToggled: on => settings.hapticsEnabled = on
            separated: true
        }
    }
    SettingsGroup {
        width: appearance.width
        title: "Keyboard"
        caption: "When you summon the HUD with ⌥⌘Space, use ↑ ↓ to move, Return to run, Esc to dismiss, "
            + "and 1–9 to pick an action."

        SwitchRow {
            text: "Arrow-key navigation when summoned"
            checked: settings.keyboardNavEnabled
            onToggled: on => settings.keyboardNavEnabled = on
        }
    }
}
