import QtQuick
import "../../view_kit/qml"

// Which model answers. The list of models is loaded each time the page is opened.
Column {
    id: backend

    readonly property var models: settings.models

    spacing: 18

    Component.onCompleted: models.load()

    SettingsGroup {
        width: backend.width
        title: "Backend"

        PickerRow {
            text: "Smart AI"
            options: settings.backends
            current: settings.backend
            onChosen: index => settings.backend = index
        }
    }
    SettingsGroup {
        width: backend.width
        title: "Ollama model"

        Loader {
            width: parent.width
            sourceComponent: backend.models.isLoading ? looking : choice
        }
        Loader {
            width: parent.width
            active: !backend.models.isLoading && backend.models.loadFailed
            visible: active
            sourceComponent: TextRow {
                text: "Couldn't reach Ollama at 127.0.0.1:11434. Start it with `ollama serve`."
                separated: true
            }
        }
        Item {
            width: parent.width
            height: refresh.height + 12

            Hairline {
                x: 14
                width: parent.width - x
            }
            WindowButton {
                id: refresh
                x: 14
                y: 6
                text: "Refresh models"
                symbol: "arrow.clockwise"
                onActivated: backend.models.load()
            }
        }
    }

    Component {
        id: looking
        ProgressRow { text: "Looking for installed models…" }
    }
    Component {
        id: choice
        PickerRow {
            readonly property var names: backend.models.models.length > 0 ? backend.models.models
                                                                        : [settings.ollamaModel]
            text: "Model"
            options: names.map(name => ({ label: name }))
            current: names.indexOf(settings.ollamaModel)
            onChosen: index => settings.ollamaModel = names[index]
        }
    }
}
