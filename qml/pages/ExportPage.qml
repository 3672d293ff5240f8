import QtCore
import QtQuick
import QtQuick.Controls
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

    // The desktop's share sheet for the staged file: our own save dialog. It
    // starts in the user's documents with the file's own name; the controller
    // asks before replacing a file and says where the copy went.
    Connections {
        target: page.appDelegate.platform
        function onShareRequested(text, image, files) {
            if (files.length > 0 && page.StackView.status === StackView.Active) {
                saveDialog.folder = StandardPaths.writableLocation(StandardPaths.DocumentsLocation)
                saveDialog.fileName = "Tomewise.csv"
                saveDialog.open()
            }
        }
    }
    SaveFileDialog {
        id: saveDialog
        objectName: "saveDialog"
        title: "Save To Files"
        width: page.width - 2 * Theme.margin
        height: Math.min(page.height - 2 * Theme.margin, 560)
        onSaved: file => ctl.saveCopy(file)
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
