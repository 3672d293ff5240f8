import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

// Shows a controller's alerts: title, message and the buttons it names; the
// tapped button's index goes back to the controller.
Dialog {
    id: dialog
    property QtObject controller
    property string message
    property var buttons: []
    property int cancelIndex: -1
    // Enter answers the default button, Escape the cancel one (or the only one).
    readonly property int defaultIndex: cancelIndex === 0 ? (buttons.length > 1 ? 1 : 0) : 0
    readonly property int escapeIndex: cancelIndex >= 0 ? cancelIndex : buttons.length === 1 ? 0 : -1

    function answer(index) {
        dialog.close()
        dialog.controller.answerAlert(index)
    }

    objectName: "alert"
    // No shadow layer: without a GPU it draws nothing and the alert shows no background.
    Material.elevation: 0
    modal: true
    closePolicy: Popup.NoAutoClose
    // Takes the keyboard from the page's fields while it is up.
    focus: true
    anchors.centerIn: Overlay.overlay
    width: Math.min(parent ? parent.width - 64 : 300, 320)

    Connections {
        target: dialog.controller
        function onAlert(title, message, buttons, cancelIndex) {
            dialog.title = title
            dialog.message = message
            dialog.buttons = buttons
            dialog.cancelIndex = cancelIndex
            dialog.open()
        }
    }

    Shortcut {
        sequences: ["Return", "Enter"]
        enabled: dialog.opened && dialog.buttons.length > 0
        onActivated: dialog.answer(dialog.defaultIndex)
    }
    Shortcut {
        sequence: "Escape"
        enabled: dialog.opened && dialog.escapeIndex >= 0
        onActivated: dialog.answer(dialog.escapeIndex)
    }

    // Wrapped, not cut short: some titles are a whole sentence.
    header: Label {
        objectName: "alertTitle"
        text: dialog.title
        visible: text.length > 0
        wrapMode: Text.Wrap
        font.bold: true
        font.pixelSize: 16
        padding: 24
        bottomPadding: 0
    }

    contentItem: Label {
        text: dialog.message
        wrapMode: Text.Wrap
        visible: text.length > 0
    }

    footer: RowLayout {
        spacing: 0
        Item { Layout.fillWidth: true }
        Repeater {
            model: dialog.buttons
            Button {
                required property string modelData
                required property int index
                objectName: "alertButton_" + modelData
                text: modelData
                flat: true
                font.bold: index !== dialog.cancelIndex
                onClicked: dialog.answer(index)
            }
        }
        Item { Layout.preferredWidth: 8 }
    }
}
