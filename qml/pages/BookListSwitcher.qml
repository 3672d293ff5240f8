import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import "../components"

// The segmented control over every book list: cards, A-Z, pictures, grid.
Rectangle {
    id: bar
    property string current: "cards"
    signal chosen(string presentation)

    implicitHeight: 40
    radius: 10
    color: Qt.darker(Theme.paper, 1.06)
    border.color: Qt.darker(Theme.paper, 1.2)

    readonly property var choices: [
        { key: "cards", text: "Cards", icon: "view_agenda" },
        { key: "az", text: "A–Z", icon: "sort_by_alpha" },
        { key: "pictures", text: "Pictures", icon: "photo_library" },
        { key: "grid", text: "Grid", icon: "view_module" }
    ]

    RowLayout {
        anchors.fill: parent
        anchors.margins: 3
        spacing: 3
        Repeater {
            model: bar.choices
            Rectangle {
                required property var modelData
                readonly property bool selected: bar.current === modelData.key
                objectName: "switch_" + modelData.key
                Layout.fillWidth: true
                Layout.fillHeight: true
                radius: 8
                color: selected ? "white" : "transparent"
                border.color: selected ? Qt.darker(Theme.paper, 1.3) : "transparent"
                Accessible.role: Accessible.Button
                Accessible.name: modelData.text
                Row {
                    anchors.centerIn: parent
                    spacing: 4
                    Icon {
                        name: modelData.icon
                        size: 16
                        color: selected ? Theme.accent : Theme.muted
                        anchors.verticalCenter: parent.verticalCenter
                    }
                    Label {
                        text: modelData.text
                        font.pixelSize: 13
                        font.bold: selected
                        color: selected ? Theme.ink : Theme.muted
                        anchors.verticalCenter: parent.verticalCenter
                    }
                }
                TapHandler {
                    onTapped: if (!selected) bar.chosen(modelData.key)
                }
            }
        }
    }
}
