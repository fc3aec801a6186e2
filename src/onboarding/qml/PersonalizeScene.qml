import QtQuick

SceneColumn {
    id: scene

    readonly property var preferences: onboarding.preferences

    OnboardingEyebrow { text: "Make it yours" }
    SceneHeading {
        size: theme.metrics.headingSmall
        line: theme.metrics.headingSmallLine
        text: "Choose how Lumeno appears."
    }
    Space { size: 18 }
    CardGrid {
        width: parent.width

        Loader {
            active: onboarding.hasFileActions
            visible: active
            sourceComponent: PersonalizeCard {
                icon: "folder.fill.badge.gearshape"
                tint: theme.colors.tints["orange"]
                title: "Finder file actions"
                detail: "Show the natural-language command bar when files are selected in Finder."

                ToggleRow {
                    text: "Enable file actions"
                    checked: scene.preferences.fileActionsEnabled
                    onToggled: on => scene.preferences.fileActionsEnabled = on
                }
            }
        }
        PersonalizeCard {
            icon: "waveform.path"
            tint: theme.colors.tints["pink"]
            title: "Startup & feedback"
            detail: "Launch at login, with subtle sound or haptic cues when an answer is ready."

            ToggleRow {
                text: "Launch at login"
                checked: scene.preferences.launchAtLogin
                onToggled: on => scene.preferences.launchAtLogin = on
            }
            ToggleRow {
                text: "Result sound"
                checked: scene.preferences.resultSoundEnabled
                onToggled: on => scene.preferences.resultSoundEnabled = on
            }
            ToggleRow {
                text: "Haptics"
                checked: scene.preferences.hapticsEnabled
                onToggled: on => scene.preferences.hapticsEnabled = on
            }
        }
        PersonalizeCard {
            icon: "keyboard"
            tint: theme.colors.tints["blue"]
            title: "Summon & keyboard"
            detail: scene.preferences.summonHotkey
                + " opens the HUD. Arrows, Return, Esc, and 1–9 work when summoned."

            ToggleRow {
                text: "Summon shortcut"
                checked: scene.preferences.summonHotkeyEnabled
                onToggled: on => scene.preferences.summonHotkeyEnabled = on
            }
            ToggleRow {
                text: "Keyboard navigation"
                checked: scene.preferences.keyboardNavEnabled
                onToggled: on => scene.preferences.keyboardNavEnabled = on
            }
        }
        PersonalizeCard {
            icon: scene.preferences.backends[scene.preferences.backend].symbol
            tint: theme.colors.tints["teal"]
            title: "Local AI backend"
            detail: scene.preferences.backendDetail

            PickerRow {
                text: "AI backend"
                options: scene.preferences.backends
                current: scene.preferences.backend
                onChosen: index => scene.preferences.backend = index
            }
        }
    }
}
