import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Qt.labs.folderlistmodel
import QtQuick.Layouts

// A save dialog of our own: Qt's quick one ignores a typed name until Enter
// is pressed. `saved(url)` gives the chosen file.
Dialog {
    id: dialog
    property url folder
    property alias fileName: nameField.text
    signal saved(url file)
    // No shadow layer: without a GPU it draws nothing and the dialog shows no background.
    Material.elevation: 0
    readonly property string path: decodeURIComponent(folder.toString().replace(/^file:\/\//, ""))
    modal: true
    anchors.centerIn: Overlay.overlay
    standardButtons: Dialog.Cancel | Dialog.Save
    Component.onCompleted: standardButton(Dialog.Save).enabled = Qt.binding(() => nameField.text.trim().length > 0)
    onOpened: nameField.forceActiveFocus()
    onAccepted: saved(folder + "/" + encodeURIComponent(nameField.text.trim()))

    FolderListModel {
        id: folders
        folder: dialog.folder
        showDirsFirst: true
        showHidden: false
        sortCaseSensitive: false
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 8
        RowLayout {
            Layout.fillWidth: true
            ToolButton {
                objectName: "parentFolder"
                text: "\u2191"
                enabled: dialog.path !== "/"
                onClicked: dialog.folder = folders.parentFolder
            }
            Label {
                objectName: "folderPath"
                Layout.fillWidth: true
                text: dialog.path
                wrapMode: Text.WrapAnywhere
            }
        }
        ListView {
            objectName: "folderView"
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            model: folders
            delegate: ItemDelegate {
                required property string fileName
                required property url fileUrl
                required property bool fileIsDir
                width: ListView.view.width
                text: (fileIsDir ? "\ud83d\udcc1 " : "") + fileName
                onClicked: {
                    if (fileIsDir)
                        dialog.folder = fileUrl
                    else
                        nameField.text = fileName
                }
            }
        }
        TextField {
            id: nameField
            objectName: "fileName"
            Layout.fillWidth: true
            placeholderText: "File name"
            placeholderTextColor: Theme.muted
            selectByMouse: true
            onAccepted: if (text.trim().length > 0) dialog.accept()
        }
    }
}
