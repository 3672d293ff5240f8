import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

// A form field whose input is a one-column picker: a tap lists the rows and
// the chosen row's index goes back as `picked`.
FormField {
    id: field
    property var rows: []
    property string referenceTarget
    signal picked(int row)
    signal referenceClicked()

    readOnly: true
    onTapped: popup.open()

    Popup {
        id: popup
        objectName: "pickerPopup"
        parent: Overlay.overlay
        x: Math.round((parent.width - width) / 2)
        y: Math.round(parent.height - height)
        width: parent.width
        height: Math.min(parent.height * 0.45, 56 + list.contentHeight)
        modal: true
        padding: 0
        background: Rectangle { color: "#f2f0ed" }

        ColumnLayout {
            anchors.fill: parent
            spacing: 0
            ToolBar {
                Layout.fillWidth: true
                Label {
                    anchors.centerIn: parent
                    text: field.label
                    color: "white"
                    font.bold: true
                }
                ToolButton {
                    anchors.right: parent.right
                    text: "Done"
                    Material.foreground: "white"
                    onClicked: popup.close()
                }
            }
            ListView {
                id: list
                Layout.fillWidth: true
                Layout.fillHeight: true
                clip: true
                model: field.rows
                delegate: ItemDelegate {
                    required property string modelData
                    required property int index
                    width: ListView.view.width
                    text: modelData
                    highlighted: modelData === field.text
                    font.pixelSize: 18
                    onClicked: {
                        field.picked(index)
                        popup.close()
                    }
                }
            }
        }
    }
}
