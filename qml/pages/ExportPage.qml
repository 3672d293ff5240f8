import QtCore
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Qt.labs.folderlistmodel
import QtQuick.Layouts
import Tomewise
import "../components"

ScreenPage {
    id: page
    title: ctl.title

    ExportViewController {
        id: ctl
        appDelegate: page.appDelegate
    }
    Component.onCompleted: ctl.viewDidLoad()

    // The desktop's share sheet for the staged file: a save dialog of our
    // own (Qt's quick one ignores a typed name until Enter is pressed). It
    // starts in the user's documents with the file's own name; the controller
    // asks before replacing a file and says where the copy went.
    Connections {
        target: page.appDelegate.platform
        function onShareRequested(text, image, files) {
            if (files.length > 0 && page.StackView.status === StackView.Active) {
                saveDialog.folder = StandardPaths.writableLocation(StandardPaths.DocumentsLocation)
                nameField.text = "Tomewise.csv"
                saveDialog.open()
                nameField.forceActiveFocus()
            }
        }
    }
    Dialog {
        id: saveDialog
        objectName: "saveDialog"
        title: "Save To Files"
        property url folder
        // No shadow layer: without a GPU it draws nothing and the dialog shows no background.
        Material.elevation: 0
        readonly property string path: decodeURIComponent(folder.toString().replace(/^file:\/\//, ""))
        modal: true
        anchors.centerIn: Overlay.overlay
        width: page.width - 2 * Theme.margin
        height: Math.min(page.height - 2 * Theme.margin, 560)
        standardButtons: Dialog.Cancel | Dialog.Save
        Component.onCompleted: standardButton(Dialog.Save).enabled = Qt.binding(() => nameField.text.trim().length > 0)
        onAccepted: ctl.saveCopy(folder + "/" + encodeURIComponent(nameField.text.trim()))

        FolderListModel {
            id: folders
            folder: saveDialog.folder
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
                    enabled: saveDialog.path !== "/"
                    onClicked: saveDialog.folder = folders.parentFolder
                }
                Label {
                    objectName: "folderPath"
                    Layout.fillWidth: true
                    text: saveDialog.path
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
                            saveDialog.folder = fileUrl
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
                selectByMouse: true
                onAccepted: if (text.trim().length > 0) saveDialog.accept()
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.margin
        spacing: 10

        BorderedTextView {
            objectName: "HelpTextView"
            Layout.fillWidth: true
            Layout.preferredHeight: 150
            text: ctl.HelpTextView
        }
        BorderedButton {
            objectName: "ExportButton"
            Layout.fillWidth: true
            text: "Create Export File"
            enabled: ctl.ExportButtonEnabled
            onClicked: ctl.CreateUpdateFile()
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 10
            BorderedButton {
                objectName: "SaveButton"
                Layout.fillWidth: true
                text: "Save To Files"
                enabled: ctl.SaveButtonEnabled
                onClicked: ctl.SaveToFiles()
            }
            BorderedButton {
                objectName: "EmailButton"
                Layout.fillWidth: true
                text: "Email File"
                enabled: ctl.EmailButtonEnabled
                onClicked: ctl.WriteTextFile()
            }
        }
        ProgressBar {
            objectName: "progress"
            Layout.fillWidth: true
            visible: ctl.busy
            value: ctl.progress
        }
        BorderedTextView {
            objectName: "ExportTextView"
            Layout.fillWidth: true
            Layout.fillHeight: true
            text: ctl.ExportTextView
        }
    }

    AlertHost { controller: ctl }
}
